#pragma once

#include "platform/toolkit/nib/Outlets.h"

namespace tljira {

/// A view of an interface file that the owner of the file wants to reach, by object name. A member of the owner, which
/// declares it once and reads it as it would call a function:
///
///     tljira::Outlet<QPushButton> cancelButton{outlets, "cancelButton"};   // cancelButton()->setEnabled(true)
///
/// Null until the file is loaded, and again when the view is gone. A view that is missing, or of another class, leaves
/// it null.
template <class View>
class Outlet
{
public:
    /// Declares the outlet, before the interface file is loaded.
    Outlet(Outlets& outlets, const char* name) { outlets.bind(name, &m_view); }
    Outlet(const Outlet&) = delete;
    Outlet& operator=(const Outlet&) = delete;

    /// The view, or null.
    View* operator()() const { return m_view; }

private:
    QPointer<View> m_view;
};

} // namespace tljira
