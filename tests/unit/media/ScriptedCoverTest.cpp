#include "unit/media/ScriptedPlayersFixture.h"

#include <QUrl>

namespace {
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

const auto one = QStringLiteral("1A");
const auto two = QStringLiteral("2B");
const auto coverAddress = QStringLiteral("https://covers.example/1.jpg");

QUrl search(const char* term)
{
    return QUrl::fromEncoded(QByteArray("https://itunes.apple.com/search?term=") + term +
                             "&entity=song&limit=1");
}

class ScriptedCoverTest : public ScriptedPlayersFixture
{
protected:
    ScriptedCoverTest()
    {
        source->onArtworkResolved() = [this] { ++resolved; };
    }

    void musicPlays(const QString& trackID, const QByteArray& cover)
    {
        if (players.applications.isEmpty())
            runs(Music);
        plays(Music, QStringLiteral("Track ") + trackID, trackID);
        gives(trackID, cover);
    }

    void spotifyPlays(const QString& trackID, const QString& address)
    {
        if (players.applications.isEmpty())
            runs(Spotify);
        plays(Spotify, QStringLiteral("Track ") + trackID, trackID);
        answer(PlayerScripts::artworkUrl(), address);
    }

    /// What the search finds for that term, and the cover behind it.
    void searchFinds(const char* term, const QByteArray& cover)
    {
        web.pages[search(term)] = {200,
                                   R"({"results":[{"artworkUrl100":"https://art.example/100x100bb.jpg"}]})"};
        web.pages[QUrl(QStringLiteral("https://art.example/300x300bb.jpg"))] = {200, cover};
    }

    /// A track whose cover Music has told, then another one for which it tells that same cover.
    void turnStale()
    {
        musicPlays(one, "first");
        ASSERT_EQ(cover(), "first");
        musicPlays(two, "first");
    }

    int resolved = 0;
};

TEST_F(ScriptedCoverTest, OfMusicComesByScript)
{
    musicPlays(one, "first");
    EXPECT_EQ(cover(), "first");
    EXPECT_THAT(players.executed(), Contains(PlayerScripts::cover(one)));
    EXPECT_THAT(web.requests, IsEmpty());
    EXPECT_EQ(resolved, 0) << "this read has it already";
}

TEST_F(ScriptedCoverTest, IsAskedForOnceATrack)
{
    musicPlays(one, "first");
    cover();
    players.takeExecuted();
    gives(one, "changed meanwhile");
    EXPECT_EQ(cover(), "first");
    EXPECT_THAT(players.executed(), ElementsAre(PlayerScripts::read(Music)));
}

TEST_F(ScriptedCoverTest, OfTheTrackBeforeIsNeverShown)
{
    turnStale();
    EXPECT_EQ(cover(), std::nullopt);
    gives(two, "second");
    EXPECT_EQ(cover(), "second");
}

TEST_F(ScriptedCoverTest, ThatIsStaleIsAskedForAgainSoon)
{
    turnStale();
    EXPECT_EQ(cover(), std::nullopt);
    mainQueue.advance(0.29);
    settle();
    EXPECT_EQ(resolved, 0);
    mainQueue.advance(0.02);
    settle();
    EXPECT_EQ(resolved, 1);
}

TEST_F(ScriptedCoverTest, WaitsItsTurnOnTheQueueBeforeItIsAskedForAgain)
{
    turnStale();
    cover();
    mainQueue.advance(0.3);
    EXPECT_EQ(resolved, 0);
    EXPECT_EQ(scriptQueue->pendingCount(), 1U);
    settle();
    EXPECT_EQ(resolved, 1);
}

TEST_F(ScriptedCoverTest, ThatIsStaleIsNotPressedForWhereNobodyListens)
{
    source->onArtworkResolved() = nullptr;
    turnStale();
    EXPECT_EQ(cover(), std::nullopt);
    EXPECT_EQ(mainQueue.pendingCount(), 0U);
}

TEST_F(ScriptedCoverTest, ThatStaysTheSameIsLookedForOnTheFourthRead)
{
    turnStale();
    web.isHeld = true;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(cover(), std::nullopt);
        EXPECT_THAT(web.requests, IsEmpty()) << i;
    }
    EXPECT_EQ(cover(), std::nullopt);
    EXPECT_THAT(web.urls(), ElementsAre(search("Kraftwerk%20Track%202B")));
}

TEST_F(ScriptedCoverTest, OfAnAlbumComesFromTheWebForItsSecondTrackAndStays)
{
    turnStale();
    searchFinds("Kraftwerk%20Track%202B", "of the album");
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(cover(), std::nullopt);
    EXPECT_EQ(resolved, 1) << "the look-up has come back";
    EXPECT_EQ(cover(), "of the album");
    gives(two, "late");
    EXPECT_EQ(cover(), "of the album");
}

TEST_F(ScriptedCoverTest, StartsItsCountAgainAfterAGoodRead)
{
    turnStale();
    cover();
    cover();
    musicPlays(two, "second");
    EXPECT_EQ(cover(), "second");
    // The third track hands out the second's: three reads are believed to be late again.
    musicPlays(QStringLiteral("3C"), "second");
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(cover(), std::nullopt);
    EXPECT_THAT(web.requests, IsEmpty());
}

TEST_F(ScriptedCoverTest, CountsEachTrackByItself)
{
    turnStale();
    for (int i = 0; i < 3; ++i)
        cover();
    musicPlays(QStringLiteral("3C"), "first");
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(cover(), std::nullopt);
    EXPECT_THAT(web.requests, IsEmpty());
}

TEST_F(ScriptedCoverTest, ThatMusicLacksIsSearched)
{
    musicPlays(one, {});
    searchFinds("Kraftwerk%20Track%201A", "found");
    EXPECT_EQ(cover(), std::nullopt);
    EXPECT_EQ(resolved, 1);
    EXPECT_EQ(cover(), "found");
    EXPECT_THAT(players.executed(), Not(Contains(PlayerScripts::artworkUrl())));
}

TEST_F(ScriptedCoverTest, ThatFailsToComeByScriptIsSearchedInSilence)
{
    musicPlays(one, {});
    players.answers[PlayerScripts::cover(one)] = {{}, {}, QStringLiteral("No artwork.")};
    testing::internal::CaptureStderr();
    EXPECT_EQ(cover(), std::nullopt);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_THAT(web.urls(), ElementsAre(search("Kraftwerk%20Track%201A")));
}

TEST_F(ScriptedCoverTest, OfSpotifyIsDownloadedFromWhereItSays)
{
    spotifyPlays(one, coverAddress);
    web.pages[QUrl(coverAddress)] = {200, "from there"};
    EXPECT_EQ(cover(), std::nullopt);
    EXPECT_EQ(resolved, 1);
    players.takeExecuted();
    EXPECT_EQ(cover(), "from there");
    EXPECT_THAT(players.executed(), ElementsAre(PlayerScripts::read(Spotify)));
    EXPECT_THAT(web.urls(), ElementsAre(QUrl(coverAddress)));
}

TEST_F(ScriptedCoverTest, OfSpotifyWithoutAnAddressIsSearchedByArtistAndTitle)
{
    spotifyPlays(one, {});
    searchFinds("Kraftwerk%20Track%201A", "found");
    cover();
    EXPECT_EQ(cover(), "found");
}

TEST_F(ScriptedCoverTest, OfSpotifyIsSearchedWhereTheAddressCantBeHad)
{
    spotifyPlays(one, {});
    players.answers[PlayerScripts::artworkUrl()] = {{}, {}, QStringLiteral("No.")};
    testing::internal::CaptureStderr();
    cover();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Quillbar AppleScript error: No.\n");
    EXPECT_THAT(web.urls(), ElementsAre(search("Kraftwerk%20Track%201A")));
}

TEST_F(ScriptedCoverTest, IsNotSearchedWhereItsDownloadFails)
{
    spotifyPlays(one, coverAddress);
    EXPECT_EQ(cover(), std::nullopt);
    EXPECT_THAT(web.urls(), ElementsAre(QUrl(coverAddress)));
    EXPECT_EQ(resolved, 0);
}

TEST_F(ScriptedCoverTest, ThatCouldNotBeFoundIsTriedAgainByTheNextRead)
{
    spotifyPlays(one, coverAddress);
    cover();
    web.pages[QUrl(coverAddress)] = {200, "at last"};
    cover();
    EXPECT_EQ(web.requests.size(), 2);
    EXPECT_EQ(cover(), "at last");
}

TEST_F(ScriptedCoverTest, IsLookedForOnlyOnceAtATime)
{
    spotifyPlays(one, coverAddress);
    web.pages[QUrl(coverAddress)] = {200, "slow"};
    web.isHeld = true;
    cover();
    players.takeExecuted();
    EXPECT_EQ(cover(), std::nullopt);
    EXPECT_THAT(players.executed(), ElementsAre(PlayerScripts::read(Spotify)))
        << "not even the address again";
    EXPECT_EQ(web.requests.size(), 1);
    web.answer();
    settle();
    EXPECT_EQ(resolved, 1);
    EXPECT_EQ(cover(), "slow");
}

TEST_F(ScriptedCoverTest, OfTwoTracksMayBeLookedForAtOnce)
{
    web.isHeld = true;
    spotifyPlays(one, coverAddress);
    cover();
    spotifyPlays(two, QStringLiteral("https://covers.example/2.jpg"));
    cover();
    web.pages[QUrl(coverAddress)] = {200, "1"};
    web.pages[QUrl(QStringLiteral("https://covers.example/2.jpg"))] = {200, "2"};
    web.answer();
    settle();
    EXPECT_EQ(resolved, 2);
    EXPECT_EQ(cover(), "2");
    spotifyPlays(one, coverAddress);
    EXPECT_EQ(cover(), "1");
}

TEST_F(ScriptedCoverTest, FromTheWebIsTheLastAcceptedOneToo)
{
    musicPlays(one, {});
    searchFinds("Kraftwerk%20Track%201A", "found");
    cover();
    musicPlays(two, "found");
    EXPECT_EQ(cover(), std::nullopt) << "it may still be the first track's";
}

TEST_F(ScriptedCoverTest, OfATrackWithoutIdentifierGoesByTitleAndArtist)
{
    runs(Music);
    plays(Music, QStringLiteral("Autobahn"), {}, QStringLiteral("Kraftwerk"));
    gives({}, "first");
    EXPECT_EQ(cover(), "first");
    gives({}, "second");
    EXPECT_EQ(cover(), "first") << "the same track";
    plays(Music, QStringLiteral("Autobahn"), {}, QStringLiteral("Others"));
    EXPECT_EQ(cover(), "second");
}

TEST_F(ScriptedCoverTest, IsKeptForEachPlayerByItself)
{
    runs(Music);
    musicPlays(one, "of Music");
    cover();
    players.applications.clear();
    spotifyPlays(one, {});
    EXPECT_EQ(cover(), std::nullopt);
}

TEST_F(ScriptedCoverTest, ThatComesAfterTheSourceIsGoneIsDropped)
{
    spotifyPlays(one, coverAddress);
    web.pages[QUrl(coverAddress)] = {200, "late"};
    web.isHeld = true;
    cover();
    source.reset();
    web.answer();
    settle();
    EXPECT_EQ(resolved, 0);
}
} // namespace
