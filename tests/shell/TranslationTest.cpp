// The German windows.

#include "platform/toolkit/nib/FrameworkBundle.h"
#include "platform/toolkit/nib/InterfaceTexts.h"
#include "platform/toolkit/nib/Nib.h"
#include "platform/toolkit/nib/ViewClasses.h"
#include "platform/toolkit/tables/TableCellView.h"
#include "tests/shell/FormTexts.h"
#include "tests/shell/TLJiraUploadTest.h"

#include "shell/JAWindowController.h"
#include "shell/JMWindowController.h"

#include <QCoreApplication>
#include <QLocale>

namespace {

using namespace tests;
using testing::Contains;
using testing::IsEmpty;

const QString german = QStringLiteral("de");

class TranslationTest : public TLJiraUploadTest
{
protected:
    TranslationTest() { QLocale::setDefault(QLocale(german)); }

    static QString textOf(const char* source) { return tljira::InterfaceTexts::shared().text("JALoginWindow", source); }
};

TEST_F(TranslationTest, hasExactlyTheTextsOfTheInterfaceFilesAndThoseSetInCode)
{
    std::set<FormText> needed{
        {QStringLiteral("JAListAttachedFilesWindow"), QStringLiteral("Download %1")},
        {QStringLiteral("JMWindowController"), QStringLiteral("Looking for your session on %1…")}};
    for (const char* text :
         {"Close", "Attached to %1", "The document is gone. Close this window and attach the document again."})
        needed.insert({QStringLiteral("JAUploadBodyViewController"), QString::fromUtf8(text)});
    for (const char* text :
         {"Close", "Uploaded", "%1 to %2", "Attached to %1", "Waiting for the server…", "The server says: “%1”",
          "%1 says: “%2”", "Log out and in again, then attach the document again.",
          "Ask whoever runs the server for the right to attach files to this issue.",
          "Attach the document again, and check the issue key.", "The server does not take a document of this size.",
          "Check the connection, then attach the document again.", "Attach the document again, now or later.",
          "Log out and in again, then press Upload again.", "Check the issue key, then press Upload again.",
          "Check the connection, then press Upload again.", "Nothing was sent. Press Upload to try again.",
          "Give the document another name, then attach it again.", "Press Upload again, now or later."})
        needed.insert({QStringLiteral("JAUploadingWindow"), QString::fromUtf8(text)});
    for (const char* text : {"Cancel", "Close", "Open", "Downloading", "Downloaded", "Not downloaded", "%1 of %2",
                             "Documents of %1", "%1 has no documents of this program", "Attachments of %1",
                             "%1 has no attachments", "Waiting for the server…"})
        needed.insert({QStringLiteral("JAListAttachedFilesWindow"), QString::fromUtf8(text)});
    needed.insert({QStringLiteral("JADownloadBodyViewController"),
                   QStringLiteral("Looking for the issue… The list opens when it is found.")});
    for (const char* text :
         {"%1 KB/s", "%1 MB/s", "about %1 h left", "about %1 min left", "about %1 s left", "%1 s left"})
        needed.insert({QStringLiteral("TransferRate"), QString::fromUtf8(text)});
    for (const char* text : {"“%1” cannot be an attachment’s name.", "The document could not be copied: %1",
                             "The program could not write it.",
                             "The server sent something else than the document: %1 bytes instead of %2.",
                             "The document could not be put in its place: %1"})
        needed.insert({QStringLiteral("TLJiraJobs"), QString::fromUtf8(text)});
    for (const char* text : {"With port and path, if it has them", "API &token", "API token"})
        needed.insert({QStringLiteral("JALoginWindow"), QString::fromUtf8(text)});
    for (const char* text :
         {"What answers at this address is not Jira.", "The server does not accept this token.",
          "The server denies access with this token.",
          "The server denies access with this token alone. Jira Cloud wants your e-mail address with it.",
          "No token was given.", "This is no token: it has blanks, line breaks or other characters that no token has.",
          "A user name with a colon or a line break cannot be used with a token.", "No token is saved for this server.",
          "This address leads on to another one, and the token was not sent there. Type the server’s own address."})
        needed.insert({QStringLiteral("TokenSignIn"), QString::fromUtf8(text)});
    for (const char* text : {"This program was built without support for the desktop’s keyring.",
                             "The desktop’s keyring cannot be used with the event loop of this program.",
                             "The desktop’s keyring cannot be reached. Is one running?",
                             "The desktop’s keyring is locked. Unlock it and try again.",
                             "The desktop’s keyring is locked, or your login is no longer in it.",
                             "Your login is still in the desktop’s keyring. Is that running and unlocked?",
                             "The part of this program that reaches the desktop’s keyring is missing or cannot be "
                             "loaded."})
        needed.insert({QStringLiteral("Keyring"), QString::fromUtf8(text)});
    for (const FormProperty& property : shippedTexts()) {
        if (property.isTranslatable)
            needed.insert(property.text);
    }
    std::set<FormText> translated;
    for (const auto& [text, translation] : translationsInto(german))
        translated.insert(text);

    EXPECT_GT(needed.size(), 50U);
    EXPECT_EQ(translated, needed);
}

TEST_F(TranslationTest, keepsMnemonicsEllipsesAndPlaces)
{
    for (const auto& [text, translation] : translationsInto(german)) {
        EXPECT_FALSE(translation.isEmpty()) << text.source.toStdString();
        for (const QString& mark :
             {QStringLiteral("&"), QStringLiteral("…"), QStringLiteral("%1"), QStringLiteral("%2")})
            EXPECT_EQ(translation.count(mark), text.source.count(mark)) << translation.toStdString();
    }
}

TEST_F(TranslationTest, isCompleteAndFinished)
{
    EXPECT_FALSE(translationFile(german).contains("unfinished"));
    EXPECT_FALSE(translationFile(german).contains("vanished"));
}

TEST_F(TranslationTest, showsInEveryPropertyOfEveryInterfaceFile)
{
    tljira::registerViewClass<JAAttachedCell>(QStringLiteral("JAAttachedCell"));
    const auto translations = translationsInto(german);
    const auto bundle = tljira::frameworkBundle();
    QHash<QString, QList<QPointer<QWidget>>> viewsOfForms;
    for (const FormProperty& property : shippedTexts()) {
        QList<QPointer<QWidget>>& views = viewsOfForms[property.text.context];
        if (views.isEmpty()) {
            const auto bundleOfForm = tljira::Bundle::forInterfaceFile(property.text.context, bundle);
            const auto nib = tljira::Nib::load(property.text.context, bundleOfForm);
            const tljira::NibViews made = nib->instantiate();
            ASSERT_TRUE(made.view) << property.text.context.toStdString();
            made.view->setWindowTitle(made.windowTitle);
            views = made.rest;
            views.append(made.view);
            if (property.text.context == u"JAListAttachedFilesWindow")
                views.append(nib->makeCell(QStringLiteral("jaAttachedCell")));
        }
        const QString expected = property.isTranslatable ? translations.at(property.text) : property.text.source;
        QStringList shown;
        for (QWidget* view : views) {
            if (property.isRootsOwn || view->objectName() == property.object)
                shown.append(view->property(property.name.constData()).toString());
            for (const QWidget* found : view->findChildren<QWidget*>(property.object))
                shown.append(found->property(property.name.constData()).toString());
        }
        EXPECT_THAT(shown, Contains(expected)) << property.text.context.toStdString();
    }
}

TEST_F(TranslationTest, leavesTheFormsWorking)
{
    open();
    ASSERT_TRUE(waitForLoginForm());
    EXPECT_EQ(entry->jaLoginWindow()->loginButton()->text(), QStringLiteral("Anmelden"));

    logInThroughTheForm(QStringLiteral("wrong"));
    EXPECT_EQ(entry->jaLoginWindow()->errorLabel()->text(), QStringLiteral("Incorrect login or password"));
    logInThroughTheForm();
    ASSERT_TRUE(waitForBody());
    ui::type(entry->bodyViewController()->taskTextField(), QStringLiteral("ABC-1"));
    ui::click(entry->bodyViewController()->uploadFileButton());
    const auto sheet = entry->bodyViewController()->jaUploadingWindow();
    ASSERT_TRUE(waitUntil([&] { return sheet->sizeLabel()->text() == QStringLiteral("DONE"); }));

    EXPECT_EQ(sheet->cancelButton()->text(), QStringLiteral("Schließen"));
    EXPECT_EQ(sheet->cancelButton()->accessibleName(), QStringLiteral("Schließen"));
    ui::press(sheet->window()->widget(), Qt::Key_Escape);
    EXPECT_TRUE(waitUntil([&] { return !sheet->window()->isVisible(); }));
}

/// A host that says some things in its own words.
class HostTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char* context, const char* source, const char*, int) const override
    {
        const bool isKnown = qstrcmp(context, "JALoginWindow") == 0 && qstrcmp(source, "Log In") == 0;
        return isKnown ? QStringLiteral("Hinein") : QString();
    }
};

