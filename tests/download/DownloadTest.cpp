#include "tests/download/DownloadTest.h"

namespace tests {

DownloadTest::DownloadTest(const standin::Options& options)
    : JiraTest(options)
{
    client->setHost(address);
}

void DownloadTest::SetUp()
{
    logIn();
}

std::shared_ptr<const JAAttachmentObject> DownloadTest::attach(const standin::NewAttachment& attachment)
{
    const auto id = server.addAttachment("ABC-1", attachment);
    std::shared_ptr<const JAIssueObject> issue;
    client->getIssueObject(QStringLiteral("ABC-1"), [&issue](const auto& answer, const auto&) { issue = answer; });
    EXPECT_TRUE(waitUntil([&] { return issue != nullptr; }));
    forgetThePast();
    for (const auto& record : issue->attachments()) {
        if (record->ID() == QString::number(id))
            return record;
    }
    ADD_FAILURE() << "the server does not list the attachment";
    return nullptr;
}

std::shared_ptr<const JAAttachmentObject> attachment(const QJsonObject& json)
{
    return JAAttachmentObject::initWithDictionary(json);
}

std::shared_ptr<const JAAttachmentObject> attachmentNamed(const QString& name)
{
    return attachment({{QStringLiteral("filename"), name}});
}

JAListAttachedFilesWindow::Attachments attachmentsNamed(const QStringList& names)
{
    JAListAttachedFilesWindow::Attachments attachments;
    for (const QString& name : names)
        attachments.push_back(attachmentNamed(name));
    return attachments;
}

std::shared_ptr<tljira::Window> shownWindow(QWidget* content)
{
    const auto window = tljira::Window::create(QStringLiteral("Host"), content);
    window->setFrame(QRectF(100, 100, 600, 400), false);
    window->makeKeyAndOrderFront();
    return window;
}

QStringList names(const JAListAttachedFilesWindow::Attachments& attachments)
{
    QStringList all;
    for (const auto& attachment : attachments)
        all.append(attachment->name().value_or(QStringLiteral("(none)")));
    return all;
}

QStringList shownTitles(const JAListAttachedFilesWindow& list)
{
    QStringList titles;
    while (const auto* cell = cellAtRow(list, titles.size()))
        titles.append(cell->titleLabel()->text());
    return titles;
}

JAAttachedCell* cellAtRow(const JAListAttachedFilesWindow& list, qint64 row)
{
    return qobject_cast<JAAttachedCell*>(list.tableView()->cellAtRow(row));
}

QPushButton* closeButton(const tljira::Window& window)
{
    for (auto* button : window.widget()->findChildren<QPushButton*>()) {
        if (button->isVisible() && button->shortcut() == QKeySequence(Qt::Key_Escape))
            return button;
    }
    return nullptr;
}

} // namespace tests
