#pragma once

#include "tests/support/RunProgram.h"

namespace tests {

/// Runs the host that was built without the framework.
Outcome runPluginHost(const QStringList& arguments,
                      const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

/// Has it bring a document to a server and back, with the plug-in that it finds when it is given this folder.
void expectRoundTrip(const QString& folder,
                     const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

void writeFile(const QString& path, const std::string& bytes);

} // namespace tests
