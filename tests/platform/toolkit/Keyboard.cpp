#include "tests/platform/toolkit/Keyboard.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>
#include <QtTest/QTest>

namespace tests {

namespace {

QString textOf(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        return QStringLiteral("\r");
    const bool isText = key >= Qt::Key_Space && key <= Qt::Key_AsciiTilde && !(modifiers & Qt::AltModifier);
    return isText ? QString(QChar(key)).toLower() : QString();
}

} // namespace

void Keyboard::send(bool isPress, Qt::Key key, Qt::KeyboardModifiers modifiers, bool isRepeat) const
{
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
