#include "Require.h"
#include "platform/linux/images/QtImageCodec.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {
const QtImageCodec& codec()
{
    // The toolkit looks for its plugins beside an application.
    static int count = 1;
    static char name[] = "fuzz_image_header";
    static char* names[] = {name, nullptr};
    static const QCoreApplication application(count, names);
    // Small, so that an input is decoded in no time.
    static const QtImageCodec codec(256 * 256);
    return codec;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray file(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto pixels = codec().pixelSize(file);
    require(!pixels || !pixels->isEmpty());
    constexpr int limit = 24;
    if (const auto thumbnail = codec().thumbnail(file, limit)) {
        require(pixels.has_value());
        require(std::max(thumbnail->width(), thumbnail->height()) <= limit);
    }
    if (const auto png = codec().png(file)) {
        require(codec().pixelSize(*png).has_value());
        require(codec().png(*png) == png);
    }
    return 0;
}
