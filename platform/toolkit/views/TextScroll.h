#pragma once

#include <QScrollArea>

namespace tljira {

/// A scrolled view that is as high as what it holds needs at its width, up to two thirds of the screen; beyond that it
/// scrolls. In Designer: a QScrollArea promoted to tljira::TextScroll, whose content has a layout.
class TextScroll : public QScrollArea
{
    Q_OBJECT

public:
    explicit TextScroll(QWidget* parent = nullptr);

    ///@{
    /// Qt's own.
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    ///@}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace tljira
