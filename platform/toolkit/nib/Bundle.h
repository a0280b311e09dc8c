#pragma once

#include "platform/foundation/Export.h"

#include <QString>

#include <optional>

namespace tljira {

/// A set of interface files that travels inside a program or a library, as Qt resources below ":/IDENTIFIER".
/// CMake's tl_embed_interface_files(TARGET PREFIX identifier FILES …) puts files there; users of the target need do
/// nothing.
class TL_EXPORT Bundle
{
public:
    /// The host's own files, below ":/main". Always there, even if it holds nothing.
    static Bundle mainBundle();

    /// nullopt when nothing was ever embedded under that identifier.
    static std::optional<Bundle> bundleWithIdentifier(const QString& identifier);

    /// The prefix that its files were embedded with; "main" for the host's own.
    QString identifier() const { return m_identifier; }

    /// Where the interface file of that name is to be taken from: the host's own comes before that of `bundle`, and
    /// without a bundle only the host's will do.
    static Bundle forInterfaceFile(const QString& name, const std::optional<Bundle>& bundle);

    /// Whether it is the host's own.
    bool isMainBundle() const;

    /// Whether the file of that name (without ".ui") is there.
    bool hasInterfaceFile(const QString& name) const;

    /// Where the interface file of that name (without ".ui") is expected; says nothing about whether it exists.
    QString pathForInterfaceFile(const QString& name) const;

private:
    explicit Bundle(QString identifier);

    QString m_identifier;
};

} // namespace tljira
