#pragma once

#include <QPoint>
#include <Qt>

struct wl_display;
struct wl_proxy;

namespace tests {

/// A keyboard and a pointer of the compositor that the environment names. What is done with them takes the way of real
/// ones: through the compositor.
class Seat
{
public:
    /// Connects at the first call.
    static Seat& instance();

    ///@{
    /// A key by the number that Linux gives it.
    void keyDown(unsigned key);
    void keyUp(unsigned key);
    ///@}
    void setModifiers(Qt::KeyboardModifiers modifiers);

    ///@{
    /// In pixels from the upper left corner of the screen.
    void movePointer(const QPoint& position);
    void pressButton();
    ///@}

    Seat(const Seat&) = delete;
    Seat& operator=(const Seat&) = delete;

private:
    Seat();

    void found(unsigned name, const char* interface);
    void sendKeymap();
    void sync();

    wl_display* m_display;
    wl_proxy* m_registry = nullptr;
    wl_proxy* m_seat = nullptr;
    wl_proxy* m_keyboards = nullptr;
    wl_proxy* m_pointers = nullptr;
    wl_proxy* m_keyboard = nullptr;
    wl_proxy* m_pointer = nullptr;
    unsigned m_time = 0; ///< of the last event; each has its own
};

} // namespace tests
