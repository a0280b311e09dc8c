#include "cli/TerminalText.h"

#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using cli::harmless;
using cli::harmlessLine;

TEST(TerminalText, keepsOrdinaryTextOfAnyScript)
{
    const QString text = u"Größe 大きさ גודל 👩‍🚀 a b.tessaloom"_s;
    EXPECT_EQ(harmless(text), text);
}

TEST(TerminalText, replacesControls)
{
    EXPECT_EQ(harmless(u"a\x1b[2J\n\r\t\x07\x7f\u009bb"_s), u"a?[2J??????b"_s);
    EXPECT_EQ(harmless(QString(QChar::Null)), u"?"_s);
}

TEST(TerminalText, replacesLineSeparatorsAndDirectionMarks)
{
    EXPECT_EQ(harmless(u"a\u2028b\u2029c"_s), u"a?b?c"_s);
    EXPECT_EQ(harmless(u"plan\u202Egnp.exe\u202C\u2066x\u2069\u200F"_s), u"plan?gnp.exe??x??"_s);
}

TEST(TerminalText, makesOneLineOfSeveral)
{
    EXPECT_EQ(harmlessLine(u"  first\n    second\r\n\x1b[1m "_s), u"first second ?[1m"_s);
}

} // namespace
