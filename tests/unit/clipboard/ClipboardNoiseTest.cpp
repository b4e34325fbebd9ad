// A day's copies and more, one after another.
#include "unit/clipboard/ClipboardWatcherFixture.h"

#include <algorithm>
#include <cstdlib>
#include <malloc.h>
#include <random>

namespace {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int defaultCopies = 1000;
#else
constexpr int defaultCopies = 10'000;
#endif
constexpr int warmUp = 500;
constexpr int kept = 25;
constexpr int longestText = 2000;
constexpr int largestImage = 20'000;
/// What the clips of one moment may need beyond those of another: 25 of the largest image and its base64.
constexpr qint64 mostGrowth = 1 << 20;

int copies()
{
    const char* const given = std::getenv("QUILLBAR_COPIES");
    return given ? std::atoi(given) : defaultCopies;
}

/// In RAM where there is such a folder, since it is not the disk that is under test.
QString memoryFolder()
{
    const QString shared = QStringLiteral("/dev/shm");
    return QFileInfo(shared).isWritable() ? shared : QDir::tempPath();
}

/// What the program has taken from the heap and not given back.
qint64 heap()
{
    const auto info = mallinfo2();
    return static_cast<qint64>(info.uordblks + info.hblkhd);
}

/// What is expected of the history, kept in the plainest way.
class Expected
{
public:
    void copied(const PasteboardContents& contents)
    {
        const auto same = std::find_if(m_latestFirst.begin(), m_latestFirst.end(),
                                       [&](const auto& each) { return isSame(each, contents); });
        if (same != m_latestFirst.end())
            m_latestFirst.erase(same);
        m_latestFirst.prepend(contents);
        if (m_latestFirst.size() > kept)
            m_latestFirst.removeLast();
    }

    void expectIs(const QList<Clip>& clips) const
    {
        ASSERT_EQ(clips.size(), m_latestFirst.size());
        for (qsizetype i = 0; i < clips.size(); ++i) {
            SCOPED_TRACE(i);
            const auto& contents = m_latestFirst[i];
            EXPECT_EQ(clips[i].text, contents.string.value_or(QString()));
            EXPECT_EQ(clips[i].filePaths, contents.filePaths);
            ASSERT_EQ(clips[i].imageData.has_value(), contents.png.has_value());
            if (contents.png) {
                EXPECT_EQ(clips[i].imageData->bytes(), *contents.png);
            }
            const auto html = contents.data.find(PasteboardType::html);
            ASSERT_EQ(clips[i].richData.size(), contents.data.size());
            if (html != contents.data.end()) {
                EXPECT_EQ(clips[i].richData.at(PasteboardType::html).bytes(), html->second);
            }
        }
    }

private:
    /// The random contents differ in all of these or in none.
    static bool isSame(const PasteboardContents& left, const PasteboardContents& right)
    {
        return left.string == right.string && left.filePaths == right.filePaths && left.png == right.png;
    }

    QList<PasteboardContents> m_latestFirst;
};
} // namespace

class ClipboardNoiseTest : public ClipboardWatcherFixture
{
protected:
    ClipboardNoiseTest() { watcher.reset(); }

    int below(int limit) { return std::uniform_int_distribution(0, limit - 1)(m_random); }

    PasteboardContents anything()
    {
        switch (below(8)) {
        case 0:
            return image(QByteArray(1 + below(largestImage), static_cast<char>('a' + below(26))));
        case 1:
            return files({QStringLiteral("/home/%1").arg(below(1000)), QStringLiteral("/home/x")});
        case 2:
            // Of the few that come again and again.
            return text(QStringLiteral("again %1").arg(below(10)));
        case 3: {
            auto rich = text(QStringLiteral("rich %1").arg(m_made));
            rich.data[PasteboardType::html] = QByteArray(1 + below(longestText), 'h');
            return rich;
        }
        case 4:
            return text(QStringLiteral("https://example.org/%1").arg(m_made));
        default:
            return text(QStringLiteral("%1 ").arg(m_made) +
                        QString(below(longestText), QChar(u'a' + below(20'000))));
        }
    }

    /// What must leave no trace: a secret, an excluded program's copy, nothing.
    PasteboardContents toBeIgnored()
    {
        if (below(2) == 0)
            return {};
        auto secret = text(QStringLiteral("secret"));
        secret.types.append(PasteboardType::concealed);
        return secret;
    }

    void copyMany(int count)
    {
        for (int i = 0; i < count; ++i) {
            ++m_made;
            if (below(20) == 0)
                copied(toBeIgnored());
            const auto contents = anything();
            m_expected.copied(contents);
            copied(contents);
        }
    }

    const QTemporaryDir m_memory{memoryFolder() + QStringLiteral("/quillbar-noise-XXXXXX")};
    const QString m_file = m_memory.filePath(QStringLiteral("Quillbar/clipboard.json"));
    std::mt19937 m_random{7};
    int m_made = 0;
    Expected m_expected;
};

TEST_F(ClipboardNoiseTest, TheLatestAreKeptAndMemoryStaysFlat)
{
    watcher = std::make_unique<ClipboardWatcher>(pasteboard, workspace, imageCodec, clock, queue, imageQueue,
                                                 m_file);
    watcher->start();
    copyMany(warmUp);
    const auto before = heap();
    copyMany(copies() - warmUp);
    const auto growth = heap() - before;
    RecordProperty("growth", std::to_string(growth));
    EXPECT_LT(growth, mostGrowth);
    m_expected.expectIs(watcher->clips());
    const auto store = ClipboardHistoryFile::read(SavedFolder::read(m_file));
    ASSERT_TRUE(store);
    m_expected.expectIs(store->clips);
}
