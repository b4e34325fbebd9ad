#include "support/AtomicFile.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <unistd.h>

namespace {
constexpr qsizetype size = 3 * 1024 * 1024;

/// In the working directory: a temporary folder is often in memory, where a sync costs nothing.
struct Store
{
    QTemporaryDir folder{QStringLiteral("benchmark-XXXXXX")};
    QString path = folder.filePath(QStringLiteral("store.json"));
    QByteArray bytes = QByteArray(size, 'x');
};

/// What any program pays that wants the bytes on the disk: the measure for the one below.
void plainWriteAndSync(benchmark::State& state)
{
    const Store store;
    const QByteArray path = QFile::encodeName(store.path);
    for ([[maybe_unused]] const auto _ : state) {
        const int file = open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        if (write(file, store.bytes.constData(), size) != size || fsync(file) != 0)
            state.SkipWithError("the plain write failed");
        close(file);
    }
    state.SetBytesProcessed(state.iterations() * size);
}

void atomicFileWrite(benchmark::State& state)
{
    const Store store;
    for ([[maybe_unused]] const auto _ : state) {
        if (!AtomicFile::write(store.path, store.bytes))
            state.SkipWithError("the save failed");
    }
    state.SetBytesProcessed(state.iterations() * size);
}
} // namespace

// Wall time: most of a sync is spent waiting.
BENCHMARK(plainWriteAndSync)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(atomicFileWrite)->UseRealTime()->Unit(benchmark::kMillisecond);
