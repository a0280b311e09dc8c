#include "tests/screenreader/ReaderHands.h"

#include "tests/kit/WaitUntil.h"

#include <QApplication>
#include <QEvent>

#include <gtest/gtest.h>

namespace tests {

ReaderHands::ReaderHands(User& user)
    : DesktopHands(user)
{
    qApp->installEventFilter(this);
}

void ReaderHands::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    const int before = m_releases;
    DesktopHands::press(key, modifiers);
    waitForReleasesAfter(before);
}

void ReaderHands::write(const QString& text)
{
    for (const QChar character : text) {
        const int before = m_releases;
        DesktopHands::write(QString(character));
        waitForReleasesAfter(before);
    }
}

void ReaderHands::waitForReleasesAfter(int before) const
{
    EXPECT_TRUE(waitUntil([&] { return m_releases > before; })) << "a key does not arrive";
    drainMainQueue();
}

bool ReaderHands::eventFilter(QObject* receiver, QEvent* event)
{
    m_releases += event->type() == QEvent::KeyRelease && receiver->isWidgetType();
    return false;
}

} // namespace tests
