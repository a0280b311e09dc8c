#include "cli/Help.h"

#include "cli/CommandTable.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

TEST(Help, namesEveryCommandWithItsWordsAndOptions)
{
    const std::string help = cli::helpText().toStdString();
    for (const auto& command : cli::commandTable()) {
        QStringList words = QStringList{command.name} + command.operands;
        for (qsizetype last = 0; last < command.optionalOperands; ++last)
            words[words.size() - 1 - last] = u'[' + words[words.size() - 1 - last] + u']';
        EXPECT_THAT(help, HasSubstr("\n  " + words.join(u' ').toStdString() + ' '));
        for (const QString& option : command.options)
            EXPECT_THAT(help, HasSubstr("\n  --" + option.toStdString() + ' '));
    }
}

TEST(Help, fitsATerminal)
{
    for (const QByteArray& line : cli::helpText().split('\n'))
        EXPECT_LE(line.size(), 80) << line.toStdString();
}

} // namespace
