#pragma once

#include <QLabel>

namespace tljira {

/// A label of one line, for names that can be long: what does not fit is left out of the middle, and the whole text is
/// the tool tip meanwhile. text() is always the whole text, which is never taken for markup.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    /// What is drawn.
    QString shownText() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tljira
