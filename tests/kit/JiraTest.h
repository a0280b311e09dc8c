#pragma once

#include "client/JAController.h"
#include "tests/kit/Jira.h"
#include "tests/kit/LogCapture.h"
#include "tests/kit/LoneDocument.h"
#include "tests/kit/Printers.h"
#include "tests/kit/Ui.h"
#include "tests/kit/WaitUntil.h"

#include <gmock/gmock.h>

namespace tests {

/// A server, and the shared client of the process, which reaches it. Nobody is logged in.
class JiraTest : public testing::Test
{
protected:
    explicit JiraTest(const standin::Options& options = {});

    static constexpr const QString& address = Jira::address;
    static constexpr const QString& deadAddress = Jira::deadAddress;

    /// Opens a session for Anna, then forgets what log and server have seen of it.
    void logIn();
    void forgetThePast();
    void waitForHeldExchange();

    LogCapture log;
    Jira server;
    std::shared_ptr<JAController> client;
};

} // namespace tests
