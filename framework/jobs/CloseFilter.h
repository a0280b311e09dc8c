#pragma once

#include <QEvent>
#include <QObject>

#include <functional>

namespace jobs {

/// Lets a window be hidden instead of closed by its user. Quitting goes on: nothing is refused.
class CloseFilter : public QObject
{
public:
    CloseFilter(QObject* parent, std::function<bool()> hidesInstead)
        : QObject(parent)
        , m_hidesInstead(std::move(hidesInstead))
    {
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() != QEvent::Close || !m_hidesInstead())
            return false;
        event->accept();
        return true;
    }

private:
    const std::function<bool()> m_hidesInstead;
};

} // namespace jobs
