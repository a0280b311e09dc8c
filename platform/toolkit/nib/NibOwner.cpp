#include "platform/toolkit/nib/NibOwner.h"

#include "platform/foundation/Log.h"
#include "platform/toolkit/nib/Nib.h"
#include "platform/toolkit/windows/OffScreen.h"

#include <cxxabi.h>

#include <cstdlib>
#include <memory>
#include <typeinfo>

namespace tljira {

namespace {

QString classNameOf(const NibOwner& owner)
{
    const char* const name = typeid(owner).name();
    const std::unique_ptr<char, decltype(&std::free)> readable(abi::__cxa_demangle(name, nullptr, nullptr, nullptr),
                                                               &std::free);
    return QString::fromUtf8(readable ? readable.get() : name);
}

} // namespace

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

NibOwner::LoadedView NibOwner::loadNib()
{
    const std::shared_ptr<Nib> nib = Nib::load(m_nibName, Bundle::forInterfaceFile(m_nibName, m_bundle));
    const NibViews views = nib->instantiate();
    if (!views.view) {
        m_problems.append(QStringLiteral("file ") + m_nibName);
        return {};
    }
    m_topLevelViews = views.rest;
    m_topLevelViews.prepend(views.view);
    connectInterface(nib->description(), views.missingCellOutlets);
    return {views.view, views.windowTitle};
}

QWidget* NibOwner::addEmptyView()
{
    auto* view = new QWidget(offScreen());
    m_topLevelViews.append(view);
    return view;
}

void NibOwner::connectInterface(const QString& nib, const QStringList& missingCellOutlets)
{
    QList<QWidget*> topLevelViews;
    for (const QPointer<QWidget>& view : m_topLevelViews)
        topLevelViews.append(view);
    QStringList complaints;
    const auto note = [&](const char* kind, const char* complaint, const QStringList& names) {
        for (const QString& name : names)
            m_problems.append(QLatin1String(kind) + name);
        if (!names.isEmpty())
            complaints.append(QLatin1String(complaint) + names.join(QStringLiteral(", ")));
    };
    note("outlet ", "outlets missing: ", outlets.connectTo(topLevelViews) + missingCellOutlets);
    const Actions::Missing missing = actions.connectTo(topLevelViews, weak_from_this());
    note("action ", "actions missing: ", missing.unused);
    note("action ", "actions unknown: ", missing.undeclared);
    if (!complaints.isEmpty())
        log(u"interface file %@ of %@: %@", nib, classNameOf(*this), complaints.join(QStringLiteral("; ")));
}

QString describe(const std::shared_ptr<NibOwner>& owner)
{
    if (!owner)
        return describe(std::nullopt);
    return QStringLiteral("<%1: 0x%2>")
        .arg(owner->nibName(), QString::number(reinterpret_cast<quintptr>(owner.get()), 16));
}

} // namespace tljira
