#include "clipboard/history/ClipThumbnailCache.h"
#include "clipboard/panel/ClipSearch.h"
#include "platform/ImageCodec.h"

#include <benchmark/benchmark.h>

namespace {
/// No clip here is an image.
class NoCodec final : public ImageCodec
{
public:
    std::optional<QSize> pixelSize(const QByteArray&) const override { return {}; }
    std::optional<QImage> thumbnail(const QByteArray&, int) const override { return {}; }
    std::optional<QByteArray> png(const QByteArray&) const override { return {}; }
};

const QString ascii =
    QStringLiteral("The meeting moved to Thursday at ten. Bring the draft, please, and notes.\n");
const QString accented = QStringLiteral("Überall grüßen Möwen; déjà vu à Orléans, und Straßen ohne Bäume.\n");

/// 100 clips of 10 KB.
QList<Clip> clips(const QString& line)
{
    QList<Clip> clips;
    for (int number = 0; number < 100; ++number) {
        Clip clip;
        clip.uuid = QUuid::createUuid();
        clip.text = line.repeated(10 * 1024 / line.size());
        clips.append(clip);
    }
    return clips;
}

/// A further letter of a query.
void keystroke(benchmark::State& state, const QString& line, const QString& query)
{
    NoCodec codec;
    ClipThumbnailCache thumbnails(codec);
    ClipSearch search(thumbnails);
    const auto all = clips(line);
    benchmark::DoNotOptimize(search.matches(all, QStringLiteral("x")));
    for (auto _ : state)
        benchmark::DoNotOptimize(search.matches(all, query));
}

/// The first letter after the panel has opened.
void firstKeystroke(benchmark::State& state, const QString& line)
{
    NoCodec codec;
    ClipThumbnailCache thumbnails(codec);
    const auto all = clips(line);
    for (auto _ : state) {
        ClipSearch search(thumbnails);
        benchmark::DoNotOptimize(search.matches(all, QStringLiteral("q")));
    }
}

// Queries that are in no clip, so that every clip is searched to its end.
BENCHMARK_CAPTURE(keystroke, one_letter, ascii, QStringLiteral("z"));
BENCHMARK_CAPTURE(keystroke, two_letters, ascii, QStringLiteral("tz"));
BENCHMARK_CAPTURE(keystroke, word_with_common_ends, ascii, QStringLiteral("ecliptice"));
BENCHMARK_CAPTURE(keystroke, word_that_almost_fits, ascii, QStringLiteral("meeting moves"));
BENCHMARK_CAPTURE(keystroke, accented_word, accented, QStringLiteral("Mövenpick"));
BENCHMARK_CAPTURE(keystroke, found_in_all, ascii, QStringLiteral("thursday"));
BENCHMARK_CAPTURE(firstKeystroke, ascii, ascii);
BENCHMARK_CAPTURE(firstKeystroke, accented, accented);
} // namespace
