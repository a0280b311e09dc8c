#pragma once

#include "tests/kit/RunProgram.h"

namespace tests {

/// A run of the host that was built without the framework.
struct PluginHost
{
    QString program = QStringLiteral(PLUGIN_HOST);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    /// Whether it lets the framework write its log.
    bool isLogEnabled = true;

    Outcome run(const QStringList& arguments) const;

    /// Has it bring a document to a server and back, with the plug-in that it finds when it is given this folder.
    Outcome expectRoundTrip(const QString& folder) const;
};

void writeFile(const QString& path, const std::string& bytes);

} // namespace tests
