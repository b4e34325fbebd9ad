#pragma once

#include "fakes/FakeHttpSession.h"
#include "fakes/FakeScriptRunner.h"
#include "fakes/ManualMainQueue.h"
#include "fakes/ManualSerialQueue.h"
#include "media/AppleScriptMediaSource.h"
#include "media/PlayerScripts.h"

#include <gmock/gmock.h>

#include <memory>
#include <vector>

/// A source over players that answer as the test says. Nothing moves before settle().
class ScriptedPlayersFixture : public testing::Test
{
protected:
    using Snapshot = std::optional<NowPlaying>;

    ManualMainQueue mainQueue;
    std::shared_ptr<ManualSerialQueue> scriptQueue =
        std::make_shared<ManualSerialQueue>(QStringLiteral("com.quillbar.applescript-media"));
    FakeScriptRunner players;
    FakeHttpSession web;
    std::unique_ptr<AppleScriptMediaSource> source =
        std::make_unique<AppleScriptMediaSource>(players, web, mainQueue.clock(), mainQueue, scriptQueue);

    static constexpr auto Spotify = ScriptedPlayer::Spotify;
    static constexpr auto Music = ScriptedPlayer::Music;

    void runs(ScriptedPlayer player)
    {
        const QString name = scriptName(player);
        players.applications.append({name, name.toLower()});
    }

    void answer(const QString& script, const QString& text) { players.answers[script] = {text, {}, {}}; }

    /// The answer of a player that plays that track, with three seconds gone of 180.
    void plays(ScriptedPlayer player, const QString& title, const QString& trackID,
               const QString& artist = QStringLiteral("Kraftwerk"))
    {
        const bool isSpotify = player == Spotify;
        const QStringList lines{title,
                                artist,
                                QStringLiteral("Autobahn"),
                                isSpotify ? QStringLiteral("180000") : QStringLiteral("180"),
                                QStringLiteral("3"),
                                QStringLiteral("playing"),
                                QStringLiteral("false"),
                                isSpotify ? QStringLiteral("false") : QStringLiteral("off"),
                                QStringLiteral("false"),
                                trackID};
        answer(PlayerScripts::read(player), lines.join(u'\n'));
    }

    /// What Music hands out as the cover of that track; empty bytes for none.
    void gives(const QString& trackID, const QByteArray& cover)
    {
        players.answers[PlayerScripts::cover(trackID)] = {{}, cover, {}};
    }

    void settle()
    {
        while (scriptQueue->runOne() || mainQueue.runOneTurn()) {
        }
    }

    Snapshot read()
    {
        bool isThere = false;
        Snapshot result;
        source->currentNowPlaying([&](const Snapshot& snapshot) {
            isThere = true;
            result = snapshot;
        });
        settle();
        EXPECT_TRUE(isThere);
        return result;
    }

    /// The cover that a read brings.
    std::optional<QByteArray> cover() { return read().value_or(NowPlaying()).artworkData; }
};
