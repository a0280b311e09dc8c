#pragma once

#include <QLabel>

namespace tljira {

/// A label of one line, or of a few, for names that can be long: what does not fit is left out of the middle, and the
/// whole text is the tool tip meanwhile. text() is always the whole text, which is never taken for markup.
class ElidedLabel : public QLabel
{
    Q_OBJECT
    Q_PROPERTY(int maximumLines READ maximumLines WRITE setMaximumLines)

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    ///@{
    /// As many lines as the text needs at the label's width, up to this number; 1 by default.
    int maximumLines() const { return m_maximumLines; }
    void setMaximumLines(int lines);
    ///@}

    /// What is drawn, without the ends of lines.
    QString shownText() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return m_maximumLines > 1; }
    int heightForWidth(int width) const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QSize around() const;
    QString shownAt(int width) const;
    /// The lines of a text, at that width.
    struct Lines;
    Lines linesOf(const QString& text, int width) const;

    int m_maximumLines = 1;
};

} // namespace tljira
