#include <QCoreApplication>
#include <QLibrary>

#include <atomic>
#include <cstdio>

// A running application that loads the queues, as a host does that loads the plug-in.

namespace {

std::atomic<bool> isEnding = false;

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QLibrary library(QStringLiteral(LATE_MODULE));
    const auto begin = reinterpret_cast<void (*)(bool (*)())>(library.resolve("beginOperation"));
    if (!begin) {
        std::puts(qPrintable(library.errorString()));
        return 1;
    }
    begin([] { return isEnding.load(); });
    // The last routine that is added runs first.
    qAddPostRoutine([] { isEnding = true; });
    return 0;
}
