#include "platform/linux/scripting/ScriptParser.h"
#include "media/PlayerScripts.h"

#include <gmock/gmock.h>

namespace {
using ExpressionKind = ScriptExpression::Kind;
using Kind = ScriptStatement::Kind;

std::optional<PlayerScript> parse(const QString& source)
{
    return ScriptParser::parse(source);
}

std::optional<PlayerScript> parse(const char* source)
{
    return ScriptParser::parse(QString::fromUtf8(source));
}

/// The single statement of "tell application "X" to ...".
ScriptStatement told(const char* what)
{
    return parse(QStringLiteral("tell application \"X\" to ") + QString::fromUtf8(what))
        .value()
        .statements.at(0);
}

bool isScript(const char* what)
{
    return parse(QStringLiteral("tell application \"X\" to ") + QString::fromUtf8(what)).has_value();
}

TEST(ScriptParser, ReadsEveryScriptThatIsSentToPlayers)
{
    for (const auto player : {ScriptedPlayer::Spotify, ScriptedPlayer::Music}) {
        EXPECT_TRUE(parse(PlayerScripts::state(player)));
        EXPECT_TRUE(parse(PlayerScripts::read(player)));
        EXPECT_TRUE(parse(PlayerScripts::command(player, MediaCommand::TogglePlayPause)));
        EXPECT_TRUE(parse(PlayerScripts::command(player, MediaCommand::Next)));
        EXPECT_TRUE(parse(PlayerScripts::command(player, MediaCommand::Previous)));
        EXPECT_TRUE(parse(PlayerScripts::seek(player, 12.5)));
        EXPECT_TRUE(parse(PlayerScripts::setShuffle(player, true)));
        EXPECT_TRUE(parse(PlayerScripts::setRepeat(player, RepeatMode::One)));
    }
    EXPECT_TRUE(parse(PlayerScripts::cover(QStringLiteral("1A"))));
    EXPECT_TRUE(parse(PlayerScripts::cover({})));
    EXPECT_TRUE(parse(PlayerScripts::artworkUrl()));
    EXPECT_TRUE(parse(PlayerScripts::setLoved(true)));
}

TEST(ScriptParser, KnowsWhomAScriptTells)
{
    EXPECT_EQ(parse("tell application \"Music\" to playpause")->application, u"Music");
    EXPECT_EQ(parse("tell application \"Music\"\nplaypause\nend tell")->application, u"Music");
    EXPECT_TRUE(parse("tell application \"Music\"\nend tell")->statements.empty());
}

TEST(ScriptParser, ReadsAVerb)
{
    const auto statement = told("next track");
    EXPECT_EQ(statement.kind, Kind::Perform);
    EXPECT_EQ(statement.name, u"next track");
}

TEST(ScriptParser, ReadsAName)
{
    EXPECT_EQ(told("get raw data of artwork 1 of current track").expression.name,
              u"raw data of artwork 1 of current track");
    const auto statement = told("player   state as string");
    EXPECT_EQ(statement.kind, Kind::Evaluate);
    EXPECT_EQ(statement.expression.name, u"player state");
    EXPECT_TRUE(statement.expression.isText);
}

TEST(ScriptParser, ReadsASetting)
{
    const auto statement = told("set player position to 12.5");
    EXPECT_EQ(statement.kind, Kind::Set);
    EXPECT_EQ(statement.name, u"player position");
    EXPECT_EQ(statement.expression.literal, ScriptValue(12.5));
}

TEST(ScriptParser, ReadsACondition)
{
    const auto statement = told("if (a as text) is not \"b\" then return \"c\"");
    EXPECT_EQ(statement.kind, Kind::If);
    EXPECT_TRUE(statement.isNegated);
    EXPECT_TRUE(statement.expression.isText);
    EXPECT_EQ(statement.other.literal, ScriptValue(QStringLiteral("b")));
    ASSERT_EQ(statement.body.size(), 1U);
    EXPECT_EQ(statement.body[0].kind, Kind::Return);
    EXPECT_FALSE(told("if a is b then return").isNegated);
}

TEST(ScriptParser, ReadsATryInATry)
{
    const auto statement = told("try\na\non error\ntry\nb\nend try\nc\nend try");
    EXPECT_EQ(statement.kind, Kind::Try);
    EXPECT_EQ(statement.body.size(), 1U);
    ASSERT_EQ(statement.onError.size(), 2U);
    EXPECT_EQ(statement.onError[0].kind, Kind::Try);
}

TEST(ScriptParser, ReadsAJoinFlat)
{
    const auto statement = told("return a & \"b\" & (c & d)");
    EXPECT_EQ(statement.expression.kind, ExpressionKind::Join);
    ASSERT_EQ(statement.expression.parts.size(), 3U);
    EXPECT_EQ(statement.expression.parts[2].parts.size(), 2U);
}

TEST(ScriptParser, RefusesWhatIsNoScriptForAPlayer)
{
    for (const char* text :
         {"", "playpause", "tell", "tell application Music to playpause", "tell application \"Music\"",
          "tell application \"Music\"\nplaypause", "tell application \"Music\"\nplaypause\nend",
          "tell application \"Music\"\nend tell\nplaypause",
          "tell application \"Music\" to playpause\nplaypause", "do shell script \"true\""})
        EXPECT_FALSE(parse(text)) << text;
}

TEST(ScriptParser, RefusesBrokenStatements)
{
    for (const char* text : {"",
                             "set",
                             "set a",
                             "set a to",
                             "set to to 1",
                             "if a then return",
                             "if a is b",
                             "if a is b then",
                             "return a b \"c\"",
                             "a &",
                             "a & & b",
                             "(a",
                             "a)",
                             "a of",
                             "of a",
                             "a as number",
                             "try",
                             "try\na",
                             "try\na\nend",
                             "try\na\non error\nb",
                             "end tell",
                             "on error",
                             "a \"b\"",
                             "1 2",
                             "then"})
        EXPECT_FALSE(isScript(text)) << text;
}

TEST(ScriptParser, SurvivesDepth)
{
    const auto nested = [](int depth) {
        return QStringLiteral("tell application \"X\" to return ") + QString(depth, u'(') + u'a' +
               QString(depth, u')');
    };
    EXPECT_TRUE(parse(nested(ScriptParser::deepestNesting - 1)));
    EXPECT_FALSE(parse(nested(ScriptParser::deepestNesting)));
    EXPECT_FALSE(parse(nested(20'000)));
    EXPECT_FALSE(
        parse(QStringLiteral("tell application \"X\" to ") + QStringLiteral("try\n").repeated(5'000)));
    EXPECT_FALSE(parse(QStringLiteral("tell application \"X\" to ") +
                       QStringLiteral("if a is b then ").repeated(2'000)));
}

TEST(ScriptParser, RefusesWhatIsTooLong)
{
    const auto ofLength = [](qsizetype length) {
        const auto start = QStringLiteral("tell application \"X\" to playpause");
        return start + QString(length - start.size(), u' ');
    };
    EXPECT_TRUE(parse(ofLength(ScriptParser::longestSource)));
    EXPECT_FALSE(parse(ofLength(ScriptParser::longestSource + 1)));
}
} // namespace
