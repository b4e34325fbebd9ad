#include "platform/linux/applications/ApplicationIcon.h"

#include <QIcon>
#include <QPixmap>

std::optional<QImage> ApplicationIcon::image(const QString& icon, int pixels)
{
    if (icon.isEmpty() || pixels < 1)
        return std::nullopt;
    QString name = icon;
    // Against the rules, but common.
    for (const auto suffix : {u".png", u".svg", u".xpm"}) {
        if (!name.startsWith(u'/') && name.endsWith(QStringView(suffix)))
            name.chop(4);
    }
    const auto found = name.startsWith(u'/') ? QIcon(name) : QIcon::fromTheme(name);
    const auto image = found.pixmap(QSize(pixels, pixels), 1.0).toImage();
    return image.isNull() ? std::nullopt : std::optional(image);
}
