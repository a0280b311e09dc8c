#include "tests/kit/LoneDocument.h"

#include "tests/kit/Files.h"

#include <QDir>

namespace tests {

LoneDocument::LoneDocument(const QByteArray& bytes)
{
    QDir().mkpath(folder());
    writeFile(path(), bytes);
}

} // namespace tests
