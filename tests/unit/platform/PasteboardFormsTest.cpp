#include "platform/linux/PasteboardForms.h"

#include <gmock/gmock.h>

using testing::IsEmpty;

namespace {
QByteArray bytes(const PasteboardContents& contents, const char* target)
{
    const auto answer = PasteboardForms::answer(contents, QString::fromLatin1(target));
    return answer ? answer->bytes : QByteArray("(none)");
}
} // namespace

TEST(PasteboardFormsTest, TextIsOfferedUnderAllItsNames)
{
    PasteboardContents contents;
    contents.string = QStringLiteral("ä€");
    for (const char* target : {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain", "TEXT"})
        EXPECT_EQ(bytes(contents, target), "ä€") << target;
    EXPECT_EQ(bytes(contents, "STRING"), "\xe4?");
    EXPECT_EQ(bytes(contents, "text/html"), "(none)");
    EXPECT_EQ(PasteboardForms::answer(contents, QStringLiteral("TEXT"))->type, QStringLiteral("UTF8_STRING"));
    EXPECT_EQ(PasteboardForms::answer(contents, QStringLiteral("STRING"))->type, QStringLiteral("STRING"));
}

TEST(PasteboardFormsTest, RichFormsAreOfferedBesideTheText)
{
    PasteboardContents contents;
    contents.string = QStringLiteral("a");
    contents.data = {{PasteboardType::rtf, "{\\rtf a}"}, {PasteboardType::html, "<b>a</b>"}};
    EXPECT_EQ(bytes(contents, "text/rtf"), "{\\rtf a}");
    EXPECT_EQ(bytes(contents, "application/rtf"), "{\\rtf a}");
    EXPECT_EQ(bytes(contents, "text/html"), "<b>a</b>");
    EXPECT_EQ(bytes(contents, "UTF8_STRING"), "a");
}

TEST(PasteboardFormsTest, FilesComeWithTheirCompanionsAndAsPaths)
{
    PasteboardContents contents;
    contents.filePaths = {QStringLiteral("/a b"), QStringLiteral("/c")};
    EXPECT_EQ(bytes(contents, "text/uri-list"), "file:///a%20b\r\nfile:///c\r\n");
    EXPECT_EQ(bytes(contents, "x-special/gnome-copied-files"), "copy\nfile:///a%20b\nfile:///c");
    EXPECT_EQ(bytes(contents, "application/x-kde-cutselection"), "0");
    EXPECT_EQ(bytes(contents, "UTF8_STRING"), "/a b\n/c");
    contents.string = QStringLiteral("their names");
    EXPECT_EQ(bytes(contents, "UTF8_STRING"), "their names");
}

TEST(PasteboardFormsTest, AnImageIsOfferedAsItIs)
{
    PasteboardContents contents;
    contents.png = "png";
    EXPECT_EQ(bytes(contents, "image/png"), "png");
    EXPECT_EQ(PasteboardForms::targets(contents), QStringList{QStringLiteral("image/png")});
}

TEST(PasteboardFormsTest, NothingIsOfferedOfNothing)
{
    EXPECT_THAT(PasteboardForms::targets({}), IsEmpty());
    EXPECT_EQ(bytes({}, "UTF8_STRING"), "(none)");
}

TEST(PasteboardFormsTest, EveryTargetThatIsToldOfIsServed)
{
    PasteboardContents contents;
    contents.filePaths = {QStringLiteral("/a")};
    contents.data = {{PasteboardType::rtf, "r"}, {PasteboardType::html, "h"}};
    contents.png = "p";
    const QStringList targets = PasteboardForms::targets(contents);
    EXPECT_EQ(targets.size(), 12);
    for (const QString& target : targets)
        EXPECT_TRUE(PasteboardForms::answer(contents, target)) << target.toStdString();
}
