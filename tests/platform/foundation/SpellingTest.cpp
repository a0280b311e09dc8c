#include "platform/foundation/values/Spelling.h"

#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

using tljira::spellingOf;

struct Spelling
{
    const char* word;
    const char* text;
};

void PrintTo(const Spelling& spelling, std::ostream* out)
{
    *out << spelling.word << " as " << spelling.text;
}

class SpellingTest : public testing::TestWithParam<Spelling>
{
};

TEST_P(SpellingTest, isTheWholeWord)
{
    const QString word = QString::fromUtf8(GetParam().word);
    const QString text = QString::fromUtf8(GetParam().text);
    EXPECT_EQ(spellingOf(word, text, 0), text.size());
    EXPECT_EQ(spellingOf(word, u'[' + text + QStringLiteral("] and more"), 1), text.size());
    EXPECT_EQ(spellingOf(word, QStringView(text).chopped(1), 0), 0);
    EXPECT_EQ(spellingOf(u'x' + word, text, 0), 0);
}

INSTANTIATE_TEST_SUITE_P(Known, SpellingTest,
                         testing::Values(Spelling{"ge\"heim ü", "ge\"heim ü"}, Spelling{"ge\"heim ü", R"(ge\"heim ü)"},
                                         Spelling{"ge\"heim ü", R"(ge\"heim \u00fc)"},
                                         Spelling{"ge\"heim ü", R"(\u0067e\u0022heim\u0020\u00FC)"},
                                         Spelling{"ge\"heim ü", "ge%22heim%20%C3%BC"},
                                         Spelling{"ge\"heim ü", "ge%22heim+%c3%bc"},
                                         Spelling{"ge\"heim ü", "ge&quot;heim &#252;"},
                                         Spelling{"ge\"heim ü", "ge&#34;heim&#x20;&#xFC;"},
                                         Spelling{"a+b/c=", "a%2Bb%2fc%3D"}, Spelling{"a+b/c=", R"(a+b\/c=)"},
                                         Spelling{"<&\\>'", "&lt;&amp;\\\\&gt;&apos;"}, Spelling{"a\nb", R"(a\nb)"},
                                         Spelling{"100%25", "100%25"}, Spelling{"😀key", R"(\uD83D\uDE00key)"},
                                         Spelling{"😀key", "%F0%9F%98%80key"}));

TEST(Spelling, ofNothingIsNowhere)
{
    EXPECT_EQ(spellingOf(QString(), u"text", 0), 0);
    EXPECT_EQ(spellingOf(QStringLiteral("text"), u"", 0), 0);
    EXPECT_EQ(spellingOf(QStringLiteral("text"), u"text", 4), 0);
}

TEST(Spelling, hasItsCase)
{
    EXPECT_EQ(spellingOf(QStringLiteral("Key"), u"key", 0), 0);
    EXPECT_EQ(spellingOf(QStringLiteral("Key"), u"%6Bey", 0), 0);
}

} // namespace
