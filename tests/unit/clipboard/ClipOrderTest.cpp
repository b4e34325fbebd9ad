#include "clipboard/history/ClipOrder.h"

#include <gtest/gtest.h>

namespace {
Clip clip(const char* id, qint64 milliseconds, bool pinned = false)
{
    Clip clip;
    clip.id = QString::fromUtf8(id);
    clip.date = QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
    clip.pinned = pinned;
    return clip;
}

Clip image(const char* id, qsizetype size)
{
    Clip clip = ::clip(id, 0);
    clip.kind = Clip::Kind::Image;
    clip.imageData = ClipData(QByteArray(size, 'x'));
    return clip;
}

QString ids(const QList<Clip>& clips)
{
    QString ids;
    for (const Clip& clip : clips)
        ids += clip.id;
    return ids;
}

QString resorted(QList<Clip> clips)
{
    ClipOrder::resort(clips);
    return ids(clips);
}

QString trimmed(QList<Clip> clips, int maxItems)
{
    ClipOrder::trim(clips, maxItems);
    return ids(clips);
}
} // namespace

TEST(ClipOrder, PinnedClipsComeFirst)
{
    EXPECT_EQ(resorted({clip("a", 9), clip("b", 1, true), clip("c", 5), clip("d", 2, true)}), u"dbac");
}

TEST(ClipOrder, LaterDatesComeFirst)
{
    EXPECT_EQ(resorted({clip("a", 1000), clip("b", 1002), clip("c", 1001)}), u"bca");
}

TEST(ClipOrder, EqualsKeepTheirOrder)
{
    QList<Clip> clips;
    QString expected;
    for (char id = 'A'; id <= 'z'; ++id) {
        clips.append(clip(std::string(1, id).c_str(), 7, id % 2 == 0));
        expected += QLatin1Char(id);
    }
    QString pinned;
    QString others;
    for (const QChar id : expected)
        (id.unicode() % 2 == 0 ? pinned : others) += id;
    EXPECT_EQ(resorted(clips), pinned + others);
}

TEST(ClipOrder, TrimKeepsThePinnedAndTheNewest)
{
    EXPECT_EQ(trimmed({clip("P", 3, true), clip("Q", 2, true), clip("R", 1, true), clip("a", 9), clip("b", 8),
                       clip("c", 7), clip("d", 6)},
                      2),
              u"PQRab");
}

TEST(ClipOrder, TrimAtTheLimitDropsNothing)
{
    EXPECT_EQ(trimmed({clip("a", 2), clip("b", 1)}, 2), u"ab");
    EXPECT_EQ(trimmed({}, 2), u"");
}

TEST(ClipOrder, TrimToNothingLeavesThePinned)
{
    EXPECT_EQ(trimmed({clip("P", 1, true), clip("a", 2)}, 0), u"P");
    EXPECT_EQ(trimmed({clip("P", 1, true), clip("a", 2)}, -1), u"P");
}

TEST(ClipOrder, AnImageOfThreeMebibytesIsPersistedAndALargerOneNot)
{
    EXPECT_EQ(ids(ClipOrder::persistableClips(
                  {image("a", 3'145'727), image("b", 3'145'728), image("c", 3'145'729), clip("d", 0)})),
              u"abd");
}

TEST(ClipOrder, AnImageWithoutDataIsPersisted)
{
    Clip empty = clip("a", 0);
    empty.kind = Clip::Kind::Image;
    EXPECT_EQ(ids(ClipOrder::persistableClips({empty})), u"a");
}

TEST(ClipOrder, ALargeTextIsPersisted)
{
    Clip large = clip("a", 0);
    large.text = QString(4'000'000, u'x');
    large.richData.emplace(QStringLiteral("public.rtf"), ClipData(QByteArray(4'000'000, 'x')));
    EXPECT_EQ(ids(ClipOrder::persistableClips({large})), u"a");
}
