#pragma once

#include <QString>

namespace tessaloom::tour {

/// Walks through the windows as a user would, against a server of its own, and saves a picture of every state. Prints
/// what it does; the program's exit status: 0, or 1 if anything was not as expected.
int run(const QString& albumFolder);

} // namespace tessaloom::tour
