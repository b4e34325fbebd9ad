#include "platform/linux/NotchedLaptops.h"

#include <QDir>
#include <QFile>

#include <array>

namespace {
struct Row
{
    QLatin1StringView model;
    /// The panel's full mode, strip included.
    QSize pixels;
    QSize housing;
};

// Heights are the difference between the panel's full mode and the one below the housing.
constexpr std::array rows{
    Row{QLatin1StringView("apple,j314s"), {3024, 1964}, {370, 74}},
    Row{QLatin1StringView("apple,j314c"), {3024, 1964}, {370, 74}},
    Row{QLatin1StringView("apple,j414s"), {3024, 1964}, {370, 74}},
    Row{QLatin1StringView("apple,j414c"), {3024, 1964}, {370, 74}},
    Row{QLatin1StringView("apple,j316s"), {3456, 2234}, {370, 74}},
    Row{QLatin1StringView("apple,j316c"), {3456, 2234}, {370, 74}},
    Row{QLatin1StringView("apple,j416s"), {3456, 2234}, {370, 74}},
    Row{QLatin1StringView("apple,j416c"), {3456, 2234}, {370, 74}},
    Row{QLatin1StringView("apple,j413"), {2560, 1664}, {340, 64}},
    Row{QLatin1StringView("apple,j415"), {2880, 1864}, {340, 64}},
};

QByteArray firstOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    // A device tree's string list ends each entry with a zero byte; the first is the most specific.
    return file.read(256).split('\0').first().trimmed();
}
} // namespace

std::optional<NotchedLaptops::Housing> NotchedLaptops::housing(const QString& model, const QString& connector,
                                                               const QSize& pixels)
{
    if (!connector.startsWith(u"eDP"))
        return std::nullopt;
    for (const auto& row : rows) {
        if (model == row.model && pixels == row.pixels)
            return Housing{row.housing};
    }
    return std::nullopt;
}

QString NotchedLaptops::machineModel(const QString& root)
{
    const QDir dir(root);
    for (const auto* path : {"proc/device-tree/compatible", "sys/class/dmi/id/product_name"}) {
        if (const auto model = firstOf(dir.filePath(QString::fromLatin1(path))); !model.isEmpty())
            return QString::fromUtf8(model);
    }
    return {};
}
