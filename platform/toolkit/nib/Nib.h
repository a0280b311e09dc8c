#pragma once

#include "platform/toolkit/nib/Bundle.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>

namespace tljira {

class TableCellView;

/// What one interface file brings.
struct NibViews
{
    QPointer<QWidget> view;        ///< null if the file is missing or broken
    QList<QPointer<QWidget>> rest; ///< further top-level views
    QString windowTitle;
    /// Outlets that cells made from this file will lack: "titleLabel in the cell jaAttachedCell".
    QStringList missingCellOutlets;
};

/// The text of one interface file, made by Qt Designer.
///
/// The root of the file is a holder without a layout that only Designer shows. Its direct children are the top-level
/// views:
///   - the one named "view" is the window's content, or the view controller's view;
///   - those of class TableCellView (or a promoted descendant) are prototypes, made anew by makeCell() for every
///     cell; the object name is the identifier;
///   - all others are handed to the owner as they are, outside any window, for it to put where it likes.
/// A file without a direct child named "view" is itself the view. The root's window title is the window's title.
/// Layouts need their margins in the file: QUiLoader gives those of top-level views none of its own.
class Nib : public std::enable_shared_from_this<Nib>
{
public:
    /// Never null. A file that is missing is logged, and instantiate() then brings nothing.
    static std::shared_ptr<Nib> load(const QString& name, const Bundle& bundle);

    /// Makes a fresh set of the file's views, which stand off screen and belong to the caller. Each is at least as
    /// large as its layout needs. A broken file is logged.
    NibViews instantiate();

    /// Makes a fresh cell from the prototype of that identifier; null if the file has none, which is logged once.
    TableCellView* makeCell(const QString& identifier);

    /// For the log: the name, and whether the file is the host's own.
    QString description() const { return m_description; }

private:
    Nib(QString name, const Bundle& bundle, QByteArray text);

    QByteArray prototypeText(const QString& identifier) const;

    QString m_name;
    QString m_description;
    QByteArray m_text;
    QHash<QString, QByteArray> m_prototypes; ///< empty for one that no cell can be made from
};

} // namespace tljira
