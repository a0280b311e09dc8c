#include "tests/shell/TLJiraUploadTest.h"

#include "constants/JAConstants.h"
#include "platform/foundation/settings/UserDefaults.h"

namespace tests {

TLJiraUploadTest::TLJiraUploadTest()
{
    tljira::UserDefaults::standardUserDefaults().setObject(true, kClearCache);
}

void TLJiraUploadTest::open()
{
    entry = TLJiraUpload::initWithName(LoneDocument::name(), document.path());
    entry->showWindow();
}

bool TLJiraUploadTest::waitForLoginForm()
{
    return waitUntil([this] { return ui::isOnScreen(entry->jaLoginWindow()->view()); });
}

bool TLJiraUploadTest::waitForBody()
{
    return waitUntil([this] { return ui::isOnScreen(entry->bodyViewController()->uploadView()); });
}

void TLJiraUploadTest::logInThroughTheForm(const QString& password)
{
    const auto form = entry->jaLoginWindow();
    ui::type(form->hostTextField(), address);
    ui::type(form->emailTextField(), QStringLiteral("anna"));
    ui::type(form->passwordTextField(), password);
    ui::click(form->loginButton());
    ASSERT_TRUE(waitUntil([&form] { return form->loginButton()->isEnabled(); }));
}

QStringList TLJiraUploadTest::names() const
{
    const auto header = entry->headViewController();
    return {header->nameLabel()->text(), header->displayNameLabel()->text(), header->emailLabel()->text()};
}

} // namespace tests
