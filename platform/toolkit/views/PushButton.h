#pragma once

#include <QPushButton>

namespace tljira {

/// What a QPushButton of an interface file is made as: with room around its text at every size of its font, and, while
/// it is the default button of its window, filled with the palette's highlight colour in every style that draws buttons
/// in the colours of the palette. To its owner it is a QPushButton.
class PushButton : public QPushButton
{
public:
    explicit PushButton(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void initStyleOption(QStyleOptionButton* option) const override;
};

} // namespace tljira
