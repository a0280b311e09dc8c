#include "upload/JAUploadingWindow.h"

#include "platform/toolkit/views/FitContent.h"
#include "platform/toolkit/views/TransferRate.h"
#include "platform/toolkit/views/View.h"
#include "platform/toolkit/windows/AlertView.h"
#include "tests/kit/JiraTest.h"

#include <QBoxLayout>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QRegularExpression>
#include <QScrollArea>
#include <QTimer>
#include <QtTest/QTest>

#include <limits>

namespace {

using namespace tests;
using namespace testing;

/// The window as a sheet on another one.
class JAUploadingWindowTest : public JiraTest
{
protected:
    JAUploadingWindowTest()
    {
        parent->makeKeyAndOrderFront();
        parent->beginSheet(sheet->window(), [this](int code) { codes.push_back(code); });
        for (auto* view : sheet->window()->widget()->findChildren<tljira::AlertView*>()) {
            QObject::connect(view, &tljira::AlertView::announced, view,
                             [this](const QString& words) { announced.append(words); });
        }
    }

    template <class View>
    View* part(const char* name) const
    {
        return tljira::findView<View>(sheet->containerView(), name);
    }
    QString textOf(const char* name) const { return part<QLabel>(name)->text(); }
    bool isOnScreen(const char* name) const { return ui::isOnScreen(part<QWidget>(name)); }
    const QWidget* focused() const { return sheet->window()->widget()->focusWidget(); }
    int height() const { return sheet->window()->widget()->height(); }
    QString sizeThatTakesTheLine() const
    {
        const int digit = sheet->sizeLabel()->fontMetrics().horizontalAdvance(u'8');
        return QString(sheet->uploadingView()->width() / digit, u'8');
    }
    static void enlarge(QWidget* view)
    {
        QFont large = view->font();
        large.setPointSize(80);
        view->setFont(large);
    }

