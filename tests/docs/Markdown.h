#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace tests::docs {

/// One fenced block of a document.
struct Block
{
    QString kind;
    QString text;
    /// Of its opening fence, from 1.
    int line = 0;

    /// The name of the file that a leading comment gives it; empty without one.
    QString fileName() const;
};

struct Document
{
    /// Relative to the project.
    QString name;
    std::vector<Block> blocks;
    /// What nobody could run: code that is indented instead of fenced, a fence that does not end.
    QStringList problems;

    std::vector<Block> blocksOf(const QStringList& kinds) const;
};

Document parseDocument(const QString& name, const QString& text);

/// Those of the project that are for readers.
const std::vector<Document>& documents();

} // namespace tests::docs
