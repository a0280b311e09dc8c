#pragma once

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>
#include <vector>

/// What the user of a host does in the framework's windows, with mouse and keyboard. The host knows nothing of these
/// but what can be seen.
namespace user {

/// Null as long as the user does not see it.
template <class View>
View* seen(const char* name)
{
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        for (View* view : window->findChildren<View*>(QString::fromLatin1(name))) {
            if (view->isVisible() && view->isEnabled())
                return view;
        }
    }
    return nullptr;
}

inline bool click(const char* name)
{
    auto* const button = seen<QPushButton>(name);
    if (button)
        QTest::mouseClick(button, Qt::LeftButton);
    return button != nullptr;
}

inline void type(const char* name, const QString& text)
{
    auto* const field = seen<QLineEdit>(name);
    QTest::mouseClick(field, Qt::LeftButton);
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, text);
}

inline bool logInAt(const QString& address, const QString& password)
{
    if (!seen<QPushButton>("loginButton"))
        return false;
    type("hostTextField", address);
    type("emailTextField", QStringLiteral("anna"));
    type("passwordTextField", password);
    return click("loginButton");
}

inline bool logIn()
{
    return logInAt(QStringLiteral("http://jira.example.test"), QStringLiteral("secret"));
}

inline bool enterKey(const char* field, const char* button, const QString& key = QStringLiteral("ABC-1"))
{
    if (!seen<QLineEdit>(field) || !seen<QPushButton>(button))
        return false;
    type(field, key);
    return click(button);
}

/// Closes the sheet in which this label says that all is done; other windows have a button of that name, too.
inline bool closeWhenDone(const char* label)
{
    const auto* const text = seen<QLabel>(label);
    if (!text || text->text() != QStringLiteral("DONE"))
        return false;
    QTest::mouseClick(text->window()->findChild<QPushButton*>(QStringLiteral("cancelButton")), Qt::LeftButton);
    return true;
}

/// Does the steps in their order, each as soon as it can be done.
class User : public QObject
{
public:
    explicit User(std::vector<std::function<bool()>> steps)
        : m_steps(std::move(steps))
    {
        m_timer.callOnTimeout(this, [this] {
            if (m_next < m_steps.size() && m_steps[m_next]())
                ++m_next;
        });
        m_timer.start(5);
    }

private:
    std::vector<std::function<bool()>> m_steps;
    std::size_t m_next = 0;
    QTimer m_timer;
};

} // namespace user
