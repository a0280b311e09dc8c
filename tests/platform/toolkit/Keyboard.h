#pragma once

#include <QString>

class QWidget;

namespace tests {

/// The keyboard in front of one window: what it sends takes the way of the window system, so that shortcuts, the focus
/// and whatever watches the keys have their say. Every event has a time of its own.
class Keyboard
{
public:
    explicit Keyboard(const QWidget* window)
        : m_window(window)
    {
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const;
    void release(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const;
    /// What a held key sends once: down again, up and down.
    void repeat(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const;
    /// The same from a busy window system: nothing but their common time says that both are one key's that is held.
    /// Answers whether the key could be a shortcut's.
    bool repeatUnmarked(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const;
    void click(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const;

private:
    void send(bool isPress, Qt::Key key, Qt::KeyboardModifiers modifiers, bool isRepeat) const;

    const QWidget* m_window;
};

/// Within the interval of a double click a key that is pressed again may count as the first press: with this, none
/// does.
class WithoutDoubledKeys
{
public:
    WithoutDoubledKeys();
    ~WithoutDoubledKeys();
    WithoutDoubledKeys(const WithoutDoubledKeys&) = delete;
    WithoutDoubledKeys& operator=(const WithoutDoubledKeys&) = delete;

private:
    int m_before;
};

} // namespace tests
