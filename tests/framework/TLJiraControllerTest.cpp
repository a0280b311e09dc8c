#include "framework/TLJiraController.h"

#include "constants/JAConstants.h"

#include <gtest/gtest.h>

// These programs have nothing but the shared library and its umbrella header, as a host has.

namespace {

TEST(Framework, bringsTheInterfaceFilesOfItsWindows)
{
    const auto upload = TLJiraUpload::initWithName(QStringLiteral("a.tessaloom"), QStringLiteral("/none/a.tessaloom"));
    upload->window();
    upload->bodyViewController()->view();
    const auto download = JMWindowController::init();
    download->window();
    download->bodyViewController()->view();

    EXPECT_EQ(upload->interfaceProblems(), QStringList());
    EXPECT_EQ(upload->bodyViewController()->interfaceProblems(), QStringList());
    EXPECT_EQ(upload->jaLoginWindow()->interfaceProblems(), QStringList());
    EXPECT_EQ(upload->headViewController()->interfaceProblems(), QStringList());
    EXPECT_EQ(download->interfaceProblems(), QStringList());
    EXPECT_EQ(download->bodyViewController()->interfaceProblems(), QStringList());
    EXPECT_EQ(download->bodyViewController()->jaListAttachedWindow()->interfaceProblems(), QStringList());
}

TEST(Framework, makesTheNewestControllerTheClientsDelegate)
{
    const auto first = JMWindowController::init();
    const auto second = TLJiraUpload::init();

    EXPECT_EQ(JAController::sharedInstance()->delegate(), second);
}

TEST(Framework, publishesItsConstants)
{
    EXPECT_EQ(kPrefixDirectory, QStringLiteral("com.tessalooom.JAController"));
    EXPECT_EQ(kClearCache, QStringLiteral("kClearCach0"));
}

TEST(Framework, isOfTheSameClassesForItsHost)
{
    const auto download = JMWindowController::init();
    download->window();
    download->bodyViewController()->view();
    const auto list = download->bodyViewController()->jaListAttachedWindow();
    list->window();
    QObject* const table = list->tableView();

    EXPECT_NE(table, nullptr);
    EXPECT_EQ(qobject_cast<tljira::TableView*>(table), table);
}

} // namespace
