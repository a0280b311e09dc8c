#pragma once

#include <QLatin1String>

/// The extension of the host's documents, in file names and among the attachments of an issue.
inline constexpr QLatin1String documentExtension("tessaloom");

/// The extension that a packed document has as an attachment, and loses on the way to a file.
inline constexpr QLatin1String documentPacketExtension("tessaloompacket");
