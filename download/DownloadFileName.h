#pragma once

#include <QString>

#include <optional>

/// The name under which an attachment of that name is stored: the extension of the host's kind of document is appended,
/// in place of the packet's where that is the extension (TLJiraOptions::documents). Whatever a server sends, it is the
/// name of a file in the folder and fits a file system.
QString downloadFileName(const std::optional<QString>& attachmentName);
