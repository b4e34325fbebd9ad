#include "media/ArtworkPalette.h"

#include <benchmark/benchmark.h>

#include <QColor>
#include <QImage>

namespace {
/// A square cover with something in every corner.
QImage cover(int side, QImage::Format format)
{
    QImage image(side, side, QImage::Format_RGB32);
    for (int y = 0; y < side; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < side; ++x)
            line[x] = qRgb(x * 255 / side, y * 255 / side, (x ^ y) & 255);
    }
    return image.convertToFormat(format);
}

/// The palette of a cover that is decoded already.
void palette(benchmark::State& state, QImage::Format format)
{
    const auto image = cover(static_cast<int>(state.range(0)), format);
    for (auto _ : state)
        benchmark::DoNotOptimize(ArtworkPalette::extract(image));
}

BENCHMARK_CAPTURE(palette, opaque, QImage::Format_RGB32)->Arg(300)->Arg(640)->Arg(3000);
BENCHMARK_CAPTURE(palette, transparent, QImage::Format_ARGB32)->Arg(300)->Arg(640)->Arg(3000);
BENCHMARK_CAPTURE(palette, grey, QImage::Format_Grayscale8)->Arg(300)->Arg(640)->Arg(3000);
} // namespace
