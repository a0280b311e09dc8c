// Gives a fuzzer the inputs of its corpus, one after the other, for whoever builds without libFuzzer:
//
//     fuzzer CORPUS…
//
// An input for which something does not hold ends the program. A corpus without an input is an error.

#include "tests/fuzz/Fuzz.h"

#include <QDirIterator>
#include <QFile>

#include <cstdio>

namespace {

bool replay(const QString& path)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(path));
        return false;
    }
    const QByteArray bytes = file.readAll();
    // What ends the program is told before it does.
    std::printf("%s\n", qPrintable(path));
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                           static_cast<std::size_t>(bytes.size()));
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    int inputs = 0;
    for (int i = 1; i < argc; ++i) {
        QDirIterator files(QString::fromLocal8Bit(argv[i]), QDir::Files);
        while (files.hasNext()) {
            if (!replay(files.next()))
                return 1;
            ++inputs;
        }
    }
    std::printf("%d inputs\n", inputs);
    return inputs > 0 ? 0 : 1;
}
