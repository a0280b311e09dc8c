#include "platform/toolkit/views/View.h"

#include "platform/toolkit/windows/OffScreen.h"

#include <QApplication>
#include <QLayout>

namespace tljira {

namespace {

QWidget* offScreenView = nullptr;

bool wasHiddenOnPurpose(const QWidget* view)
{
    return view->testAttribute(Qt::WA_WState_Hidden) && view->testAttribute(Qt::WA_WState_ExplicitShowHide);
}

} // namespace

QWidget* offScreen()
{
    if (!offScreenView) {
        offScreenView = new QWidget;
        qAddPostRoutine([] {
            delete offScreenView;
            offScreenView = nullptr;
        });
    }
    return offScreenView;
}

void addSubview(QWidget* superview, QWidget* view)
{
    if (!superview || !view)
        return;
    const bool hidden = wasHiddenOnPurpose(view);
    if (view->parentWidget() != superview)
        view->setParent(superview);
    view->raise();
    view->setVisible(!hidden);
}

void removeFromSuperview(QWidget* view)
{
    if (view && view->parentWidget() != offScreen())
        view->setParent(offScreen());
}

QList<QWidget*> subviews(const QWidget* view)
{
    return view ? view->findChildren<QWidget*>(Qt::FindDirectChildrenOnly) : QList<QWidget*>();
}

void layoutSubtreeIfNeeded(QWidget* view)
{
    if (!view)
        return;
    if (QLayout* layout = view->layout()) {
        // A hidden view keeps the size changes that its layout has yet to hear of.
        layout->invalidate();
        layout->activate();
    }
    for (QWidget* subview : subviews(view))
        layoutSubtreeIfNeeded(subview);
}

void showOnly(QWidget* shown, std::initializer_list<QWidget*> views)
{
    // What is hidden gives up the keyboard, also when it is shown again at once.
    const QPointer<QWidget> focused = shown ? shown->window()->focusWidget() : nullptr;
    for (QWidget* view : views)
        setHidden(view, true);
    setHidden(shown, false);
    if (focused && shown->isAncestorOf(focused))
        focused->setFocus();
}

} // namespace tljira

QString describe(const QWidget* view)
{
    if (!view)
        return QStringLiteral("(null)");
    return QStringLiteral("<%1: %2>").arg(QString::fromLatin1(view->metaObject()->className()), view->objectName());
}
