#include "tests/screenreader/ReaderHands.h"

#include "tests/kit/WaitUntil.h"

#include <QApplication>
#include <QEvent>

#include <gtest/gtest.h>

namespace tests {

ReaderHands::ReaderHands(User& user)
    : DesktopHands(user)
{
}

void ReaderHands::goFirst()
{
    qApp->installEventFilter(this);
}

void ReaderHands::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    const int before = m_releases;
    goFirst();
    DesktopHands::press(key, modifiers);
    waitForReleasesAfter(before);
}

void ReaderHands::write(const QString& text)
{
    for (const QChar character : text) {
        const int before = m_releases;
        goFirst();
        DesktopHands::write(QString(character));
        waitForReleasesAfter(before);
    }
}

void ReaderHands::waitForReleasesAfter(int before) const
{
    // Where the press closed the window, nobody may be there for the release.
    waitUntil([&] { return m_releases > before; }, std::chrono::seconds(2));
    drainMainQueue();
}

bool ReaderHands::eventFilter(QObject* receiver, QEvent* event)
{
    // What comes from Qt itself is a key that was kept back.
    m_releases += event->type() == QEvent::KeyRelease && (receiver->isWidgetType() || !event->spontaneous());
    return false;
}

} // namespace tests
