#include "platform/toolkit/NibOwner.h"

#include "platform/foundation/Log.h"
#include "platform/toolkit/OffScreen.h"

namespace platform {

NibOwner::~NibOwner()
{
    for (const QPointer<QWidget>& view : m_topLevelViews)
        delete view;
}

void NibOwner::setNib(const QString& name, const std::optional<Bundle>& bundle)
{
    m_nibName = name;
    m_bundle = bundle;
}

Nib::Views NibOwner::loadNib()
{
    Nib::Views views = Nib::load(m_nibName, m_bundle.value_or(Bundle::mainBundle()))->instantiate();
    if (!views.view) {
        m_problems.append(QStringLiteral("file ") + m_nibName);
        return views;
    }
    m_topLevelViews = views.rest;
    m_topLevelViews.prepend(views.view);
    connectInterface();
    return views;
}

QWidget* NibOwner::addEmptyView()
{
    auto* view = new QWidget(offScreen());
    m_topLevelViews.append(view);
    return view;
}

void NibOwner::connectInterface()
{
    QList<QWidget*> views;
    for (const QPointer<QWidget>& view : m_topLevelViews)
        views.append(view);
    for (const QString& name : outlets.connectTo(views))
        m_problems.append(QStringLiteral("outlet ") + name);
    const Actions::Missing missing = actions.connectTo(views, weak_from_this());
    for (const QString& name : missing.undeclared + missing.unused)
        m_problems.append(QStringLiteral("action ") + name);
    for (const QString& problem : m_problems)
        log(u"interface file %@: %@ is missing", m_nibName, problem);
}

QString describe(const std::shared_ptr<NibOwner>& owner)
{
    if (!owner)
        return describe(std::nullopt);
    return QStringLiteral("<%1: 0x%2>")
        .arg(owner->nibName(), QString::number(reinterpret_cast<quintptr>(owner.get()), 16));
}

} // namespace platform
