#include "tests/states/WindowHands.h"

#include "tests/kit/WaitUntil.h"

#include <QGuiApplication>
#include <QThread>
#include <QWindow>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <chrono>

namespace tests {

namespace {

QString textOf(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        return QStringLiteral("\r");
    return key == Qt::Key_Space && !modifiers ? QStringLiteral(" ") : QString();
}

/// The window system's clock counts milliseconds, and no two events of a keyboard have the same time.
void waitForNextTime()
{
    using Clock = std::chrono::steady_clock;
    const auto begin = Clock::now();
    while (Clock::now() - begin <= std::chrono::milliseconds(1))
        QThread::usleep(100);
}

void send(Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& text)
{
    for (const bool isPress : {true, false}) {
        waitForNextTime();
        if (QWindow* window = QGuiApplication::focusWindow())
            QTest::simulateEvent(window, isPress, key, modifiers, text, false);
    }
    drainMainQueue();
}

} // namespace

void WindowHands::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    ASSERT_TRUE(waitUntil([] { return QGuiApplication::focusWindow() != nullptr; })) << "no window is active";
    send(key, modifiers, textOf(key, modifiers));
}

void WindowHands::write(const QString& text)
{
    ASSERT_TRUE(waitUntil([] { return QGuiApplication::focusWindow() != nullptr; })) << "no window is active";
    for (const QChar character : text)
        send(static_cast<Qt::Key>(character.toUpper().unicode()), {}, QString(character));
}

} // namespace tests
