#include "cli/TextOutput.h"

#include "cli/TerminalText.h"

#include <algorithm>
#include <array>

namespace cli {

namespace {

const QString unknown = QStringLiteral("-");
const QString gap = QStringLiteral("  ");

using Row = std::array<QString, 4>;

Row rowOf(const JAAttachmentObject& attachment)
{
    const auto& date = attachment.date();
    return {
        harmless(attachment.ID().value_or(unknown)),
        QString::number(attachment.size()),
        date ? date->toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) : unknown,
        harmless(attachment.name().value_or(unknown)),
    };
}

qsizetype widthOfColumn(const std::vector<Row>& rows, std::size_t column)
{
    qsizetype width = 0;
    for (const Row& row : rows)
        width = std::max(width, row.at(column).size());
    return width;
}

} // namespace

QByteArray textOfPairs(const std::vector<std::pair<QString, std::optional<QString>>>& pairs)
{
    qsizetype width = 0;
    for (const auto& [name, value] : pairs)
        width = std::max(width, value ? name.size() : 0);
    QString text;
    for (const auto& [name, value] : pairs) {
        if (value)
            text += name.leftJustified(width) + gap + harmless(*value) + u'\n';
    }
    return text.toUtf8();
}

QByteArray textOfAttachments(const JAIssueObject::Attachments& attachments)
{
    std::vector<Row> rows;
    rows.reserve(attachments.size());
    for (const auto& attachment : attachments)
        rows.push_back(rowOf(*attachment));

    const qsizetype id = widthOfColumn(rows, 0);
    const qsizetype size = widthOfColumn(rows, 1);
    const qsizetype date = widthOfColumn(rows, 2);
    QString text;
    for (const Row& row : rows)
        text += row[0].leftJustified(id) + gap + row[1].rightJustified(size) + gap + row[2].leftJustified(date) + gap +
                row[3] + u'\n';
    return text.toUtf8();
}

} // namespace cli
