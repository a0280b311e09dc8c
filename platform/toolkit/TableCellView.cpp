#include "platform/toolkit/TableCellView.h"

#include "platform/foundation/Log.h"

namespace platform {

TableCellView::TableCellView(QWidget* parent)
    : QWidget(parent)
{
}

void TableCellView::wake(const QString& nibName, const QString& identifier)
{
    m_identifier = identifier;
    for (const QString& name : outlets.connectTo({this}))
        log(u"interface file %@, cell %@: outlet %@ is missing", nibName, identifier, name);
    awakeFromNib();
}

} // namespace platform
