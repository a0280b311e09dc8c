#pragma once

#include <QWidget>

namespace tljira {

/// The hairline that sets a sheet off from its parent where the window system draws no frame around it. Lies on top of
/// the content and lets the mouse through.
class SheetEdge : public QWidget
{
public:
    explicit SheetEdge(QWidget* window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tljira
