#pragma once

#include "platform/foundation/Export.h"
#include "platform/toolkit/Outlets.h"

#include <QWidget>

namespace platform {

/// One row's view in a TableView, made from its prototype in the interface file. A subclass declares its outlets in its
/// constructor and is known to interface files by registerViewClass().
class TL_EXPORT TableCellView : public QWidget
{
    Q_OBJECT

public:
    explicit TableCellView(QWidget* parent = nullptr);

    /// The prototype's name.
    QString identifier() const { return m_identifier; }

    /// Outlets are connected; called once, before the cell is first handed out.
    virtual void awakeFromNib() {}
    /// The cell served another row and is about to be handed out again.
    virtual void prepareForReuse() {}

protected:
    Outlets outlets;

private:
    friend class Nib;

    /// The outlets that stay empty.
    QStringList connectOutlets() { return outlets.connectTo({this}); }
    void wake(const QString& identifier);

    QString m_identifier;
};

} // namespace platform
