#include "platform/linux/mpris/MprisProperties.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {
const QVariantMap song{{QStringLiteral("xesam:title"), QStringLiteral("Song")}};

MprisProperties with(const char* status, const QVariantMap& others = {})
{
    QVariantMap values{{QStringLiteral("PlaybackStatus"), QString::fromLatin1(status)},
                       {QStringLiteral("Metadata"), song}};
    values.insert(others);
    return MprisProperties::parse(values);
}
} // namespace

TEST(MprisProperties, APlayerThatIsStoppedOrHasNoTitleHasNothingToShow)
{
    EXPECT_TRUE(with("Playing").hasTrack());
    EXPECT_TRUE(with("Paused").hasTrack());
    EXPECT_FALSE(with("Stopped").hasTrack());
    EXPECT_FALSE(with("").hasTrack());
    EXPECT_FALSE(with("Playing", {{QStringLiteral("Metadata"), QVariantMap()}}).hasTrack());
    EXPECT_FALSE(with("Playing", {{QStringLiteral("Metadata"), 7}}).isPlaying());
    EXPECT_FALSE(MprisProperties::parse({}).hasTrack());
}

TEST(MprisProperties, TheRateIsOneUnlessToldAndZeroAtRest)
{
    const auto rate = [](const char* status, const QVariant& value) {
        return with(status, {{QStringLiteral("Rate"), value}}).playbackRate();
    };
    EXPECT_EQ(with("Playing").playbackRate(), 1);
    EXPECT_EQ(with("Paused").playbackRate(), 0);
    EXPECT_EQ(rate("Playing", 1.5), 1.5);
    EXPECT_EQ(rate("Paused", 1.5), 0);
    for (const auto odd : {0.0, -1.0, std::nan("")})
        EXPECT_EQ(rate("Playing", odd), 1) << odd;
    EXPECT_EQ(rate("Playing", QStringLiteral("fast")), 1);
}

TEST(MprisProperties, WhatAPlayerDoesntSayItCan)
{
    const auto silent = with("Playing");
    EXPECT_TRUE(silent.canPlay && silent.canPause && silent.canGoNext && silent.canGoPrevious &&
                silent.canSeek);
    EXPECT_FALSE(with("Playing", {{QStringLiteral("CanSeek"), false}}).canSeek);
    EXPECT_TRUE(with("Playing", {{QStringLiteral("CanSeek"), QStringLiteral("no")}}).canSeek);
    const auto fixed = with("Playing", {{QStringLiteral("CanControl"), false}});
    EXPECT_FALSE(fixed.canPlay || fixed.canPause || fixed.canGoNext || fixed.canGoPrevious || fixed.canSeek);
}
