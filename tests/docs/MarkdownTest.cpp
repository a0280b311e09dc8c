#include "tests/docs/Markdown.h"
#include "tests/kit/Printers.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <gmock/gmock.h>

namespace {

using namespace Qt::StringLiterals;
using tests::docs::Document;
using tests::docs::documents;
using tests::docs::parseDocument;

TEST(Markdown, findsFencedBlocksWithTheirKindsAndLines)
{
    const Document document =
        parseDocument(u"a.md"_s, u"# A\n\n```sh\nls\n\nls -l\n```\n\n- item\n\n  ```cpp\nint a;\n  ```\n"_s);
    ASSERT_EQ(document.blocks.size(), 2U);
    EXPECT_EQ(document.blocks[0].kind, u"sh"_s);
    EXPECT_EQ(document.blocks[0].text, u"ls\n\nls -l\n"_s);
    EXPECT_EQ(document.blocks[0].line, 3);
    EXPECT_EQ(document.blocks[1].kind, u"cpp"_s);
    EXPECT_EQ(document.problems, QStringList());
}

TEST(Markdown, namesABlockAfterItsFirstComment)
{
    const Document document = parseDocument(u"a.md"_s, u"```cpp\n// main.cpp\nint a;\n```\n```cpp\nint b;\n```\n"_s);
    EXPECT_EQ(document.blocks.at(0).fileName(), u"main.cpp"_s);
    EXPECT_EQ(document.blocks.at(1).fileName(), QString());
}

TEST(Markdown, complainsOfCodeThatNobodyRuns)
{
    EXPECT_EQ(parseDocument(u"a.md"_s, u"Type\n\n    make\n"_s).problems, QStringList{u"line 3 is indented code"_s});
    EXPECT_EQ(parseDocument(u"a.md"_s, u"Type\n```sh\nmake\n"_s).problems,
              QStringList{u"the block in line 2 does not end"_s});
}

TEST(Documents, haveOnlyBlocksOfKnownKinds)
{
    const QStringList known = {u"cpp"_s, u"cmake"_s, u"sh"_s, u"console"_s, u"python"_s, u"qml"_s, u"text"_s};
    ASSERT_GE(documents().size(), 6U);
    for (const Document& document : documents()) {
        EXPECT_EQ(document.problems, QStringList()) << document.name.toStdString();
        for (const auto& block : document.blocks)
            EXPECT_TRUE(known.contains(block.kind))
                << document.name.toStdString() << ':' << block.line << " is of the kind " << block.kind.toStdString();
    }
}

/// Links between the documents, and the pictures.
TEST(Documents, leadToFilesThatExist)
{
    const QRegularExpression link(u"\\]\\(([^)#:\\s]+)(#[^)\\s]*)?\\)"_s);
    const QRegularExpression code(u"^```.*?^```$"_s,
                                  QRegularExpression::DotMatchesEverythingOption | QRegularExpression::MultilineOption);
    int count = 0;
    for (const Document& document : documents()) {
        const QDir folder = QFileInfo(QDir(QStringLiteral(PROJECT_FOLDER)).filePath(document.name)).dir();
        QFile file(QDir(QStringLiteral(PROJECT_FOLDER)).filePath(document.name));
        ASSERT_TRUE(file.open(QFile::ReadOnly));
        for (auto matches = link.globalMatch(QString::fromUtf8(file.readAll()).remove(code)); matches.hasNext();
             ++count) {
            const QString target = matches.next().captured(1);
            EXPECT_TRUE(folder.exists(target)) << document.name.toStdString() << " leads to " << target.toStdString();
        }
    }
    EXPECT_GT(count, 8);
}

} // namespace
