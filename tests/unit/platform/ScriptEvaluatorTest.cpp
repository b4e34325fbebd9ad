#include "platform/linux/scripting/ScriptEvaluator.h"
#include "fakes/FakeScriptablePlayer.h"
#include "media/PlayerReply.h"
#include "media/PlayerScripts.h"

#include <gmock/gmock.h>

namespace {
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto Spotify = ScriptedPlayer::Spotify;
constexpr auto Music = ScriptedPlayer::Music;

class ScriptEvaluatorTest : public testing::Test
{
protected:
    ScriptEvaluatorTest()
    {
        player.properties = {{QStringLiteral("player state"), QStringLiteral("playing")},
                             {QStringLiteral("name of current track"), QStringLiteral("Autobahn")},
                             {QStringLiteral("artist of current track"), QStringLiteral("Kraftwerk")},
                             {QStringLiteral("album of current track"), QStringLiteral("Best")},
                             {QStringLiteral("duration of current track"), qint64(215'000)},
                             {QStringLiteral("player position"), 12.25}};
    }

    ScriptResult run(const QString& source)
    {
        return ScriptEvaluator::evaluate(ScriptParser::parse(source).value(), player);
    }

    ScriptResult told(const char* statements)
    {
        return run(QStringLiteral("tell application \"X\"\n") + QString::fromUtf8(statements) +
                   QStringLiteral("\nend tell"));
    }

    FakeScriptablePlayer player;
};

TEST_F(ScriptEvaluatorTest, TellsTheState)
{
    EXPECT_EQ(run(PlayerScripts::state(Spotify)).stringValue, u"playing");
}

TEST_F(ScriptEvaluatorTest, ReadsAllOfSpotify)
{
    player.properties[QStringLiteral("shuffling")] = true;
    player.properties[QStringLiteral("repeating")] = false;
    player.properties[QStringLiteral("id of current track")] = QStringLiteral("/track/1");
    EXPECT_EQ(run(PlayerScripts::read(Spotify)).stringValue,
              u"Autobahn\nKraftwerk\nBest\n215000\n12.25\nplaying\ntrue\nfalse\nfalse\n/track/1");
}

TEST_F(ScriptEvaluatorTest, ReadsMusicThatLacksWhatMayBeLacking)
{
    EXPECT_EQ(run(PlayerScripts::read(Music)).stringValue,
              u"Autobahn\nKraftwerk\nBest\n215000\n12.25\nplaying\nfalse\noff\nfalse\n");
}

TEST_F(ScriptEvaluatorTest, ReadsAFavouriteByEitherName)
{
    const auto isLoved = [this] {
        return PlayerReply::parse(run(PlayerScripts::read(Music)).stringValue, Music)->isLoved;
    };
    player.properties[QStringLiteral("loved of current track")] = true;
    EXPECT_TRUE(isLoved());
    player.properties[QStringLiteral("favorited of current track")] = false;
    EXPECT_FALSE(isLoved()) << "the first name counts where it is known";
}

TEST_F(ScriptEvaluatorTest, SaysThatAPlayerIsStopped)
{
    player.properties = {{QStringLiteral("player state"), QStringLiteral("stopped")}};
    EXPECT_EQ(run(PlayerScripts::read(Spotify)).stringValue, u"STOPPED");
}

TEST_F(ScriptEvaluatorTest, FailsWhereNoTryIsAround)
{
    player.isBroken = true;
    const auto result = run(PlayerScripts::read(Spotify));
    EXPECT_EQ(result.error, u"no player state");
    EXPECT_EQ(result.stringValue, std::nullopt);
    EXPECT_EQ(result.data, std::nullopt);
}

TEST_F(ScriptEvaluatorTest, HandsOverTheCoverOfTheRightTrack)
{
    player.properties[QStringLiteral("persistent ID of current track")] = QStringLiteral("1A");
    player.properties[QStringLiteral("raw data of artwork 1 of current track")] = QByteArray("picture");
    const auto result = run(PlayerScripts::cover(QStringLiteral("1A")));
    EXPECT_EQ(result.data, "picture");
    EXPECT_EQ(result.stringValue, std::nullopt);
    EXPECT_EQ(run(PlayerScripts::cover({})).data, "picture");
}

TEST_F(ScriptEvaluatorTest, KeepsTheCoverOfAnotherTrack)
{
    player.properties[QStringLiteral("persistent ID of current track")] = QStringLiteral("1a");
    player.properties[QStringLiteral("raw data of artwork 1 of current track")] = QByteArray("picture");
    const auto result = run(PlayerScripts::cover(QStringLiteral("1A")));
    EXPECT_EQ(result.data, std::nullopt);
    EXPECT_EQ(result.error, std::nullopt);
}

TEST_F(ScriptEvaluatorTest, PerformsVerbs)
{
    run(PlayerScripts::command(Music, MediaCommand::TogglePlayPause));
    run(PlayerScripts::command(Music, MediaCommand::Next));
    run(PlayerScripts::command(Music, MediaCommand::Previous));
    EXPECT_THAT(player.told, ElementsAre(u"playpause", u"next track", u"previous track"));
}

TEST_F(ScriptEvaluatorTest, SetsWhatThePlayerHas)
{
    for (const char* name : {"shuffling", "shuffle enabled", "repeating", "song repeat"})
        player.properties[QString::fromUtf8(name)] = false;
    run(PlayerScripts::seek(Music, 12.5));
    run(PlayerScripts::setShuffle(Spotify, true));
    run(PlayerScripts::setShuffle(Music, true));
    run(PlayerScripts::setRepeat(Spotify, RepeatMode::All));
    run(PlayerScripts::setRepeat(Music, RepeatMode::One));
    EXPECT_THAT(player.told,
                ElementsAre(u"player position = 12.5", u"shuffling = true", u"shuffle enabled = true",
                            u"repeating = true", u"song repeat = one"));
    EXPECT_EQ(player.properties[QStringLiteral("shuffling")], ScriptValue(true));
}

TEST_F(ScriptEvaluatorTest, SetsAFavouriteByTheNameThatIsKnown)
{
    EXPECT_EQ(run(PlayerScripts::setLoved(true)).error, std::nullopt);
    EXPECT_THAT(player.told, IsEmpty());
    player.properties[QStringLiteral("loved of current track")] = false;
    run(PlayerScripts::setLoved(true));
    player.properties[QStringLiteral("favorited of current track")] = false;
    run(PlayerScripts::setLoved(true));
    EXPECT_THAT(player.told,
                ElementsAre(u"loved of current track = true", u"favorited of current track = true"));
}

TEST_F(ScriptEvaluatorTest, EndsAtAReturn)
{
    EXPECT_EQ(told("return \"a\"\nplaypause").stringValue, u"a");
    EXPECT_EQ(told("try\nreturn \"a\"\nend try\nplaypause").stringValue, u"a");
    EXPECT_EQ(told("\"b\"\nreturn").stringValue, std::nullopt);
    EXPECT_THAT(player.told, IsEmpty());
}

TEST_F(ScriptEvaluatorTest, GoesOnAfterATryThatFailed)
{
    EXPECT_EQ(told("try\nnothing of it\nplaypause\nend try\nreturn \"on\"").stringValue, u"on");
    EXPECT_THAT(player.told, IsEmpty());
}

TEST_F(ScriptEvaluatorTest, FailsWhereTheHandlerFails)
{
    EXPECT_EQ(told("try\nfirst of it\non error\nsecond of it\nend try").error, u"no second of it");
}

TEST_F(ScriptEvaluatorTest, GivesTheLastValueWithoutAReturn)
{
    EXPECT_EQ(told("\"a\"\n\"b\"\nset c to \"d\"").stringValue, u"b");
}

TEST_F(ScriptEvaluatorTest, WritesValuesAsText)
{
    EXPECT_EQ(told("return true & \"|\" & 1.50 & \"|\" & player position & \"|\" & off").stringValue,
              u"true|1.5|12.25|off");
    player.properties[QStringLiteral("big one")] = 1e21;
    EXPECT_EQ(told("return big one as text").stringValue, u"1000000000000000000000");
}

TEST_F(ScriptEvaluatorTest, HasNoTextOfAPicture)
{
    player.properties[QStringLiteral("raw data")] = QByteArray("picture");
    EXPECT_TRUE(told("return raw data as text").error);
    EXPECT_TRUE(told("return \"a\" & raw data").error);
}

TEST_F(ScriptEvaluatorTest, AVariableComesBeforeTheProperty)
{
    player.properties[QStringLiteral("t")] = QStringLiteral("the player's");
    EXPECT_EQ(told("return t").stringValue, u"the player's");
    EXPECT_EQ(told("set t to \"own\"\nreturn t").stringValue, u"own");
    EXPECT_THAT(player.told, IsEmpty());
}

TEST_F(ScriptEvaluatorTest, SurvivesATextThatDoubles)
{
    const auto doubling = QStringLiteral("set t to t & t\n").repeated(4'000);
    EXPECT_TRUE(told(("set t to \"t\"\n" + doubling.toUtf8()).constData()).error);
}
} // namespace
