#include "tests/shell/HostFiles.h"

#include <QFile>
#include <QProcess>
#include <QResource>

#include <gtest/gtest.h>

namespace tests {

namespace {

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
}

QString compiledFile(const QTemporaryDir& folder)
{
    return folder.filePath(QStringLiteral("host.rcc"));
}

} // namespace

HostFiles::HostFiles(const QHash<QString, QByteArray>& textsByName)
{
    QByteArray list = "<RCC><qresource prefix=\"/main\">";
    for (auto text = textsByName.begin(); text != textsByName.end(); ++text) {
        const QString name = text.key() + QStringLiteral(".ui");
        write(m_folder.filePath(name), text.value());
        list += "<file>" + name.toUtf8() + "</file>";
    }
    const QString listFile = m_folder.filePath(QStringLiteral("host.qrc"));
    write(listFile, list + "</qresource></RCC>");
    const QStringList arguments{QStringLiteral("--binary"), QStringLiteral("-o"), compiledFile(m_folder), listFile};
    EXPECT_EQ(QProcess::execute(QStringLiteral(RESOURCE_COMPILER), arguments), 0);
    EXPECT_TRUE(QResource::registerResource(compiledFile(m_folder)));
}

HostFiles::~HostFiles()
{
    QResource::unregisterResource(compiledFile(m_folder));
}

QByteArray shippedFile(const QString& pathWithoutSuffix)
{
    QFile file(QStringLiteral(SOURCE_DIR "/%1.ui").arg(pathWithoutSuffix));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
    return file.readAll();
}

} // namespace tests
