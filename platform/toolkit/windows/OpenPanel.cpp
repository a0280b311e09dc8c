#include "platform/toolkit/windows/OpenPanel.h"

#include "platform/toolkit/windows/HostWindow.h"
#include "platform/toolkit/windows/ModalResponse.h"

#include <QApplication>
#include <QFileDialog>
#include <QTimer>

namespace tljira {

namespace {

std::function<void(QFileDialog&)> dialogObserver;

} // namespace

int OpenPanel::runModal()
{
    m_urls.clear();
    if (!m_canChooseFiles && !m_canChooseDirectories)
        return ModalResponse::Cancel;

    QFileDialog dialog(dialogParent());
    dialog.setAttribute(Qt::WA_QuitOnClose, false);
    if (!m_canChooseFiles) {
        dialog.setFileMode(QFileDialog::Directory);
        dialog.setOption(QFileDialog::ShowDirsOnly);
    } else {
        dialog.setFileMode(m_allowsMultipleSelection ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    }
    if (dialogObserver) {
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        QTimer::singleShot(0, &dialog, [&dialog] { dialogObserver(dialog); });
    }
    if (dialog.exec() != QDialog::Accepted)
        return ModalResponse::Cancel;
    m_urls = dialog.selectedUrls();
    return ModalResponse::OK;
}

std::optional<QUrl> OpenPanel::url() const
{
    return m_urls.isEmpty() ? std::nullopt : std::optional(m_urls.first());
}

std::optional<QString> OpenPanel::path() const
{
    return m_urls.isEmpty() ? std::nullopt : std::optional(m_urls.first().toLocalFile());
}

void OpenPanel::observeDialogs(std::function<void(QFileDialog&)> observer)
{
    dialogObserver = std::move(observer);
}

} // namespace tljira
