#include "platform/foundation/settings/UserDefaults.h"
#include "platform/foundation/values/JSON.h"
#include "tests/fuzz/Fuzz.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>

namespace {

const QString ownKey = QStringLiteral("own key of this test");

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

bool isKeptAside(const QDir& folder, const QByteArray& bytes)
{
    for (const QString& name : folder.entryList(QDir::Files)) {
        if (contents(folder.filePath(name)) == bytes)
            return true;
    }
    return false;
}

void removeFiles(const QDir& folder)
{
    for (const QString& name : folder.entryList(QDir::Files))
        QFile::remove(folder.filePath(name));
}

} // namespace

/// The file of the settings.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const QTemporaryDir folder;
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    const QString path = folder.filePath(QStringLiteral("userdefaults.json"));
    const QByteArray bytes = fuzz::bytesOf(data, size);
    QFile file(path);
    fuzz::require(file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size(), "the file can be written");
    file.close();

    QJsonObject before;
    {
        tljira::UserDefaults defaults(path);
        before = defaults.dictionaryRepresentation();
        defaults.setObject(QStringLiteral("value"), ownKey);
        fuzz::require(defaults.synchronize(), "whatever the file holds, the settings can be written");
    }
    const auto value = tljira::decodeJSON(bytes);
    if (value && value->isObject())
        fuzz::require(before == value->toObject(), "settings that can be read are taken up, each of them");
    else if (!bytes.isEmpty())
        fuzz::require(isKeptAside(QDir(folder.path()), bytes), "a file that nobody can read is kept");
    before.insert(ownKey, QStringLiteral("value"));
    fuzz::require(fuzz::hasByteOrderMark(bytes) || tljira::UserDefaults(path).dictionaryRepresentation() == before,
                  "the next process finds what was there and what was set");
    removeFiles(QDir(folder.path()));
    return 0;
}
