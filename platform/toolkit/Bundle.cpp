#include "platform/toolkit/Bundle.h"

#include <QFileInfo>

namespace platform {

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

QString Bundle::pathForInterfaceFile(const QString& name) const
{
    return folderOf(m_identifier) + u'/' + name + QStringLiteral(".ui");
}

} // namespace platform
