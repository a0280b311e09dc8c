#pragma once

#include <QString>

#include <functional>

class QMessageBox;

namespace tljira {

/// A message with one button, "OK", that the user has to see before going on; a warning, unless it is told otherwise.
class Alert
{
public:
    enum class Style { Warning = 0, Informational = 1, Critical = 2 };

    void setMessageText(const QString& text) { m_messageText = text; }
    void setInformativeText(const QString& text) { m_informativeText = text; }
    void setStyle(Style style) { m_style = style; }

    /// ModalResponse::OK once the user is done with it; ModalResponse::Cancel if the application quits meanwhile.
    int runModal();

    /// For tests: called with each message box once it is on screen, from inside runModal().
    static void observeDialogs(std::function<void(QMessageBox&)> observer);

private:
    QString m_messageText;
    QString m_informativeText;
    Style m_style = Style::Warning;
};

} // namespace tljira
