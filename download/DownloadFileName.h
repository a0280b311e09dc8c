#pragma once

#include <QString>

#include <optional>

/// The name under which an attachment of that name is stored: "tessaloom" is appended, in place of "tessaloompacket"
/// where that is the extension. Whatever a server sends, it is the name of a file in the folder and fits a file system.
QString downloadFileName(const std::optional<QString>& attachmentName);
