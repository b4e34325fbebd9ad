#include "clipboard/previews/QuickLookGeometry.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr double shareOfScreen = 0.8;
/// The bar has a title and three buttons.
constexpr QSizeF smallest(360, 220);
constexpr QSizeF ofText(760, 820);
constexpr QSizeF ofFacts(460, 240);

QSizeF largest(const ScreenRect& screen)
{
    return {std::floor(screen.width * shareOfScreen), std::floor(screen.height * shareOfScreen)};
}

ScreenRect centred(const ScreenRect& screen, const QSizeF& wanted)
{
    const auto size = wanted.boundedTo(largest(screen));
    return {std::round(screen.midX() - size.width() / 2),
            std::round(screen.y + (screen.height - size.height()) / 2), size.width(), size.height()};
}
} // namespace

double QuickLookGeometry::longestSide(const ScreenRect& screen)
{
    const auto most = largest(screen);
    return std::max(most.width(), most.height());
}

ScreenRect QuickLookGeometry::pictureFrame(const ScreenRect& screen, const QSizeF& picture)
{
    const QSizeF around(2 * margin, barHeight + margin);
    const auto room = largest(screen) - around;
    const auto shown = picture.width() > room.width() || picture.height() > room.height()
                           ? picture.scaled(room, Qt::KeepAspectRatio)
                           : picture;
    const auto size = (shown + around).expandedTo(smallest);
    return centred(screen, {std::ceil(size.width()), std::ceil(size.height())});
}

ScreenRect QuickLookGeometry::textFrame(const ScreenRect& screen)
{
    return centred(screen, ofText);
}

ScreenRect QuickLookGeometry::factsFrame(const ScreenRect& screen)
{
    return centred(screen, ofFacts);
}
