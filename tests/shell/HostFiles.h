#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QTemporaryDir>

namespace tests {

/// Interface files that a host brings itself, by their names without ".ui", in the process's resources for as long as
/// this lives.
class HostFiles
{
public:
    explicit HostFiles(const QHash<QString, QByteArray>& textsByName);
    ~HostFiles();
    HostFiles(const HostFiles&) = delete;
    HostFiles& operator=(const HostFiles&) = delete;

private:
    QTemporaryDir m_folder;
};

/// The text of one of the framework's own files, from the source tree: "shell/JALoginWindow".
QByteArray shippedFile(const QString& pathWithoutSuffix);

} // namespace tests