TEST_F(TranslationTest, leavesTheFirstWordToTheHostsTranslators)
{
    HostTranslator host;
    QCoreApplication::installTranslator(&host);
    const auto form = JALoginWindow::init();
    form->window();

    EXPECT_EQ(form->loginButton()->text(), QStringLiteral("Hinein"));
    EXPECT_EQ(form->cancelButton()->text(), QStringLiteral("Abbrechen"));
    EXPECT_EQ(textOf("Log In"), QStringLiteral("Hinein"));
}

TEST_F(TranslationTest, leavesTheHostsTranslatorsAsTheyAre)
{
    JALoginWindow::init()->window();

    EXPECT_EQ(QCoreApplication::translate("JALoginWindow", "Cancel"), QStringLiteral("Cancel"));
}

TEST_F(TranslationTest, isNotNeededForAHostsOwnWordsInEnglish)
{
    QLocale::setDefault(QLocale(QStringLiteral("en")));
    HostTranslator host;
    QCoreApplication::installTranslator(&host);
    const auto form = JALoginWindow::init();
    form->window();

    EXPECT_EQ(form->loginButton()->text(), QStringLiteral("Hinein"));
    EXPECT_EQ(form->cancelButton()->text(), QStringLiteral("Cancel"));
}

/// What the user's system says in LANGUAGE, and what the button then says.
struct Language
{
    const char* variable;
    const char* cancel;
};

