#pragma once

#include "platform/toolkit/windows/AlertView.h"

#include <QLabel>

namespace tljira {

/// The place of a text that is not always there: an icon, then the text, in the palette's colour for it. The line takes
/// room only while there is a text, and tells screen readers when there is. In Designer: a QWidget promoted to
/// tljira::MessageLine, with a layout without margins that holds one QLabel, and the property `kind`:
///
/// | value   | icon    | background      |
/// |---------|---------|-----------------|
/// | error   | warning | a shade of it   |
/// | success | tick    | none            |
class MessageLine : public AlertView
{
    Q_OBJECT
    Q_PROPERTY(QString kind READ kind WRITE setKind)

public:
    /// An error line, hidden.
    explicit MessageLine(QWidget* parent = nullptr);

    QString kind() const { return m_kind; }
    void setKind(const QString& kind);

    /// Puts `text` into `label`, shows or hides the line that the label stands in, and announces the text, also one
    /// that was there already. A label that stands in no line just takes the text; an absent one takes nothing.
    static void show(QLabel* label, const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    bool isError() const;
    int iconSide() const;
    int padding() const;
    void makeRoomForIcon();

    QString m_kind;
};

} // namespace tljira
