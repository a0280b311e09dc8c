#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tessaloom {

/// A document's text, with line ends as one "\n", and how its file writes it.
struct DocumentText
{
    QString text = {};
    bool hasCarriageReturns = false;
    bool hasByteOrderMark = false;

    /// Nothing for bytes that would not come back the same from the editor and toBytes(): what is no UTF-8, what mixes
    /// line ends, and what a text editor takes for a line end of its own.
    static std::optional<DocumentText> fromBytes(const QByteArray& bytes);

    QByteArray toBytes() const;
};

} // namespace tessaloom