void PrintTo(const Language& language, std::ostream* out)
{
    *out << language.variable;
}

class LanguageTest : public testing::TestWithParam<Language>
{
};

TEST_P(LanguageTest, isTheFirstThatTheUserWantsAndTheWindowsKnow)
{
    qputenv("LANG", "de_DE.UTF-8");
    qputenv("LANGUAGE", GetParam().variable);
    const auto form = JALoginWindow::init();
    form->window();

    EXPECT_EQ(form->cancelButton()->text(), QString::fromUtf8(GetParam().cancel));
}

INSTANTIATE_TEST_SUITE_P(variables, LanguageTest,
                         testing::Values(Language{"de", "Abbrechen"}, Language{"de_AT", "Abbrechen"},
                                         Language{"fr:de", "Abbrechen"}, Language{"en:de", "Cancel"},
                                         Language{"en_GB", "Cancel"}, Language{"xx", "Cancel"},
                                         Language{"C", "Cancel"}));

// What fits.

/// In words, the labels and buttons in sight that are smaller than their texts need.
QStringList cutOff(const QWidget* window)
{
    QStringList found;
    for (const QWidget* view : window->findChildren<QWidget*>()) {
        const auto* label = qobject_cast<const QLabel*>(view);
        const bool isText = label || qobject_cast<const QAbstractButton*>(view);
        if (!isText || !view->isVisible() || view->inherits("tljira::ElidedLabel"))
            continue;
        const bool wraps = label && label->wordWrap();
        const QSize needed = wraps ? QSize(0, view->heightForWidth(view->width())) : view->sizeHint();
        const bool isInside = view->parentWidget()->rect().contains(view->geometry());
        if (needed.width() > view->width() || needed.height() > view->height() || !isInside)
            found.append(view->property("text").toString());
    }
    return found;
}

