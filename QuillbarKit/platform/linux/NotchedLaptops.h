#pragma once

#include <QSize>
#include <QString>

#include <optional>

/// The laptops whose built-in panel has a camera housing that cuts into the picture. Nothing in the display
/// stack tells where it is, so it is known by model.
namespace NotchedLaptops {
struct Housing
{
    /// Size of the cut at the top edge, centred, in device pixels.
    QSize size;
};

/// The housing of the built-in display `connector` when it runs at `pixels`; none on other models, on
/// external displays, and in modes that leave out the strip beside the housing. `model` is the device tree's
/// compatible string or the DMI product name.
std::optional<Housing> housing(const QString& model, const QString& connector, const QSize& pixels);

/// This machine's model, empty when unknown. `root` is where /sys and /proc are mounted, for tests.
QString machineModel(const QString& root = QStringLiteral("/"));
} // namespace NotchedLaptops
