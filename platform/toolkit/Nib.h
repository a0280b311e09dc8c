#pragma once

#include "platform/foundation/Export.h"
#include "platform/toolkit/Bundle.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <memory>

namespace platform {

class TableCellView;

/// The text of one interface file, made by Qt Designer.
///
/// The root of the file is a holder without a layout that only Designer shows. Its direct children are the top-level
/// views:
///   - the one named "view" is the window's content, or the view controller's view;
///   - those of class TableCellView (or a promoted descendant) are prototypes, made anew by makeCell() for every cell;
///   the
///     object name is the identifier;
///   - all others are handed to the owner as they are, outside any window, for it to put where it likes.
/// A file without a direct child named "view" is itself the view. The root's window title is the window's title.
/// Layouts need their margins in the file: QUiLoader gives those of top-level views none of its own.
class TL_EXPORT Nib : public std::enable_shared_from_this<Nib>
{
public:
    /// Never null. A file that is missing is logged, and instantiate() then brings nothing.
    static std::shared_ptr<Nib> load(const QString& name, const Bundle& bundle);

    struct Views
    {
        QPointer<QWidget> view;        ///< null if the file is missing or broken
        QList<QPointer<QWidget>> rest; ///< further top-level views
        QString windowTitle;
    };

    /// Makes a fresh set of the file's views, none of which has a parent. Each is at least as large as its layout
    /// needs. A broken file is logged.
    Views instantiate();

    /// Makes a fresh cell from the prototype of that identifier; null, and logged, if the file has none.
    TableCellView* makeCell(const QString& identifier);

    QString name() const { return m_name; }

private:
    Nib(QString name, QByteArray text);

    QByteArray prototypeText(const QString& identifier) const;

    QString m_name;
    QByteArray m_text;
    QHash<QString, QByteArray> m_prototypes;
};

} // namespace platform