    /// What screen readers are told, in order.
    QStringList announced;
    std::vector<int> codes; // Outlives the sheet, which ends when its controller goes.
    const std::shared_ptr<tljira::Window> parent = tljira::Window::create(QStringLiteral("Parent"), nullptr);
    const std::shared_ptr<JAUploadingWindow> sheet = JAUploadingWindow::init();
};

const tljira::Error refused = tljira::makeError(QStringLiteral("server"), 403, QStringLiteral("Not allowed here."));

TEST_F(JAUploadingWindowTest, findsEverythingInItsInterfaceFile)
{
    EXPECT_EQ(sheet->interfaceProblems(), QStringList());
}

TEST_F(JAUploadingWindowTest, beginsWithTheUploadingViewAlone)
{
    EXPECT_TRUE(ui::isShown(sheet->uploadingView()));
    EXPECT_FALSE(ui::isShown(sheet->errorView()));
    EXPECT_FALSE(ui::isShown(sheet->successView()));
}

TEST_F(JAUploadingWindowTest, fillsTheContainerWithEachOfItsViewsInOrder)
{
    const QList<QWidget*> views{sheet->uploadingView(), sheet->errorView(), sheet->successView()};

    EXPECT_EQ(tljira::subviews(sheet->containerView()), views);
    for (const QWidget* view : views)
        EXPECT_EQ(view->geometry(), sheet->containerView()->rect()) << view->objectName().toStdString();
}

TEST_F(JAUploadingWindowTest, hasRoomForEachOfItsViewsFromTheBeginning)
{
    for (QWidget* view : {sheet->uploadingView(), sheet->errorView(), sheet->successView()}) {
        EXPECT_LE(tljira::neededSize(view).height(), sheet->containerView()->height())
            << view->objectName().toStdString();
    }
}

TEST_F(JAUploadingWindowTest, keepsItsViewsAtTheSizeOfTheContainer)
{
    const QSize before = sheet->containerView()->size();
    sheet->window()->widget()->resize(sheet->window()->widget()->size() + QSize(60, 40));
    drainMainQueue();

    EXPECT_EQ(sheet->containerView()->size(), before + QSize(60, 40));
    EXPECT_EQ(sheet->uploadingView()->size(), before + QSize(60, 40));
}

TEST_F(JAUploadingWindowTest, showsTheBarAtOneForZeroPercent)
{
    sheet->setUploadingState(0, QStringLiteral("size is calculated"));

    EXPECT_EQ(sheet->uploadingProgressBar()->value(), 1);
    EXPECT_EQ(sheet->sizeLabel()->text(), QStringLiteral("size is calculated"));
}

TEST_F(JAUploadingWindowTest, keepsTheBarInsideItsRange)
{
    const std::vector<std::pair<qint64, int>> cases{
        {std::numeric_limits<qint64>::min(), 1},  {-1, 1}, {1, 1}, {2, 2}, {50, 50}, {100, 100},
        {std::numeric_limits<qint64>::max(), 100}};
    for (const auto& [percent, shown] : cases) {
        sheet->setUploadingState(percent, QString());
        EXPECT_EQ(sheet->uploadingProgressBar()->value(), shown) << percent;
    }
}

TEST_F(JAUploadingWindowTest, showsAnErrorWithItsDescription)
{
    sheet->setErrorState(refused);

    EXPECT_EQ(sheet->errortitle()->text(), QStringLiteral("Error"));
    EXPECT_EQ(sheet->errorMessage()->text(), QStringLiteral("Not allowed here."));
    EXPECT_TRUE(ui::isShown(sheet->errorView()));
    EXPECT_FALSE(ui::isShown(sheet->uploadingView()));
    EXPECT_FALSE(ui::isShown(sheet->successView()));
}

TEST_F(JAUploadingWindowTest, callsItAnErrorWhateverTheInterfaceFileSays)
{
    sheet->errortitle()->setText(QStringLiteral("Something went wrong"));

    sheet->setErrorState(refused);

    EXPECT_EQ(sheet->errortitle()->text(), QStringLiteral("Error"));
}

TEST_F(JAUploadingWindowTest, showsAnErrorWithoutDescription)
{
    sheet->setErrorState(tljira::makeError(QStringLiteral("server"), 403, QString()));

    EXPECT_EQ(sheet->errortitle()->text(), QStringLiteral("Error"));
    EXPECT_EQ(sheet->errorMessage()->text(), QString());
    EXPECT_TRUE(ui::isShown(sheet->errorView()));
}

TEST_F(JAUploadingWindowTest, showsWhatTheServerSaysAsPlainTextThatCanBeCopied)
{
    const QString text = QStringLiteral("<b>no</b><img src='file:///etc/passwd'>");
    sheet->setErrorState(tljira::makeError(QStringLiteral("server"), 403, text));

    EXPECT_EQ(sheet->errorMessage()->text(), text);
    EXPECT_EQ(sheet->errorMessage()->textFormat(), Qt::PlainText);
    EXPECT_TRUE(sheet->errorMessage()->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
}

TEST_F(JAUploadingWindowTest, keepsALongErrorWithinReach)
{
    const QSize before = sheet->window()->widget()->size();
    sheet->setErrorState(tljira::makeError(QString(), 0, QStringLiteral("one more sentence. ").repeated(200)));
    drainMainQueue();

    EXPECT_EQ(sheet->window()->widget()->size(), before);
    auto* area = sheet->errorView()->findChild<QScrollArea*>();
    ASSERT_NE(area, nullptr);
    EXPECT_GE(area->widget()->height(), sheet->errorMessage()->heightForWidth(sheet->errorMessage()->width()));
    EXPECT_GT(area->widget()->height(), area->viewport()->height());
    EXPECT_EQ(area->minimumHeight(), 8 * area->fontMetrics().lineSpacing());
}

TEST_F(JAUploadingWindowTest, returnsFromAnErrorToProgress)
{
    sheet->setErrorState(refused);
    sheet->setUploadingState(7, QStringLiteral(" 0.1 / 1.00 mb"));

    EXPECT_TRUE(ui::isShown(sheet->uploadingView()));
    EXPECT_FALSE(ui::isShown(sheet->errorView()));
    EXPECT_EQ(sheet->uploadingProgressBar()->value(), 7);
}

TEST_F(JAUploadingWindowTest, saysDoneWhereTheSizeStoodAndChangesNothingElse)
{
    sheet->setUploadingState(64, QStringLiteral(" 0.6 / 1.00 mb"));
    sheet->setSuccessState();

    EXPECT_EQ(sheet->sizeLabel()->text(), QStringLiteral("DONE"));
    EXPECT_EQ(sheet->uploadingProgressBar()->value(), 64);
    EXPECT_TRUE(ui::isShown(sheet->uploadingView()));
    EXPECT_FALSE(ui::isShown(sheet->successView()));
}

TEST_F(JAUploadingWindowTest, keepsTheErrorInSightThroughASuccess)
{
    sheet->setErrorState(refused);
    sheet->setSuccessState();

    EXPECT_TRUE(ui::isShown(sheet->errorView()));
    EXPECT_FALSE(ui::isShown(sheet->uploadingView()));
    EXPECT_EQ(sheet->errorMessage()->text(), QStringLiteral("Not allowed here."));
    EXPECT_EQ(sheet->sizeLabel()->text(), QStringLiteral("DONE"));
}

TEST_F(JAUploadingWindowTest, showsTheSuccessViewToWhoeverAsksForIt)
{
    sheet->setActualView(sheet->successView());

    EXPECT_TRUE(ui::isShown(sheet->successView()));
    EXPECT_FALSE(ui::isShown(sheet->uploadingView()));
    EXPECT_FALSE(ui::isShown(sheet->errorView()));
}

TEST_F(JAUploadingWindowTest, callsItsButtonByWhatItDoes)
{
    sheet->setUploadingState(5, QString());
    EXPECT_EQ(sheet->cancelButton()->text(), QStringLiteral("Cancel"));
    sheet->setErrorState(refused);
    EXPECT_EQ(sheet->cancelButton()->text(), QStringLiteral("Close"));
    sheet->setUploadingState(5, QString());
    EXPECT_EQ(sheet->cancelButton()->text(), QStringLiteral("Cancel"));
    sheet->setSuccessState();
    EXPECT_EQ(sheet->cancelButton()->text(), QStringLiteral("Close"));
    EXPECT_EQ(sheet->cancelButton()->accessibleName(), QStringLiteral("Close"));
}

TEST_F(JAUploadingWindowTest, hasItsButtonForTheReturnKeyOnlyAfterTheEnd)
{
    sheet->setUploadingState(5, QString());
    EXPECT_FALSE(sheet->cancelButton()->isDefault());
    EXPECT_EQ(focused(), sheet->uploadingProgressBar());
    sheet->setSuccessState();
    EXPECT_TRUE(sheet->cancelButton()->isDefault());
    EXPECT_EQ(focused(), sheet->cancelButton());
    sheet->setUploadingState(5, QString());
    EXPECT_FALSE(sheet->cancelButton()->isDefault());
    EXPECT_EQ(focused(), sheet->uploadingProgressBar());
}

TEST_F(JAUploadingWindowTest, leavesTheKeyboardWhereTheUserTookItWhileProgressComes)
{
    sheet->setUploadingState(5, QString());
    ui::press(sheet->window()->widget(), Qt::Key_Tab);
    ASSERT_EQ(focused(), sheet->cancelButton());
    sheet->setUploadingState(6, QString());

    EXPECT_EQ(focused(), sheet->cancelButton());
}

TEST_F(JAUploadingWindowTest, endsTheSheetWithCodeZeroWhileUploading)
{
    sheet->setUploadingState(5, QString());
    ui::click(sheet->cancelButton());

    EXPECT_THAT(codes, ElementsAre(0));
    EXPECT_FALSE(sheet->window()->isVisible());
}

TEST_F(JAUploadingWindowTest, endsTheSheetWithCodeZeroAfterAnError)
{
    sheet->setErrorState(refused);
    ui::click(sheet->cancelButton());

    EXPECT_THAT(codes, ElementsAre(0));
}

TEST_F(JAUploadingWindowTest, endsTheSheetWithCodeZeroAfterASuccess)
{
    sheet->setSuccessState();
    ui::click(sheet->cancelButton());

    EXPECT_THAT(codes, ElementsAre(0));
}

TEST_F(JAUploadingWindowTest, endsTheSheetAtTheEscapeKey)
{
    ui::press(sheet->window()->widget(), Qt::Key_Escape);

    EXPECT_THAT(codes, ElementsAre(0));
}

TEST_F(JAUploadingWindowTest, endsTheSheetAtTheEscapeKeyAlsoAfterAnError)
{
    sheet->setErrorState(refused);
    ui::press(sheet->window()->widget(), Qt::Key_Escape);

    EXPECT_THAT(codes, ElementsAre(0));
}

TEST_F(JAUploadingWindowTest, cancelsNothingWhereItIsNoSheet)
{
    ui::click(sheet->cancelButton());
    sheet->cancelAction();

    EXPECT_THAT(codes, ElementsAre(0));
}

TEST_F(JAUploadingWindowTest, keepsItsLastStateUntilTheNextCall)
{
    sheet->setErrorState(refused);
    ui::click(sheet->cancelButton());
    parent->beginSheet(sheet->window(), {});

    EXPECT_TRUE(ui::isShown(sheet->errorView()));
}

TEST_F(JAUploadingWindowTest, namesTheDocumentAndTheIssue)
{
    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-1"));
    sheet->setUploadingState(0, QStringLiteral("size is calculated"));

    EXPECT_EQ(textOf("uploadingTitle"), QStringLiteral("Uploading"));
    EXPECT_EQ(textOf("documentLabel"), QStringLiteral("plan.tessaloom to ABC-1"));
}

TEST_F(JAUploadingWindowTest, tellsHowFarItIsBesideTheSize)
{
    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-1"));
    sheet->setUploadingState(60, QStringLiteral(" 4.8 / 8.00 mb"));
    sheet->setSent(6, 10);
    EXPECT_EQ(textOf("rateLabel"), QStringLiteral("60 %"));
    sheet->setSent(0, 1);
    EXPECT_EQ(textOf("rateLabel"), QStringLiteral("0 %"));
    sheet->setSent(1, 1);
    EXPECT_EQ(textOf("rateLabel"), QStringLiteral("Waiting for the server…"));
    sheet->setSent(0, 0);
    EXPECT_FALSE(isOnScreen("rateLabel"));
}

TEST_F(JAUploadingWindowTest, tellsHowFastItGoesAndHowLongItWillTake)
{
    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-1"));
    sheet->setUploadingState(1, QString());
    qint64 sent = 0;
    const QRegularExpression words(QStringLiteral("^\\d+ % · .*/s · .* left$"));
    EXPECT_TRUE(waitUntil([&] {
        sheet->setSent(sent += 1000, qint64(1) << 30);
        return textOf("rateLabel").contains(words);
    })) << textOf("rateLabel").toStdString();
}

TEST_F(JAUploadingWindowTest, measuresEachUploadAnew)
{
    std::chrono::milliseconds now(0);
    tljira::TransferRate::setUsualClock([&now] { return now; });
    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-1"));
    sheet->setUploadingState(1, QString());
    for (qint64 second = 1; second <= 10; ++second) {
        now += std::chrono::seconds(1);
        sheet->setSent(second << 20, qint64(1) << 30);
    }
    EXPECT_EQ(textOf("rateLabel"), QStringLiteral("0 % · 1.0 MB/s · about 17 min left"));

    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-2"));
    sheet->setUploadingState(1, QString());
    sheet->setSent(1 << 20, qint64(1) << 30);
    EXPECT_EQ(textOf("rateLabel"), QStringLiteral("0 %"));
    tljira::TransferRate::setUsualClock({});
}

TEST_F(JAUploadingWindowTest, cutsOffWhatIsNoWholePercent)
{
    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-1"));
    sheet->setUploadingState(99, QString());
    sheet->setSent(999, 1000);
    EXPECT_TRUE(textOf("rateLabel").startsWith(QStringLiteral("99 %"))) << textOf("rateLabel").toStdString();
}

TEST_F(JAUploadingWindowTest, staysAtItsPercentsWhileNothingComes)
{
    std::chrono::milliseconds now(0);
    tljira::TransferRate::setUsualClock([&now] { return now; });
    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-1"));
    sheet->setUploadingState(60, QString());
    sheet->setSent(6 << 20, 10 << 20);
    const QString before = textOf("rateLabel");

    now += std::chrono::seconds(1);
    EXPECT_TRUE(waitUntil([&] { return textOf("rateLabel") != before; }));
    EXPECT_TRUE(textOf("rateLabel").startsWith(QStringLiteral("60 % · "))) << textOf("rateLabel").toStdString();
    tljira::TransferRate::setUsualClock({});
}

/// Timers that are due at the same time fire in the order in which they were to.
TEST_F(JAUploadingWindowTest, renewsWhatItSaysOnceASecondWhileNothingComes)
{
    int looks = 0;
    tljira::TransferRate::setUsualClock([&looks] {
        ++looks;
        return std::chrono::milliseconds(0);
    });
    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-1"));
    sheet->setUploadingState(60, QString());
    std::optional<int> afterHalfASecond;
    std::optional<int> afterOneAndAHalf;
    QTimer::singleShot(500, Qt::PreciseTimer, [&] { afterHalfASecond = looks; });
    sheet->setSent(6, 10);
    const int before = looks;
    QTimer::singleShot(1500, Qt::PreciseTimer, [&] { afterOneAndAHalf = looks; });
    ASSERT_TRUE(waitUntil([&] { return afterOneAndAHalf.has_value(); }));
    tljira::TransferRate::setUsualClock({});

    EXPECT_EQ(afterHalfASecond, before);
    EXPECT_GT(afterOneAndAHalf, before);
}

TEST_F(JAUploadingWindowTest, renewsNothingOnceItHasEnded)
{
    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-1"));
    sheet->setUploadingState(100, QString());
    sheet->setSent(10, 10);
    sheet->setSuccessState();
    bool isLater = false;
    QTimer::singleShot(1500, Qt::PreciseTimer, [&isLater] { isLater = true; });
    ASSERT_TRUE(waitUntil([&isLater] { return isLater; }));

    EXPECT_FALSE(isOnScreen("rateLabel"));
    EXPECT_EQ(textOf("rateLabel"), QString());
}

/// The sheet renews what it says by itself while nothing comes.
TEST_F(JAUploadingWindowTest, countsNothingOfTheUploadBeforeWhileTheNextOneHasNotBegun)
{
    std::chrono::milliseconds now(0);
    tljira::TransferRate::setUsualClock([&now] { return now; });
    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-1"));
    sheet->setUploadingState(60, QString());
    sheet->setSent(6 << 20, 10 << 20);
    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-2"));
    EXPECT_EQ(textOf("rateLabel"), QString());
    EXPECT_FALSE(isOnScreen("rateLabel"));

    now += std::chrono::seconds(1);
    EXPECT_TRUE(waitUntil([this] { return !textOf("rateLabel").isEmpty(); }));
    EXPECT_EQ(textOf("rateLabel"), QStringLiteral("0 KB/s"));
    tljira::TransferRate::setUsualClock({});
}

TEST_F(JAUploadingWindowTest, putsTheRateBelowASizeThatTakesTheLineUntilTheNextUpload)
{
    const auto isBelow = [this] {
        drainMainQueue();
        return part<QLabel>("rateLabel")->y() >= sheet->sizeLabel()->geometry().bottom();
    };
    const QString size = QStringLiteral(" 4.8 / 8.00 mb");
    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-1"));
    sheet->setUploadingState(60, size);
    sheet->setSent(6, 10);
    EXPECT_FALSE(isBelow());
    EXPECT_FALSE(part<QLabel>("rateLabel")->wordWrap());

    sheet->setUploadingState(60, sizeThatTakesTheLine());
    sheet->setSent(6, 10);
    EXPECT_TRUE(isBelow());
    EXPECT_TRUE(part<QLabel>("rateLabel")->wordWrap());
    sheet->setUploadingState(70, size);
    sheet->setSent(7, 10);
    EXPECT_TRUE(isBelow());

    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-2"));
    sheet->setUploadingState(60, size);
    sheet->setSent(6, 10);
    EXPECT_FALSE(isBelow());
    EXPECT_FALSE(part<QLabel>("rateLabel")->wordWrap());
}

TEST_F(JAUploadingWindowTest, growsWhereTheRateBelowTheSizeNeedsMoreRoom)
{
    auto* rate = part<QLabel>("rateLabel");
    enlarge(rate);
    const int before = height();
    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-1"));
    sheet->setUploadingState(60, sizeThatTakesTheLine());
    sheet->setSent(6, 10);

    EXPECT_EQ(height(), before) << "it jumps";
    EXPECT_TRUE(waitUntil([&] { return height() > before; }));
    EXPECT_TRUE(waitUntil([&] { return rate->height() >= rate->heightForWidth(rate->width()); }));
}

TEST_F(JAUploadingWindowTest, growsWhereTheWordsOfItsSuccessNeedMoreRoom)
{
    auto* done = part<QLabel>("doneLabel");
    enlarge(done);
    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-1"));
    sheet->setUploadingState(60, QString());
    const int before = height();
    sheet->setSuccessState();

    EXPECT_EQ(height(), before) << "it jumps";
    EXPECT_TRUE(waitUntil([&] { return height() > before; }));
    EXPECT_TRUE(waitUntil([&] { return done->height() >= done->heightForWidth(done->width()); }));
}

TEST_F(JAUploadingWindowTest, growsWhereTheWordsOfAnErrorNeedMoreRoom)
{
    enlarge(sheet->errortitle());
    const int before = height();
    sheet->setErrorState(refused);

    EXPECT_EQ(height(), before) << "it jumps";
    EXPECT_TRUE(waitUntil([&] { return height() > before; }));
    EXPECT_TRUE(waitUntil([&] { return sheet->errortitle()->height() >= sheet->errortitle()->sizeHint().height(); }));
}

TEST_F(JAUploadingWindowTest, waitsForTheServerOnceAllIsSent)
{
    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-1"));
    sheet->setUploadingState(100, QString());
    sheet->setSent(10, 10);

    EXPECT_EQ(textOf("rateLabel"), QStringLiteral("Waiting for the server…"));
}

TEST_F(JAUploadingWindowTest, saysWithATickWhereTheDocumentIs)
{
    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-1"));
    sheet->setUploadingState(50, QString());
    sheet->setSent(5, 10);
    EXPECT_FALSE(isOnScreen("doneLine"));
    sheet->setSuccessState();

    EXPECT_TRUE(isOnScreen("doneLine"));
    EXPECT_EQ(textOf("doneLabel"), QStringLiteral("Attached to ABC-1"));
    EXPECT_EQ(textOf("uploadingTitle"), QStringLiteral("Uploaded"));
    EXPECT_FALSE(isOnScreen("rateLabel"));
    EXPECT_THAT(announced, ElementsAre(QStringLiteral("Attached to ABC-1")));

    sheet->setUploadingState(0, QString());
    EXPECT_FALSE(isOnScreen("doneLine"));
    EXPECT_EQ(textOf("uploadingTitle"), QStringLiteral("Uploading"));
}

TEST_F(JAUploadingWindowTest, saysNothingOfAnAttachmentAfterAnError)
{
    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-1"));
    sheet->setErrorState(refused);
    sheet->setSuccessState();
    sheet->setActualView(sheet->uploadingView());

    EXPECT_FALSE(isOnScreen("doneLine"));
}

TEST_F(JAUploadingWindowTest, repeatsWhatTheServerSaysBelowTheMessage)
{
    client->setHost(address);
    tljira::Error error = refused;
    error.userInfo = QJsonObject{{QStringLiteral("errorMessages"), QJsonArray{QStringLiteral("Issue Does Not Exist")}}};
    sheet->setErrorState(error);
    drainMainQueue();

    EXPECT_EQ(textOf("serverSentence"), QStringLiteral("jira.example.test says: “Issue Does Not Exist”"));
    EXPECT_GE(part<QWidget>("serverSentence")->y(), sheet->errorMessage()->geometry().bottom());
    EXPECT_EQ(part<QLabel>("serverSentence")->textFormat(), Qt::PlainText);
    EXPECT_TRUE(isOnScreen("errorIcon"));

    // A logout has forgotten the address meanwhile.
    client->setHost(std::nullopt);
    sheet->setErrorState(error);
    EXPECT_EQ(textOf("serverSentence"), QStringLiteral("The server says: “Issue Does Not Exist”"));

    sheet->setErrorState(refused);
    EXPECT_FALSE(isOnScreen("serverSentence"));
}

TEST_F(JAUploadingWindowTest, saysWhatTheUserCanDoAfterAnError)
{
    sheet->setErrorState(tljira::Error{QStringLiteral("(null)"), 404, {}});

    EXPECT_TRUE(isOnScreen("advice"));
    EXPECT_EQ(textOf("advice"), QStringLiteral("Attach the document again, and check the issue key."));
}

TEST_F(JAUploadingWindowTest, announcesAnErrorWithAllThatItSays)
{
    sheet->setErrorState(refused);

    ASSERT_EQ(announced.size(), 1);
    EXPECT_THAT(announced.first().toStdString(), AllOf(StartsWith("Error\nNot allowed here.\n"), HasSubstr("right")));
}

TEST_F(JAUploadingWindowTest, goesOnWithoutAPlaceForTheRate)
{
    part<QLabel>("rateLabel")->setObjectName(QStringLiteral("other"));
    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-1"));
    sheet->setUploadingState(60, QString());
    sheet->setSent(6, 10);
    sheet->setSuccessState();

    EXPECT_EQ(textOf("doneLabel"), QStringLiteral("Attached to ABC-1"));
}

TEST_F(JAUploadingWindowTest, goesOnWithoutARowForSizeAndRate)
{
    sheet->uploadingView()
        ->findChild<QBoxLayout*>(QStringLiteral("sizeLayout"))
        ->setObjectName(QStringLiteral("other"));
    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-1"));
    sheet->setUploadingState(60, sizeThatTakesTheLine());
    sheet->setSent(6, 10);

    EXPECT_EQ(textOf("rateLabel"), QStringLiteral("60 %"));
}

TEST(JAUploadingWindowBeforeLoadingTest, takesEveryCallQuietly)
{
    const auto sheet = JAUploadingWindow::init();
    sheet->setDocument(QStringLiteral("plan.tessaloom"), QStringLiteral("ABC-1"));
    sheet->setUploadingState(1, QString());
    sheet->setSent(6, 10);
    sheet->setErrorState(refused);
    sheet->setSuccessState();

    EXPECT_FALSE(sheet->isWindowLoaded());
    EXPECT_EQ(sheet->sizeLabel(), nullptr);
}

} // namespace
