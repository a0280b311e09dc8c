#pragma once

#include <QList>
#include <QUrl>

#include <functional>
#include <optional>

class QFileDialog;

namespace tljira {

/// Lets the user choose existing files, or existing folders; one file, unless it is told otherwise. One panel offers
/// one of the two: where both are allowed, files. Where neither is, it does not come up.
class OpenPanel
{
public:
    void setCanChooseFiles(bool can) { m_canChooseFiles = can; }
    void setCanChooseDirectories(bool can) { m_canChooseDirectories = can; }
    void setAllowsMultipleSelection(bool allows) { m_allowsMultipleSelection = allows; }

    /// ModalResponse::OK once the user has chosen, otherwise ModalResponse::Cancel.
    int runModal();

    /// What was chosen in the last run, in no particular order; empty after a cancelled one.
    QList<QUrl> urls() const { return m_urls; }
    std::optional<QUrl> url() const;
    /// The local path of url().
    std::optional<QString> path() const;

    /// For tests: called with each dialog once it is on screen, from inside runModal(). The dialog is then Qt's own,
    /// which can be driven, not the desktop's.
    static void observeDialogs(std::function<void(QFileDialog&)> observer);

private:
    bool m_canChooseFiles = true;
    bool m_canChooseDirectories = false;
    bool m_allowsMultipleSelection = false;
    QList<QUrl> m_urls;
};

} // namespace tljira
