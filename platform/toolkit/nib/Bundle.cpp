#include "platform/toolkit/nib/Bundle.h"

#include <QFile>
#include <QFileInfo>

namespace tljira {

namespace {

const QString mainIdentifier = QStringLiteral("main");

QString folderOf(const QString& identifier)
{
    return QStringLiteral(":/") + identifier;
}

} // namespace

Bundle::Bundle(QString identifier)
    : m_identifier(std::move(identifier))
{
}

Bundle Bundle::mainBundle()
{
    return Bundle(mainIdentifier);
}

std::optional<Bundle> Bundle::bundleWithIdentifier(const QString& identifier)
{
    if (identifier.isEmpty() || !QFileInfo(folderOf(identifier)).isDir())
        return std::nullopt;
    return Bundle(identifier);
}

Bundle Bundle::forInterfaceFile(const QString& name, const std::optional<Bundle>& bundle)
{
    const Bundle host = mainBundle();
    return bundle && !host.hasInterfaceFile(name) ? *bundle : host;
}

bool Bundle::isMainBundle() const
{
    return m_identifier == mainIdentifier;
}

bool Bundle::hasInterfaceFile(const QString& name) const
{
    return QFile::exists(pathForInterfaceFile(name));
}

QString Bundle::pathForInterfaceFile(const QString& name) const
{
    return folderOf(m_identifier) + u'/' + name + QStringLiteral(".ui");
}

} // namespace tljira
