#include "tests/desktop/User.h"

#include "tests/desktop/XServer.h"
#include "tests/kit/WaitUntil.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCursor>
#include <QDir>
#include <QPixmap>
#include <QScreen>
#include <QWindow>

#include <gtest/gtest.h>

namespace tests {

namespace {

// The first byte of what the server sends; the highest bit says that another program made it up.
constexpr quint8 keyPress = 2;
constexpr quint8 keyRelease = 3;

QPoint centreOf(const QWidget& view)
{
    return view.mapToGlobal(view.rect().center());
}

bool isInSight(const QWidget& view)
{
    const QWindow* window = view.window()->windowHandle();
    const QWidget* there = QApplication::widgetAt(centreOf(view));
    return window && window->isExposed() && view.isVisible() && view.isEnabled() &&
           (there == &view || view.isAncestorOf(there));
}

} // namespace

User::User()
{
    qApp->installNativeEventFilter(this);
    qApp->installEventFilter(this);
}

User::~User()
{
    qApp->removeNativeEventFilter(this);
}

bool User::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*)
{
    if (eventType == "xcb_generic_event_t") {
        const quint8 type = *static_cast<const quint8*>(message) & 0x7f;
        m_keyPresses += type == keyPress;
        m_keyReleases += type == keyRelease;
    }
    return false;
}

bool User::eventFilter(QObject* receiver, QEvent* event)
{
    m_buttonReleases += event->type() == QEvent::MouseButtonRelease && receiver->isWindowType();
    return false;
}

void User::click(QWidget* view)
{
    ASSERT_NE(view, nullptr);
    const std::string name = view->objectName().toStdString();
    ASSERT_TRUE(waitUntil([view] { return isInSight(*view); })) << name;
    const int before = m_buttonReleases;
    XServer::instance().movePointer(centreOf(*view));
    XServer::instance().pressButton();
    ASSERT_TRUE(waitUntil([&] { return m_buttonReleases > before; })) << name;
    drainMainQueue();
}

void User::type(QLineEdit* field, const QString& text)
{
    click(field);
    ASSERT_TRUE(waitUntil([field] { return hasKeyboard(field); })) << field->objectName().toStdString();
    XServer::instance().keyDown("Control_L");
    press("a");
    XServer::instance().keyUp("Control_L");
    write(text);
    ASSERT_TRUE(waitUntil([&] { return field->text() == text; })) << field->text().toStdString();
}

void User::write(const QString& text)
{
    for (const QChar character : text) {
        const int before = m_keyReleases;
        XServer::instance().type(character);
        ASSERT_TRUE(waitUntil([&] { return m_keyReleases > before; })) << text.toStdString();
    }
    drainMainQueue();
}

void User::press(const char* key)
{
    hold(key, 0);
}

void User::hold(const char* key, int repeats)
{
    holdUntil(key, repeats, [] { return true; });
}

void User::holdUntil(const char* key, int repeats, const std::function<bool()>& condition)
{
    // Who presses a key has thought for as long as they like.
    const int interval = QApplication::doubleClickInterval();
    QApplication::setDoubleClickInterval(0);
    int before = m_keyPresses;
    XServer::instance().setRepeating(repeats > 0);
    XServer::instance().keyDown(key);
    const bool hasArrived = waitUntil([&] { return m_keyPresses > before; });
    drainMainQueue();
    QApplication::setDoubleClickInterval(interval);
    const bool holds = waitUntil(condition);
    before = m_keyPresses;
    const bool isRepeated = waitUntil([&] { return m_keyPresses >= before + repeats; });
    release(key);
    XServer::instance().setRepeating(false);
    ASSERT_TRUE(hasArrived && holds && isRepeated) << key;
}

void User::release(const char* key)
{
    const int before = m_keyReleases;
    XServer::instance().keyUp(key);
    // Where the press closed the window, nobody may be there for the release.
    waitUntil([&] { return m_keyReleases > before; }, std::chrono::seconds(1));
    drainMainQueue();
}

void User::clickClose(const QWidget* window)
{
    // openbox puts it into the upper right corner of the frame.
    constexpr int insideFrame = 12;
    const auto hasFrame = [window] { return frameOf(window).top() < window->geometry().top(); };
    ASSERT_TRUE(waitUntil(hasFrame));
    XServer::instance().movePointer(frameOf(window).topRight() + QPoint(-insideFrame, insideFrame));
    XServer::instance().pressButton();
}

void User::picture(const QString& name)
{
    drainMainQueue();
    QDir().mkpath(QStringLiteral(SCREENSHOTS));
    const QPixmap screen = QApplication::primaryScreen()->grabWindow(0);
    EXPECT_TRUE(screen.save(QStringLiteral(SCREENSHOTS "/%1.png").arg(name))) << name.toStdString();
}

QRect frameOf(const QWidget* window)
{
    const QWindow* handle = window->windowHandle();
    return handle ? handle->frameGeometry() : window->geometry();
}

bool isInFront(const QWidget* window)
{
    const QWindow* handle = window->windowHandle();
    return window->isVisible() && !window->isMinimized() && handle && handle->isExposed() && window->isActiveWindow() &&
           XServer::instance().frontWindow() == window->winId();
}

} // namespace tests
