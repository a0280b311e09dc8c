#pragma once

#include "tests/kit/RunProgram.h"

namespace tests {

/// A run of the host that was built without the framework.
struct PluginHost
{
    QString program = QStringLiteral(PLUGIN_HOST);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    /// In front of the others, for a program that is told what to run.
    QStringList firstArguments = {};
    /// What it says of the jobs.
    std::string says = "fetched plan.tessaloom\n";
    /// Whether it hands its document over, which goes with the upload.
    bool handsOver = true;
    /// Whether it lets the framework write its log.
    bool isLogEnabled = true;

    Outcome run(const QStringList& arguments) const;

    /// Has it bring a document to a server and back, with the plug-in that it finds when it is given this folder.
    Outcome expectRoundTrip(const QString& folder) const;
};

void writeFile(const QString& path, const std::string& bytes);

} // namespace tests
