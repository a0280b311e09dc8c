#pragma once

#include "platform/foundation/files/PathString.h"

#include <QDir>
#include <QFileInfo>
#include <QString>

#include <optional>

/// The folder that goes with a document when its upload has ended. Nothing when there is no document, or when it lies
/// in no folder but at the root of the disk, where all would go with it.
inline std::optional<QString> folderToRemove(const std::optional<QString>& document)
{
    const QString folder = tljira::deletingLastPathComponent(document.value_or(QString()));
    const bool isRoot = QFileInfo(folder).canonicalFilePath() == QDir::rootPath();
    return folder.isEmpty() || isRoot ? std::nullopt : std::optional(folder);
}
