#include "clipboard/history/DetectedKind.h"

#include <gmock/gmock.h>

namespace {
TEST(DetectedKind, IsPlainToBeginWith)
{
    EXPECT_EQ(DetectedKind(), DetectedKind::plain());
    EXPECT_EQ(DetectedKind().type(), DetectedKind::Type::Plain);
}

TEST(DetectedKind, OnlyLinksAndColorsCarryAValue)
{
    EXPECT_EQ(DetectedKind::link(QStringLiteral("a.com")).value(), u"a.com");
    EXPECT_EQ(DetectedKind::color(QStringLiteral("#FFFFFF")).value(), u"#FFFFFF");
    EXPECT_TRUE(DetectedKind::plain().value().isEmpty());
    EXPECT_TRUE(DetectedKind::code().value().isEmpty());
}

TEST(DetectedKind, EqualsByTypeAndValue)
{
    EXPECT_NE(DetectedKind::plain(), DetectedKind::code());
    EXPECT_NE(DetectedKind::link(QStringLiteral("a")), DetectedKind::color(QStringLiteral("a")));
    EXPECT_NE(DetectedKind::link(QStringLiteral("a")), DetectedKind::link(QStringLiteral("b")));
    EXPECT_EQ(DetectedKind::link(QStringLiteral("a")), DetectedKind::link(QStringLiteral("a")));
}
} // namespace
