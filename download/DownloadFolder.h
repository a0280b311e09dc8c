#pragma once

#include <QString>

/// The folder that holds the newest download and nothing else. All processes of a user share it.
namespace DownloadFolder {

QString path();

/// Removes what is at the path, a link instead of what it points to, and makes an empty folder. What fails is logged.
void makeAnew(const QString& path);

} // namespace DownloadFolder
