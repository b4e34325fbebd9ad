#include "clipboard/detection/ClipContentDetector.h"
#include "clipboard/detection/PslLinkDetector.h"

#include <benchmark/benchmark.h>

#include <QString>

namespace {
const QString prose =
    QStringLiteral("The meeting moved to Thursday at 10:30. Bring the draft, please; it should be "
                   "about two pages long... Anything else can wait.\n");
const QString plainProse =
    QStringLiteral("The meeting moved to Thursday at ten. Bring the draft, please, and about two pages "
                   "of notes. Anything else can wait until Friday.\n");
const QString source = QStringLiteral("func total(items) { return items.map(x => x.price).sum(); }\n");
const QString linkRich =
    QStringLiteral("See https://example.com/a/b?c=d, www.example.org or mail me@example.net. ");

QString filled(const QString& unit, int64_t units)
{
    return unit.repeated(static_cast<qsizetype>(units) / unit.size() + 1)
        .first(static_cast<qsizetype>(units));
}

/// Rates are in bytes of UTF-8, all texts being ASCII; in UTF-16 as held in memory they are twice as high.
void setRate(benchmark::State& state)
{
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void detect(benchmark::State& state, const QString& unit)
{
    const QString text = filled(unit, state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(ClipContentDetector::detect(text));
    setRate(state);
}

void links(benchmark::State& state, const QString& unit)
{
    const QString text = filled(unit, state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(PslLinkDetector::shared()->matches(text));
    setRate(state);
}

// The same rate at both sizes shows that the time is linear.
#define QUILLBAR_BENCHMARK(function, name, unit)                                                             \
    BENCHMARK_CAPTURE(function, name, unit)->Arg(1 << 16)->Arg(1 << 20)

QUILLBAR_BENCHMARK(detect, plain_text, plainProse);
QUILLBAR_BENCHMARK(detect, plain_text_without_blanks, QStringLiteral("abcdefghij"));
QUILLBAR_BENCHMARK(detect, punctuated_text, prose);
QUILLBAR_BENCHMARK(detect, source_code, source);
QUILLBAR_BENCHMARK(detect, dotted_without_blanks, QStringLiteral("abc.def.ghij,"));
QUILLBAR_BENCHMARK(links, plain_text, plainProse);
QUILLBAR_BENCHMARK(links, source_code, source);
QUILLBAR_BENCHMARK(links, link_rich_text, linkRich);
QUILLBAR_BENCHMARK(links, one_letter_labels, QStringLiteral("a."));
QUILLBAR_BENCHMARK(links, colons, QStringLiteral(":"));
QUILLBAR_BENCHMARK(links, at_signs, QStringLiteral("@"));
QUILLBAR_BENCHMARK(links, stray_schemes, QStringLiteral("http://"));
QUILLBAR_BENCHMARK(links, mailboxes, QStringLiteral("a@"));
QUILLBAR_BENCHMARK(links, opening_brackets, QStringLiteral("http://a.b/(((("));
} // namespace
