#include "clipboard/history/ClipboardHistoryFile.h"
#include "support/AtomicFile.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <random>
#include <unistd.h>

namespace {
/// In the working directory: a temporary folder is often in memory, where a sync costs nothing.
struct Store
{
    QTemporaryDir folder{QStringLiteral("benchmark-XXXXXX")};
    QString path = folder.filePath(QStringLiteral("clipboard.json"));
};

Clip textClip(int number)
{
    constexpr qsizetype length = 10 * 1024;
    Clip clip;
    clip.id = QStringLiteral("%1-text").arg(number);
    clip.uuid = QUuid::createUuid();
    clip.date = QDateTime::fromSecsSinceEpoch(1'700'000'000 + number, Qt::UTC);
    while (clip.text.size() < length)
        clip.text += QStringLiteral("Line %1 of a text with \"quotes\", as long as lines are, and Ümläute.\n")
                         .arg(clip.text.size());
    return clip;
}

QList<Clip> textClips()
{
    QList<Clip> clips;
    for (int i = 0; i < 100; ++i)
        clips.append(textClip(i));
    return clips;
}

/// As much as the file can hold of unpinned images, all as large as it takes them.
QList<Clip> imageClips()
{
    constexpr qsizetype size = 3 * 1024 * 1024;
    std::mt19937 random(1);
    QList<Clip> clips;
    for (int i = 0; i < 25; ++i) {
        QByteArray bytes(size, Qt::Uninitialized);
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        Clip clip;
        clip.id = QStringLiteral("%1-image").arg(i);
        clip.kind = Clip::Kind::Image;
        clip.uuid = QUuid::createUuid();
        clip.date = QDateTime::fromSecsSinceEpoch(1'600'000'000 + i, Qt::UTC);
        clip.imageData = ClipData(std::move(bytes));
        clips.append(clip);
    }
    return clips;
}

QByteArray joined(const QList<QByteArray>& pieces)
{
    return QByteArrayList(pieces).join();
}

void plainWriteAndSync(benchmark::State& state, const QByteArray& bytes)
{
    const Store store;
    const QByteArray path = QFile::encodeName(store.path);
    for ([[maybe_unused]] const auto _ : state) {
        const int file = open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        if (write(file, bytes.constData(), static_cast<std::size_t>(bytes.size())) != bytes.size() ||
            fsync(file) != 0)
            state.SkipWithError("the plain write failed");
        close(file);
    }
    state.SetBytesProcessed(state.iterations() * bytes.size());
}

void save(benchmark::State& state, QList<Clip> clips)
{
    const Store store;
    ClipboardHistoryWriter writer;
    qint64 written = 0;
    int copies = 0;
    for ([[maybe_unused]] const auto _ : state) {
        clips[0].text.append(QString::number(++copies)); // Something has changed each time.
        const QList<QByteArray> file = writer.write(clips, {});
        if (!AtomicFile::write(store.path, file))
            state.SkipWithError("the save failed");
        for (const QByteArray& piece : file)
            written += piece.size();
    }
    state.SetBytesProcessed(written);
}

void encodeTexts(benchmark::State& state)
{
    const QList<Clip> clips = textClips();
    for ([[maybe_unused]] const auto _ : state)
        benchmark::DoNotOptimize(ClipboardHistoryFile::write(clips, {}));
}

void saveTexts(benchmark::State& state)
{
    save(state, textClips());
}

void plainTexts(benchmark::State& state)
{
    plainWriteAndSync(state, joined(ClipboardHistoryFile::write(textClips(), {})));
}

QList<Clip> textBeforeImages()
{
    return QList<Clip>{textClip(0)} + imageClips();
}

void saveImages(benchmark::State& state)
{
    save(state, textBeforeImages());
}

void plainImages(benchmark::State& state)
{
    plainWriteAndSync(state, joined(ClipboardHistoryFile::write(textBeforeImages(), {})));
}

/// From a file that the system still has in memory.
void loadImages(benchmark::State& state)
{
    const Store store;
    if (!AtomicFile::write(store.path, ClipboardHistoryFile::write(textBeforeImages(), {})))
        state.SkipWithError("the save failed");
    qint64 read = 0;
    for ([[maybe_unused]] const auto _ : state) {
        QFile file(store.path);
        if (!file.open(QIODevice::ReadOnly))
            state.SkipWithError("the file is gone");
        read += file.size();
        if (!ClipboardHistoryFile::read(file.readAll()))
            state.SkipWithError("the file can't be read");
    }
    state.SetBytesProcessed(read);
}
} // namespace

BENCHMARK(encodeTexts)->Unit(benchmark::kMillisecond);
// Wall time: most of a sync is spent waiting.
BENCHMARK(plainTexts)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(saveTexts)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(plainImages)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(saveImages)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(loadImages)->UseRealTime()->Unit(benchmark::kMillisecond);
