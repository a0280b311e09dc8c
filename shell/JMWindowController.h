#pragma once

#include "download/JADownloadBodyViewController.h"
#include "platform/foundation/Export.h"
#include "shell/SessionWindowController.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>

/// The window in which the host's user fetches a document from an issue.
///
///     JMWindowController::init()->run([](const std::optional<QString>& path) { … });
class TL_EXPORT JMWindowController : public SessionWindowController
{
public:
    /// The path of the document, or nothing.
    using RunCallBack = std::function<void(const std::optional<QString>& path)>;

    /// Takes over as the client's delegate; the window is loaded when it is first shown.
    static std::shared_ptr<JMWindowController> init();

    /// Runs the window modally; returns when that is over and `callBack` has run, once. It gets the path that the body
    /// holds then: nothing if nothing was ever asked for, and the name of a file that may be incomplete or missing if a
    /// download was started but did not end. The next download, of any program of this user, removes the file:
    /// `callBack` moves it to a place of its own, or reads it.
    void run(const RunCallBack& callBack);

    /// The panel below the header; never null.
    std::shared_ptr<JADownloadBodyViewController> bodyViewController() const { return m_bodyViewController; }

private:
    JMWindowController() = default;

    std::shared_ptr<JADownloadBodyViewController> m_bodyViewController;
};
