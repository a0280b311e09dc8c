#include "tests/docs/Markdown.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace tests::docs {

namespace {

const QString fence = QStringLiteral("```");

Document readDocument(const QString& name)
{
    QFile file(QDir(QStringLiteral(PROJECT_FOLDER)).filePath(name));
    if (!file.open(QFile::ReadOnly))
        return {name, {}, {QStringLiteral("it cannot be read")}};
    return parseDocument(name, QString::fromUtf8(file.readAll()));
}

} // namespace

QString Block::fileName() const
{
    static const QRegularExpression comment(QStringLiteral("^(?://|#) ([\\w-]+\\.(?:cpp|py|qml))\n"));
    return comment.match(text).captured(1);
}

std::vector<Block> Document::blocksOf(const QStringList& kinds) const
{
    std::vector<Block> chosen;
    std::copy_if(blocks.begin(), blocks.end(), std::back_inserter(chosen),
                 [&](const Block& block) { return kinds.contains(block.kind); });
    return chosen;
}

Document parseDocument(const QString& name, const QString& text)
{
    Document document = {name, {}, {}};
    bool isInBlock = false;
    bool isAfterBlank = true;
    int number = 0;
    for (const QString& line : text.split(u'\n')) {
        ++number;
        if (line.trimmed().startsWith(fence)) {
            isInBlock = !isInBlock;
            if (isInBlock)
                document.blocks.push_back({line.trimmed().mid(fence.size()).trimmed(), {}, number});
        } else if (isInBlock) {
            document.blocks.back().text += line + u'\n';
        } else if (isAfterBlank && (line.startsWith(QStringLiteral("    ")) || line.startsWith(u'\t'))) {
            document.problems.append(QStringLiteral("line %1 is indented code").arg(number));
        }
        isAfterBlank = line.trimmed().isEmpty();
    }
    if (isInBlock)
        document.problems.append(QStringLiteral("the block in line %1 does not end").arg(document.blocks.back().line));
    return document;
}

const std::vector<Document>& documents()
{
    static const std::vector<Document> all = [] {
        std::vector<Document> read = {readDocument(QStringLiteral("README.md")),
                                      readDocument(QStringLiteral("CONTRIBUTING.md"))};
        const QDir folder(QStringLiteral(PROJECT_FOLDER "/docs"));
        for (const QString& name : folder.entryList({QStringLiteral("*.md")}, QDir::Files, QDir::Name))
            read.push_back(readDocument(QStringLiteral("docs/") + name));
        return read;
    }();
    return all;
}

} // namespace tests::docs
