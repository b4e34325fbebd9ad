#include "platform/linux/scripting/ScriptLexer.h"

#include <gmock/gmock.h>

namespace {
using Kind = ScriptToken::Kind;

QList<ScriptToken> tokens(const char* source)
{
    return ScriptLexer::tokens(QString::fromUtf8(source)).value();
}

bool isScript(const char* source)
{
    return ScriptLexer::tokens(QString::fromUtf8(source)).has_value();
}

TEST(ScriptLexer, TakesALineApart)
{
    EXPECT_EQ(tokens("set d to (duration)"), (QList<ScriptToken>{{Kind::Word, QStringLiteral("set")},
                                                                 {Kind::Word, QStringLiteral("d")},
                                                                 {Kind::Word, QStringLiteral("to")},
                                                                 {Kind::Open},
                                                                 {Kind::Word, QStringLiteral("duration")},
                                                                 {Kind::Close},
                                                                 {Kind::LineEnd}}));
}

TEST(ScriptLexer, ReadsTheEscapesOfAString)
{
    EXPECT_EQ(tokens(R"("a\n\t\r\"\\b")").first().text, u"a\n\t\r\"\\b");
    EXPECT_EQ(tokens("\"söng\"").first().text, u"söng");
}

TEST(ScriptLexer, ReadsNumbers)
{
    EXPECT_EQ(tokens("12.5 -3").first(2), (QList<ScriptToken>{{Kind::Number, QStringLiteral("12.5")},
                                                              {Kind::Number, QStringLiteral("-3")}}));
    EXPECT_FALSE(isScript("-"));
    EXPECT_FALSE(isScript("1.2.3"));
}

TEST(ScriptLexer, LeavesEmptyLinesOut)
{
    EXPECT_EQ(tokens("\n\na\n \t\nb\n").size(), 4);
    EXPECT_TRUE(tokens("").isEmpty());
}

TEST(ScriptLexer, RefusesStringsThatDontEnd)
{
    EXPECT_FALSE(isScript("\"abc"));
    EXPECT_FALSE(isScript("\"abc\\"));
    EXPECT_FALSE(isScript("\"abc\\\""));
}

TEST(ScriptLexer, RefusesWhatHasNoPlace)
{
    EXPECT_FALSE(isScript("\"\\x\""));
    EXPECT_FALSE(isScript("a ; b"));
    EXPECT_FALSE(isScript("söng"));
    EXPECT_FALSE(isScript("{1}"));
}
} // namespace
