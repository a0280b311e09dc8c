#include "platform/toolkit/windows/ViewController.h"

#include <QEvent>

namespace tljira {

class ViewController::LayoutWatch : public QObject
{
public:
    explicit LayoutWatch(ViewController& controller)
        : m_controller(controller)
    {
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const QEvent::Type type = event->type();
        const bool isLayout = type == QEvent::Show || type == QEvent::Resize || type == QEvent::LayoutRequest;
        if (isLayout && !m_isInLayout) {
            m_isInLayout = true;
            m_controller.viewWillLayout();
            m_isInLayout = false;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    ViewController& m_controller;
    bool m_isInLayout = false;
};

ViewController::ViewController() = default;
ViewController::~ViewController() = default;

void ViewController::initWithNibName(const QString& name, const std::optional<Bundle>& bundle)
{
    setNib(name, bundle);
}

QWidget* ViewController::view()
{
    if (m_isLoaded)
        return m_view;
    m_isLoaded = true;
    const LoadedView loaded = loadNib();
    m_view = loaded.view ? loaded.view.get() : addEmptyView();
    m_view->setWindowTitle(loaded.windowTitle);
    m_layoutWatch = std::make_unique<LayoutWatch>(*this);
    m_view->installEventFilter(m_layoutWatch.get());
    viewDidLoad();
    return m_view;
}

} // namespace tljira
