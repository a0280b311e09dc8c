#include "tests/upload/UploadTest.h"

#include "platform/toolkit/nib/FrameworkBundle.h"

namespace tests {

UploadTest::UploadTest(const standin::Options& options)
    : JiraTest(options)
{
    panel = JAUploadBodyViewController::initWithNibName(QStringLiteral("JAUploadBodyViewController"),
                                                        tljira::frameworkBundle());
    m_sheet = panel->jaUploadingWindow();
    window = tljira::Window::create(QStringLiteral("Upload"), panel->view());
    panel->setNewPathFile(document.path(), LoneDocument::name());
    window->makeKeyAndOrderFront();
}

void UploadTest::SetUp()
{
    logIn();
}

void UploadTest::upload(const QString& key)
{
    ui::type(panel->taskTextField(), key);
    ui::click(panel->uploadFileButton());
}

void UploadTest::holdUploadsAfter(std::int64_t bytes)
{
    server.misbehave(standin::Match::on("POST", "*/attachments"),
                     standin::Fault().hold(standin::Point::requestBody(bytes)));
}

bool UploadTest::isSheetUp() const
{
    return window->attachedSheet() == m_sheet->window() && m_sheet->window()->isVisible();
}

QString UploadTest::outcome()
{
    if (!waitUntil([this] { return isDone() || hasFailed(); }))
        return QString();
    return hasFailed() ? m_sheet->errorMessage()->text() : m_sheet->sizeLabel()->text();
}

} // namespace tests
