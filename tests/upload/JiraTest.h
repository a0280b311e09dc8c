#pragma once

#include "client/JAController.h"
#include "platform/toolkit/Window.h"
#include "standin/Server.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printers.h"
#include "tests/support/WaitUntil.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace tests {

/// A server where Jane Doe has an account and issue ABC-1 is known, and the shared client of the process, which reaches
/// it as `address`. Nobody is logged in.
class JiraTest : public testing::Test
{
protected:
    explicit JiraTest(const standin::Options& options = {});

    static const QString address;
    /// Nothing listens there.
    static const QString deadAddress;

    /// Opens a session for Jane Doe, then forgets what log and server have seen of it.
    void logIn();
    void forgetThePast();
    void waitForHeldExchange();

    LogCapture log;
    standin::Server server;
    std::shared_ptr<JAController> client;
};

/// A document alone in a folder, as a host hands it over.
class LoneDocument
{
public:
    explicit LoneDocument(const QByteArray& bytes = "contents of the document\n");

    QString folder() const { return m_parent.filePath(QStringLiteral("outbox")); }
    QString path() const { return folder() + QStringLiteral("/plan.tessaloom"); }
    static QString name() { return QStringLiteral("Plan.tessaloom"); }

private:
    QTemporaryDir m_parent;
};

// What a user does. The control has to be on screen and enabled.

void click(QAbstractButton* button);
/// Replaces what stands in the field.
void type(QLineEdit* field, const QString& text);
void press(tljira::Window& window, Qt::Key key);

/// Whether a view shows as soon as the window that it stands in does.
bool isShown(const QWidget* view);
bool isOnScreen(const QWidget* view);

} // namespace tests
