#include "tests/download/DownloadTest.h"

#include <QFile>
#include <QtTest/QTest>

namespace tests {

void routeToServer(int port)
{
    tljira::URLSessionConfiguration::setDefaultRoutes({QStringLiteral("jira.example.test:80:127.0.0.1:%1").arg(port)});
}

DownloadTest::DownloadTest(const standin::Options& options)
    : server(options)
{
    server.addUser("ada", "secret");
    server.addIssue("ABC-1");
    routeToServer(server.port());
    client = JAController::sharedInstance();
    client->setHost(QStringLiteral("http://jira.example.test/"));
}

void DownloadTest::SetUp()
{
    bool isDone = false;
    client->login(QStringLiteral("ada"), QStringLiteral("secret"), [&isDone](const auto& session, const auto&) {
        EXPECT_NE(session, nullptr);
        isDone = true;
    });
    ASSERT_TRUE(waitUntil([&] { return isDone; }));
    drainMainQueue();
    log.clear();
    server.forgetRequests();
}

std::shared_ptr<const JAAttachmentObject> DownloadTest::attach(const standin::NewAttachment& attachment)
{
    const auto id = server.addAttachment("ABC-1", attachment);
    std::shared_ptr<const JAIssueObject> issue;
    client->getIssueObject(QStringLiteral("ABC-1"), [&issue](const auto& answer, const auto&) { issue = answer; });
    EXPECT_TRUE(waitUntil([&] { return issue != nullptr; }));
    drainMainQueue();
    log.clear();
    server.forgetRequests();
    for (const auto& record : issue->attachments()) {
        if (record->ID() == QString::number(id))
            return record;
    }
    ADD_FAILURE() << "the server does not list the attachment";
    return nullptr;
}

void DownloadTest::waitForHeldAnswer()
{
    ASSERT_TRUE(waitUntil([this] { return server.heldCount() == 1; }));
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

void click(QAbstractButton* button)
{
    ASSERT_NE(button, nullptr);
    ASSERT_TRUE(button->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);
}

QPushButton* closeButton(const tljira::Window& window)
{
    for (auto* button : window.widget()->findChildren<QPushButton*>()) {
        if (button->isVisible() && button->shortcut() == QKeySequence(Qt::Key_Escape))
            return button;
    }
    return nullptr;
}

std::optional<QByteArray> contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll()) : std::nullopt;
}

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
}

} // namespace tests
