#include "tools/tour/User.h"

#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QWindow>

namespace tessaloom::tour::user {

namespace {

/// The window system's own way, not straight to the view.
void clickAt(QWidget& view, const QPoint& position)
{
    QWidget* const window = view.window();
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, view.mapTo(window, position));
}

bool isInSight(const QWidget& view)
{
    const QWidget* const window = view.window();
    return view.isVisible() && window->rect().contains(view.mapTo(window, view.rect().center()));
}

QMenu* menuWith(const QMenuBar& bar, QAction* action)
{
    for (QAction* entry : bar.actions()) {
        if (entry->menu() && entry->menu()->actions().contains(action))
            return entry->menu();
    }
    return nullptr;
}

} // namespace

Step click(QWidget* view)
{
    // A window that grows smoothly may not have come to it yet.
    co_await Until([view] { return isInSight(*view); });
    co_await Perform([view] { clickAt(*view, view->rect().center()); });
}

Step type(QLineEdit* field, QString text)
{
    co_await click(field);
    // GCC 12 destroys what a lambda has captured twice where the lambda is a temporary of a co_await.
    const auto keys = [field, text] {
        QWindow* const window = field->window()->windowHandle();
        QTest::keySequence(window, QKeySequence::SelectAll);
        QTest::keyClick(window, Qt::Key_Delete);
        for (const QChar character : text)
            QTest::sendKeyEvent(QTest::Click, window, Qt::Key_unknown, QString(character), Qt::NoModifier);
    };
    co_await Perform(keys);
}

Step press(QWidget* window, Qt::Key key)
{
    co_await Perform([window, key] { QTest::keyClick(window->window()->windowHandle(), key); });
}

Step choose(QMenuBar* bar, QAction* action)
{
    QMenu* const menu = menuWith(*bar, action);
    co_await Perform([bar, menu] { clickAt(*bar, bar->actionGeometry(menu->menuAction()).center()); });
    co_await Until([menu] { return menu->isVisible(); });
    co_await Perform([menu, action] { clickAt(*menu, menu->actionGeometry(action).center()); });
}

Step closeWindow(QWidget* window)
{
    co_await Perform([window] { window->close(); });
}

} // namespace tessaloom::tour::user
