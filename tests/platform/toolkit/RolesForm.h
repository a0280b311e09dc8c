#pragma once

#include "platform/toolkit/nib/Nib.h"
#include "platform/toolkit/windows/Window.h"
#include "tests/platform/toolkit/Forms.h"

#include <QWidget>

#include <memory>

namespace tests {

/// A window with the interface file "Roles", on screen.
struct RolesForm
{
    RolesForm()
    {
        const auto nib = tljira::Nib::load(QStringLiteral("Roles"), forms());
        content.reset(nib->instantiate().view);
        window = tljira::Window::create(QStringLiteral("Roles"), content.get());
        window->makeKeyAndOrderFront();
    }

    ~RolesForm() { window->close(); }

    template <class View>
    View* view(const char* name) const
    {
        return content->findChild<View*>(QString::fromLatin1(name));
    }

    std::unique_ptr<QWidget> content;
    std::shared_ptr<tljira::Window> window;
};

} // namespace tests
