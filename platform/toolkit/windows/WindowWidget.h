#pragma once

#include <QWidget>

namespace tljira {

struct WindowParts;

/// The top-level widget of a Window; tells the window's parts what happens to it.
class WindowWidget : public QWidget
{
    Q_OBJECT

public:
    explicit WindowWidget(WindowParts& parts);

    WindowParts& parts() const { return m_parts; }

    /// Gives up the window of the window system and all that belongs to it, which Qt would keep for a view that was a
    /// window once, even past the end of the application.
    void giveUpSystemWindow();

    /// Clicks the visible button whose shortcut is Escape; false if there is none.
    bool clickCancelButton();

protected:
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void childEvent(QChildEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    bool clickDefaultButton();

    WindowParts& m_parts;
};

} // namespace tljira
