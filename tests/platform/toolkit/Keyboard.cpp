#include "tests/platform/toolkit/Keyboard.h"

#include <QApplication>
#include <QKeyEvent>
#include <QThread>
#include <QWidget>
#include <QWindow>
#include <QtTest/QTest>

#include <chrono>

namespace tests {

namespace {

QString textOf(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        return QStringLiteral("\r");
    const bool isText = key >= Qt::Key_Space && key <= Qt::Key_AsciiTilde && !(modifiers & Qt::AltModifier);
    return isText ? QString(QChar(key)).toLower() : QString();
}

/// The window system's clock counts milliseconds.
void waitForNextTime()
{
    using Clock = std::chrono::steady_clock;
    const auto begin = Clock::now();
    while (Clock::now() - begin <= std::chrono::milliseconds(1))
        QThread::usleep(100);
}

} // namespace

void Keyboard::send(bool isPress, Qt::Key key, Qt::KeyboardModifiers modifiers, bool isRepeat) const
{
    waitForNextTime();
    QTest::simulateEvent(m_window->window()->windowHandle(), isPress, key, modifiers, textOf(key, modifiers), isRepeat);
}

void Keyboard::press(Qt::Key key, Qt::KeyboardModifiers modifiers) const
{
    send(true, key, modifiers, false);
}

void Keyboard::release(Qt::Key key, Qt::KeyboardModifiers modifiers) const
{
    send(false, key, modifiers, false);
}

void Keyboard::repeat(Qt::Key key, Qt::KeyboardModifiers modifiers) const
{
    send(false, key, modifiers, true);
    send(true, key, modifiers, true);
}

bool Keyboard::repeatUnmarked(Qt::Key key, Qt::KeyboardModifiers modifiers) const
{
    static quint64 time = 1'000'000'000;
    ++time;
    bool isShortcut = false;
    for (const QEvent::Type type : {QEvent::KeyRelease, QEvent::ShortcutOverride, QEvent::KeyPress}) {
        QKeyEvent event(type, key, modifiers, textOf(key, modifiers));
        event.setTimestamp(time);
        event.ignore();
        QApplication::sendEvent(m_window->window()->windowHandle(), &event);
        isShortcut = isShortcut || (type == QEvent::ShortcutOverride && !event.isAccepted());
    }
    return isShortcut;
}

void Keyboard::click(Qt::Key key, Qt::KeyboardModifiers modifiers) const
{
    press(key, modifiers);
    release(key, modifiers);
}

WithoutDoubledKeys::WithoutDoubledKeys()
    : m_before(QApplication::doubleClickInterval())
{
    QApplication::setDoubleClickInterval(0);
}

WithoutDoubledKeys::~WithoutDoubledKeys()
{
    QApplication::setDoubleClickInterval(m_before);
}

} // namespace tests
