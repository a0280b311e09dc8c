#pragma once

#include "platform/toolkit/windows/Window.h"
#include "tests/kit/Jira.h"
#include "tests/layout/Layout.h"
#include "tests/layout/Look.h"

#include <QCoreApplication>
#include <QEvent>

#include <gmock/gmock.h>

#include <functional>

namespace tests {

/// `Base`, which has a server, on a desktop that looks as the test's parameter says; the user of the server has the
/// name that belongs to the look.
template <class Base>
class LookTest : public Base, public testing::WithParamInterface<Look>
{
protected:
    LookTest()
    {
        standin::User user;
        user.name = Jira::user;
        user.password = Jira::password;
        user.displayName = GetParam().person;
        this->server.addUser(user);
    }

    /// Walks once in each size of letters.
    void walkInAllSizes(const std::function<void()>& walk)
    {
        for (const int size : GetParam().sizes) {
            m_points = size;
            m_desktop.setFontSize(size);
            walk();
        }
    }

    /// Expects that everything in the window has its room.
    void look(const char* state, tljira::Window& window)
    {
        const QString name =
            QStringLiteral("%1-%2-%3").arg(QLatin1String(state), QLatin1String(GetParam().name)).arg(m_points);
        // A text that has just changed gets its room in a later turn of the event loop, before it is painted.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        EXPECT_THAT(layoutFlaws(window), testing::IsEmpty()) << name.toStdString();
        keepPicture(window, name);
    }

private:
    const Desktop m_desktop{GetParam()};
    int m_points = 0;
};

} // namespace tests
