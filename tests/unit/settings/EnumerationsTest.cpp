#include "settings/Enumerations.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

using testing::ElementsAre;
using namespace Settings;

namespace {
/// "rawValue|title" of every case in order, each found again by its raw value.
template <typename Enumeration>
std::vector<std::string> casesOf()
{
    std::vector<std::string> cases;
    for (const auto& each : allCases<Enumeration>) {
        EXPECT_EQ(static_cast<std::size_t>(each.value), cases.size());
        EXPECT_EQ(fromRawValue<Enumeration>(rawValue(each.value)), each.value);
        cases.push_back((rawValue(each.value) + u'|' + title(each.value)).toStdString());
    }
    EXPECT_EQ(fromRawValue<Enumeration>(QString()), std::nullopt);
    EXPECT_EQ(fromRawValue<Enumeration>(QStringLiteral("else")), std::nullopt);
    return cases;
}
} // namespace

TEST(EnumerationsTest, EveryCaseHasItsRawValueAndTitle)
{
    EXPECT_THAT(casesOf<ModuleSwitchMode>(), ElementsAre("click|", "hover|"));
    EXPECT_THAT(casesOf<DropSource>(),
                ElementsAre("recent|Recent Files", "downloads|Downloads", "desktop|Desktop"));
    EXPECT_THAT(casesOf<MediaArtPosition>(),
                ElementsAre("left|Left", "right|Right", "corner|Corner L", "cornerRight|Corner R"));
    EXPECT_THAT(casesOf<MediaArtSize>(),
                ElementsAre("small|Small", "medium|Medium", "large|Large", "xlarge|XL"));
    EXPECT_THAT(casesOf<VitalsStyle>(), ElementsAre("gauges|", "classic|"));
    EXPECT_THAT(casesOf<ShelfViewMode>(), ElementsAre("list|", "grid|"));
}

TEST(EnumerationsTest, BothCornersAreCornersAndTheSidesAreNot)
{
    EXPECT_TRUE(isCorner(MediaArtPosition::Corner));
    EXPECT_TRUE(isCorner(MediaArtPosition::CornerRight));
    EXPECT_FALSE(isCorner(MediaArtPosition::Left));
    EXPECT_FALSE(isCorner(MediaArtPosition::Right));
}

TEST(EnumerationsTest, TheCoverGrowsBy30Points)
{
    std::vector<double> sides;
    for (const auto& each : allCases<MediaArtSize>)
        sides.push_back(points(each.value));
    EXPECT_THAT(sides, ElementsAre(120.0, 150.0, 180.0, 210.0));
}