/// Those letters that more than one control in sight answers to.
QString sharedMnemonics(const QWidget* window)
{
    QString letters;
    QString shared;
    for (const QWidget* view : window->findChildren<QWidget*>()) {
        const QString text = view->isVisible() ? view->property("text").toString() : QString();
        const auto mark = text.indexOf(u'&');
        if (mark < 0)
            continue;
        const QChar letter = text.at(mark + 1).toLower();
        (letters.contains(letter) ? shared : letters).append(letter);
    }
    return shared;
}

class WordsInWindows : public TLJiraUploadTest, public testing::WithParamInterface<const char*>
{
protected:
    WordsInWindows() { QLocale::setDefault(QLocale(QLatin1String(GetParam()))); }

    static void look(const std::shared_ptr<tljira::Window>& window)
    {
        window->makeKeyAndOrderFront();
        drainMainQueue();
        ASSERT_TRUE(window->isVisible());
        EXPECT_THAT(cutOff(window->widget()), IsEmpty());
        EXPECT_EQ(sharedMnemonics(window->widget()), QString());
    }
};

TEST_P(WordsInWindows, fitWhereADocumentIsAttached)
{
    open();
    const auto window = entry->window();
    ASSERT_TRUE(waitForLoginForm());
    look(window);
    const auto body = entry->bodyViewController();
    logInThroughTheForm();
    ASSERT_TRUE(waitForBody());
    look(window);
    body->setUploadActualView(body->checkFileView());
    look(window);
    entry->headViewController()->setActualView(nullptr);
    look(window);

    const auto sheet = body->jaUploadingWindow();
    sheet->setUploadingState(10, QStringLiteral(" 0.1 / 1.00 mb"));
    for (QWidget* view : {sheet->uploadingView(), sheet->errorView(), sheet->successView()}) {
        sheet->setActualView(view);
        look(sheet->window());
    }
    sheet->setSuccessState();
    look(sheet->window());
}

TEST_P(WordsInWindows, fitWhereADocumentIsFetched)
{
    server.addAttachment("ABC-1", {.fileName = "plan.tessaloom", .bytes = "the plan"});
    logIn();
    const auto controller = JMWindowController::init();
    controller->showWindow();
    const auto body = controller->bodyViewController();
    ASSERT_TRUE(waitUntil([&] { return ui::isOnScreen(body->getAttachButton()); }));
    look(controller->window());

    ui::type(body->issueKeyTextField(), QStringLiteral("ABC-1"));
    ui::click(body->getAttachButton());
    const auto list = body->jaListAttachedWindow();
    ASSERT_TRUE(waitUntil([&] { return list->tableView()->cellAtRow(0) != nullptr; }));
    for (QWidget* view : {list->wrapperTableView(), list->noDataView(), list->downloadView()}) {
        list->setActualView(view);
        ASSERT_TRUE(waitUntil([&] {
            return list->window()->widget()->frameGeometry().size() == list->window()->frame().size().toSize();
        }));
        look(list->window());
    }
}

TEST_P(WordsInWindows, fitInTheOlderWindow)
{
    const auto controller = JAWindowController::initWithPath(QStringLiteral("/documents/plan"));
    controller->showWindow();
    look(controller->window());
    const auto body = controller->bodyViewController();
    body->setUploadActualView(body->uploadView());
    body->setDownloadActualView(body->receivingAttachmentsView());
    controller->headViewController()->setActualView(controller->headViewController()->okSessionView());
    look(controller->window());
}

INSTANTIATE_TEST_SUITE_P(languages, WordsInWindows, testing::Values("en", "de"));

} // namespace
