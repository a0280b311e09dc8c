#pragma once

// What the user of a host does and sees, in all hosts that are made of the documents.

#include <TLJiraController/TLJiraController.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>

#include <cstdio>
#include <cstdlib>
#include <functional>

/// What its user would tell of it.
inline void tellWhatCanBeSeen()
{
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible())
            continue;
        std::printf("there is \"%s\"\n", qPrintable(window->windowTitle()));
        for (const QLabel* label : window->findChildren<QLabel*>()) {
            if (label->isVisible() && !label->text().isEmpty())
                std::printf("  %s\n", qPrintable(label->text()));
        }
    }
}

inline void waitFor(const char* what, const std::function<bool()>& condition)
{
    QElapsedTimer time;
    time.start();
    while (!condition()) {
        // The user acts inside an event, whose batch the event dispatcher for GLib takes for sent until it is woken.
        QAbstractEventDispatcher::instance()->wakeUp();
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        if (time.elapsed() > 60'000) {
            std::printf("waited in vain for %s\n", what);
            tellWhatCanBeSeen();
            std::exit(1);
        }
    }
}

template <typename Controller>
std::shared_ptr<Controller> openWindow()
{
    return std::dynamic_pointer_cast<Controller>(JAController::sharedInstance()->delegate());
}

inline bool isUsable(const QWidget* control)
{
    return control && control->isVisible() && control->isEnabled();
}

inline void logIn(JALoginWindow& form)
{
    waitFor("the login form", [&] { return isUsable(form.loginButton()); });
    form.hostTextField()->setText(QStringLiteral("http://jira.example.com"));
    form.emailTextField()->setText(QStringLiteral("anna"));
    form.passwordTextField()->setText(QStringLiteral("correct horse"));
    form.loginButton()->click();
}
