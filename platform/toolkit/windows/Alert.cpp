#include "platform/toolkit/windows/Alert.h"

#include "platform/toolkit/windows/HostWindow.h"
#include "platform/toolkit/windows/ModalResponse.h"

#include <QApplication>
#include <QMessageBox>
#include <QTimer>

namespace tljira {

namespace {

std::function<void(QMessageBox&)> dialogObserver;

QMessageBox::Icon iconFor(Alert::Style style)
{
    switch (style) {
    case Alert::Style::Warning:
        return QMessageBox::Warning;
    case Alert::Style::Informational:
        return QMessageBox::Information;
    case Alert::Style::Critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

} // namespace

int Alert::runModal()
{
    QMessageBox box(iconFor(m_style), QGuiApplication::applicationDisplayName(), m_messageText, QMessageBox::Ok,
                    dialogParent());
    box.setAttribute(Qt::WA_QuitOnClose, false);
    // Texts come from servers and file systems: they are no markup.
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(m_informativeText);
    if (dialogObserver)
        QTimer::singleShot(0, &box, [&box] { dialogObserver(box); });
    return box.exec() == QMessageBox::Ok ? ModalResponse::OK : ModalResponse::Cancel;
}

void Alert::observeDialogs(std::function<void(QMessageBox&)> observer)
{
    dialogObserver = std::move(observer);
}

} // namespace tljira
