#include "media/RepeatMode.h"

#include <gtest/gtest.h>

TEST(RepeatModeTest, RawValuesLeadToTheirModesAndBack)
{
    EXPECT_EQ(RepeatModes::rawValue(RepeatMode::Off), QStringLiteral("off"));
    EXPECT_EQ(RepeatModes::rawValue(RepeatMode::All), QStringLiteral("all"));
    EXPECT_EQ(RepeatModes::rawValue(RepeatMode::One), QStringLiteral("one"));
    for (const auto mode : {RepeatMode::Off, RepeatMode::All, RepeatMode::One})
        EXPECT_EQ(RepeatModes::repeatMode(RepeatModes::rawValue(mode)), mode);
}

TEST(RepeatModeTest, AnyOtherTextIsNoMode)
{
    for (const auto& text :
         {QStringLiteral("Off"), QString(), QStringLiteral(" off"), QStringLiteral("off "),
          QStringLiteral("ALL"), QStringLiteral("none"), QStringLiteral("ones"), QStringLiteral("0")})
        EXPECT_EQ(RepeatModes::repeatMode(text), std::nullopt) << qUtf8Printable(text);
}
