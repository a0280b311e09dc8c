#include "platform/toolkit/tables/TableCellView.h"

namespace tljira {

TableCellView::TableCellView(QWidget* parent)
    : QWidget(parent)
{
}

QStringList TableCellView::connectOutlets()
{
    return outlets.connectTo({this});
}

void TableCellView::wake(const QString& identifier)
{
    m_identifier = identifier;
    connectOutlets();
    awakeFromNib();
}

} // namespace tljira
