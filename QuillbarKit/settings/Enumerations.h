#pragma once

#include <QObject>
#include <QString>
#include <QStringView>
#include <QtQmlIntegration>

#include <array>
#include <optional>

/// The closed choices among the preferences. In QML: Settings.MediaArtSize.Medium.
namespace Settings {
Q_NAMESPACE
QML_ELEMENT

/// What switches to another module: a click on its icon, or the pointer coming to rest there.
enum class ModuleSwitchMode {
    Click,
    Hover,
};
Q_ENUM_NS(ModuleSwitchMode)

/// Where the files that the drop module offers come from.
enum class DropSource {
    Recent,
    Downloads,
    Desktop,
};
Q_ENUM_NS(DropSource)

/// Where the cover stands in the media module.
enum class MediaArtPosition {
    Left,
    Right,
    Corner,
    CornerRight,
};
Q_ENUM_NS(MediaArtPosition)

enum class MediaArtSize {
    Small,
    Medium,
    Large,
    XLarge,
};
Q_ENUM_NS(MediaArtSize)

enum class VitalsStyle {
    Gauges,
    Classic,
};
Q_ENUM_NS(VitalsStyle)

enum class ShelfViewMode {
    List,
    Grid,
};
Q_ENUM_NS(ShelfViewMode)

/// One case of an enumeration. The raw value is what the file holds and never changes; the title is what the
/// settings window shows, empty for a choice that is shown by a switch.
template <typename Enumeration>
struct Case
{
    Enumeration value;
    QStringView rawValue;
    QStringView title = {};
};

/// All cases of an enumeration, in the order of its definition.
template <typename Enumeration>
constexpr auto allCases = nullptr;

template <>
inline constexpr auto allCases<ModuleSwitchMode> = std::to_array<Case<ModuleSwitchMode>>({
    {ModuleSwitchMode::Click, u"click"},
    {ModuleSwitchMode::Hover, u"hover"},
});

template <>
inline constexpr auto allCases<DropSource> = std::to_array<Case<DropSource>>({
    {DropSource::Recent, u"recent", u"Recent Files"},
    {DropSource::Downloads, u"downloads", u"Downloads"},
    {DropSource::Desktop, u"desktop", u"Desktop"},
});

/// The left corner came first and kept its plain name.
template <>
inline constexpr auto allCases<MediaArtPosition> = std::to_array<Case<MediaArtPosition>>({
    {MediaArtPosition::Left, u"left", u"Left"},
    {MediaArtPosition::Right, u"right", u"Right"},
    {MediaArtPosition::Corner, u"corner", u"Corner L"},
    {MediaArtPosition::CornerRight, u"cornerRight", u"Corner R"},
});

template <>
inline constexpr auto allCases<MediaArtSize> = std::to_array<Case<MediaArtSize>>({
    {MediaArtSize::Small, u"small", u"Small"},
    {MediaArtSize::Medium, u"medium", u"Medium"},
    {MediaArtSize::Large, u"large", u"Large"},
    {MediaArtSize::XLarge, u"xlarge", u"XL"},
});

template <>
inline constexpr auto allCases<VitalsStyle> = std::to_array<Case<VitalsStyle>>({
    {VitalsStyle::Gauges, u"gauges"},
    {VitalsStyle::Classic, u"classic"},
});

template <>
inline constexpr auto allCases<ShelfViewMode> = std::to_array<Case<ShelfViewMode>>({
    {ShelfViewMode::List, u"list"},
    {ShelfViewMode::Grid, u"grid"},
});

template <typename Enumeration>
QString rawValue(Enumeration value)
{
    return allCases<Enumeration>.at(static_cast<std::size_t>(value)).rawValue.toString();
}

template <typename Enumeration>
QString title(Enumeration value)
{
    return allCases<Enumeration>.at(static_cast<std::size_t>(value)).title.toString();
}

/// The case of that raw value, to the letter; nothing when there is none.
template <typename Enumeration>
std::optional<Enumeration> fromRawValue(const QString& rawValue)
{
    for (const auto& each : allCases<Enumeration>) {
        if (each.rawValue == rawValue)
            return each.value;
    }
    return {};
}

/// The cover stands in a corner of the drawer, not beside the texts.
constexpr bool isCorner(MediaArtPosition position)
{
    return position == MediaArtPosition::Corner || position == MediaArtPosition::CornerRight;
}

/// Side of the cover in points.
constexpr double points(MediaArtSize size)
{
    switch (size) {
    case MediaArtSize::Small:
        return 120.0;
    case MediaArtSize::Medium:
        return 150.0;
    case MediaArtSize::Large:
        return 180.0;
    case MediaArtSize::XLarge:
        return 210.0;
    }
    return 150.0;
}
} // namespace Settings
