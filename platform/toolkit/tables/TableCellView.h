#pragma once

#include "platform/foundation/Export.h"
#include "platform/toolkit/nib/Outlets.h"

#include <QString>
#include <QStringList>
#include <QWidget>

namespace tljira {

/// One row's view in a TableView, made from its prototype in the interface file or by the table's cell maker. A
/// subclass declares its outlets in its constructor.
class TL_EXPORT TableCellView : public QWidget
{
    Q_OBJECT

public:
    /// Made by whoever loads interface files, for each cell that a table needs.
    explicit TableCellView(QWidget* parent = nullptr);

    /// The prototype's name, or whatever else wake() was given.
    QString identifier() const { return m_identifier; }

    /// Sets the outlets from the views in the cell. Those that stay empty come back.
    QStringList connectOutlets();

    /// Makes a new cell ready for use: gives it its identifier, sets its outlets and calls awakeFromNib(). Whoever
    /// makes a cell by other means than an interface file does this once.
    void wake(const QString& identifier);

    /// Outlets are connected; called once, before the cell is first handed out.
    virtual void awakeFromNib() {}
    /// The cell served another row and is about to be handed out again.
    virtual void prepareForReuse() {}

protected:
    /// To be bound in the constructor of the subclass.
    Outlets outlets;

private:
    QString m_identifier;
};

} // namespace tljira
