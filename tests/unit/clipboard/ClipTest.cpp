#include "clipboard/history/Clip.h"

#include <gtest/gtest.h>

namespace {
Clip text(const QString& text)
{
    Clip clip;
    clip.text = text;
    return clip;
}

Clip image(const std::optional<QByteArray>& bytes)
{
    Clip clip;
    clip.kind = Clip::Kind::Image;
    if (bytes)
        clip.imageData = ClipData(*bytes);
    return clip;
}

Clip files(const QStringList& paths)
{
    Clip clip;
    clip.kind = Clip::Kind::File;
    clip.filePaths = paths;
    return clip;
}
} // namespace

TEST(Clip, TheKeyOfATextIsTheTextAsItStands)
{
    EXPECT_EQ(text(QStringLiteral(" Über\n")).contentKey(), QStringLiteral("t: Über\n"));
    EXPECT_EQ(text({}).contentKey(), u"t:");
    EXPECT_NE(text(QStringLiteral("a")).contentKey(), text(QStringLiteral("A")).contentKey());
    EXPECT_NE(text(QStringLiteral("\u00E9")).contentKey(), text(QStringLiteral("e\u0301")).contentKey());
    const QString nul = QStringLiteral("a") + QChar(0) + QStringLiteral("b");
    EXPECT_NE(text(nul).contentKey(), text(QStringLiteral("a")).contentKey());
}

TEST(Clip, TheKeyOfAnImageIsItsSizeAndTheFrontOfItsDigest)
{
    EXPECT_EQ(image(QByteArray("abc")).contentKey(), u"i:3:ba7816bf8f01cfea");
    EXPECT_EQ(image(QByteArray()).contentKey(), u"i:0:e3b0c44298fc1c14");
}

TEST(Clip, AnImageWithoutDataHasAKeyToo)
{
    EXPECT_EQ(image(std::nullopt).contentKey(), u"i:0");
}

TEST(Clip, TheKeyOfFilesIsTheirPaths)
{
    EXPECT_EQ(files({QStringLiteral("/b c"), QStringLiteral("/a")}).contentKey(), u"f:/b c:/a");
    EXPECT_EQ(files({}).contentKey(), u"f:");
}

TEST(Clip, SaysWhetherKeysAreEqual)
{
    const QList<Clip> clips{text({}),
                            text(QStringLiteral("a")),
                            image(std::nullopt),
                            image(QByteArray()),
                            image(QByteArray("abc")),
                            image(QByteArray("abd")),
                            files({}),
                            files({QStringLiteral("/a"), QStringLiteral("/b")}),
                            files({QStringLiteral("/a:/b")})};
    for (const Clip& left : clips) {
        for (const Clip& right : clips)
            EXPECT_EQ(left.hasSameContentAs(right), left.contentKey() == right.contentKey())
                << qPrintable(left.contentKey()) << " " << qPrintable(right.contentKey());
    }
}

TEST(Clip, EqualsOnlyWhenEveryFieldDoes)
{
    const Clip clip = image(QByteArray("abc"));
    EXPECT_EQ(clip, image(QByteArray("abc")));
    const auto differs = [&clip](auto change) {
        Clip other = clip;
        change(other);
        return clip != other && clip.hasSameContentAs(other);
    };
    EXPECT_TRUE(differs([](Clip& other) { other.id = QStringLiteral("x"); }));
    EXPECT_TRUE(differs([](Clip& other) { other.text = QStringLiteral("x"); }));
    EXPECT_TRUE(differs([](Clip& other) { other.filePaths.append(QStringLiteral("/x")); }));
    EXPECT_TRUE(differs([](Clip& other) { other.date = QDateTime::fromMSecsSinceEpoch(1, Qt::UTC); }));
    EXPECT_TRUE(differs([](Clip& other) { other.pinned = true; }));
    EXPECT_TRUE(differs([](Clip& other) { other.uuid = QUuid::createUuid(); }));
    EXPECT_TRUE(differs(
        [](Clip& other) { other.richData.emplace(QStringLiteral("public.rtf"), ClipData(QByteArray())); }));
    EXPECT_TRUE(differs([](Clip& other) { other.sourceBundleID = QString(); }));
    EXPECT_TRUE(differs([](Clip& other) { other.detectedKind = DetectedKind::code(); }));
    EXPECT_NE(clip, image(QByteArray("abd")));
    EXPECT_NE(text({}), files({}));
}
