#pragma once

#include "platform/foundation/Export.h"
#include "platform/toolkit/nib/Actions.h"
#include "platform/toolkit/nib/Bundle.h"
#include "platform/toolkit/nib/Outlets.h"

#include <QList>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>
#include <optional>

namespace tljira {

/// What a controller with an interface file is: it declares outlets and actions in its constructor, and owns the views
/// of the file. Views that were moved into another window go with their owner; views that went with such a window leave
/// null behind. Always held by std::shared_ptr. Main thread only.
class TL_EXPORT NibOwner : public std::enable_shared_from_this<NibOwner>
{
public:
    NibOwner(const NibOwner&) = delete;
    NibOwner& operator=(const NibOwner&) = delete;
    virtual ~NibOwner();

    /// After loading, what the owner and its file disagree about, one entry each: "outlet hostTextField" for an outlet
    /// without a view of its name and class (of another class: "outlet errorLabel (a QLabel is needed, found a
    /// QPushButton)"), "action cancelAction" for an action that only the owner or only the file knows, "file
    /// JALoginWindow" for one that is missing or broken. Empty when all is well. When the file is loaded, one line of
    /// the log tells all of it.
    QStringList interfaceProblems() const { return m_problems; }

    /// The file's name, without ".ui"; empty until a factory has given one.
    QString nibName() const { return m_nibName; }

protected:
    NibOwner() = default;

    /// Which file loadNib() loads. Without a bundle it is the host's own.
    void setNib(const QString& name, const std::optional<Bundle>& bundle);

    /// What of an interface file is to be placed by its owner.
    struct LoadedView
    {
        QPointer<QWidget> view; ///< null if the file is missing or broken
        QString windowTitle;    ///< the title of the window that the file describes
    };

    /// Loads the file, the host's own of that name if there is one, connects outlets and actions. The views are the
    /// owner's from then on; none is placed.
    LoadedView loadNib();

    /// An empty view in place of one that could not be loaded.
    QWidget* addEmptyView();

    /// shared_from_this() as the class of the caller: `sharedFrom(this)`.
    template <class Self>
    static std::shared_ptr<Self> sharedFrom(Self* self)
    {
        return std::static_pointer_cast<Self>(self->shared_from_this());
    }

    ///@{
    /// To be bound in the constructor of the subclass; connected when the file is loaded.
    Outlets outlets;
    Actions actions;
    ///@}

private:
    void connectInterface(const QString& nib, const QStringList& missingCellOutlets);

    QString m_nibName;
    std::optional<Bundle> m_bundle;
    QList<QPointer<QWidget>> m_topLevelViews;
    QStringList m_problems;
};

/// What "%@" prints of a controller: "<NIBNAME: 0xADDRESS>".
TL_EXPORT QString describe(const std::shared_ptr<NibOwner>& owner);

} // namespace tljira
