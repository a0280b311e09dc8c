#include "platform/toolkit/views/FillingSubview.h"

#include "platform/toolkit/views/View.h"

#include <QGridLayout>

namespace tljira {

namespace {

void addToLayout(QLayout* layout, QWidget* view)
{
    // In a grid several views can have the same place.
    if (auto* grid = qobject_cast<QGridLayout*>(layout))
        grid->addWidget(view, 0, 0);
    else
        layout->addWidget(view);
}

QLayout* layoutOf(QWidget* superview)
{
    if (!superview->layout()) {
        auto* grid = new QGridLayout(superview);
        grid->setContentsMargins(0, 0, 0, 0);
    }
    return superview->layout();
}

} // namespace

void addFillingSubview(QWidget* superview, QWidget* view)
{
    if (!superview || !view)
        return;
    addSubview(superview, view);
    addToLayout(layoutOf(superview), view);
    superview->updateGeometry();
    view->setGeometry(superview->rect());
}

} // namespace tljira
