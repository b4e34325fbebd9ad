#include "clipboard/history/ClipText.h"

#include <gtest/gtest.h>

namespace {
QString imageText(std::optional<QSize> size)
{
    Clip clip;
    clip.kind = Clip::Kind::Image;
    return ClipText::displayText(clip, size);
}

QString fileText(const QStringList& paths)
{
    Clip clip;
    clip.kind = Clip::Kind::File;
    clip.filePaths = paths;
    return ClipText::displayText(clip, std::nullopt);
}
} // namespace

TEST(ClipText, ShowsATextAsItStands)
{
    Clip clip;
    clip.text = QStringLiteral(" two\nlines ");
    EXPECT_EQ(ClipText::displayText(clip, std::nullopt), clip.text);
}

TEST(ClipText, ShowsTheSizeOfAnImage)
{
    EXPECT_EQ(imageText(QSize(3840, 2160)), QStringLiteral("Image 3840×2160"));
    EXPECT_EQ(imageText(QSize(1, 1)), QStringLiteral("Image 1×1"));
}

TEST(ClipText, ShowsNoSizeThatIsNone)
{
    EXPECT_EQ(imageText(std::nullopt), u"Image");
    EXPECT_EQ(imageText(QSize(0, 5)), u"Image");
    EXPECT_EQ(imageText(QSize(5, 0)), u"Image");
    EXPECT_EQ(imageText(QSize(-1, 5)), u"Image");
}

TEST(ClipText, ShowsTheNamesOfFiles)
{
    EXPECT_EQ(fileText({QStringLiteral("/tmp/a, b.txt")}), u"a, b.txt");
    EXPECT_EQ(fileText({QStringLiteral("/x/b"), QStringLiteral("/x/a")}), u"b, a");
    EXPECT_EQ(fileText({QStringLiteral("/x/folder/"), QStringLiteral("/"), QStringLiteral("bare")}),
              u"folder, /, bare");
}

TEST(ClipText, ShowsAWordWithoutFiles)
{
    EXPECT_EQ(fileText({}), u"File");
}
