#include "platform/linux/scripting/LocalCover.h"

#include <QFile>
#include <QTemporaryDir>
#include <QUrl>

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace {
std::optional<QByteArray> read(const char* address)
{
    return LocalCover::read(QString::fromUtf8(address));
}

TEST(LocalCover, ComesFromAFile)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("a cöver#1")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("picture");
    file.close();
    EXPECT_EQ(LocalCover::read(QUrl::fromLocalFile(file.fileName()).toString(QUrl::FullyEncoded)), "picture");
}

TEST(LocalCover, ComesFromADataUrl)
{
    EXPECT_EQ(read("data:image/png;base64,cGljdHVyZQ=="), "picture");
    EXPECT_EQ(read("DATA:image/png;base64,cGljdHVyZQ%3D%3D"), "picture");
    EXPECT_EQ(read("data:,a%20b"), "a b");
}

TEST(LocalCover, IsNoneFromABrokenDataUrl)
{
    EXPECT_EQ(read("data:"), std::nullopt);
    EXPECT_EQ(read("data:image/png"), std::nullopt);
    EXPECT_EQ(read("data:image/png;base64,"), std::nullopt);
    EXPECT_EQ(read("data:image/png;base64,~"), std::nullopt);
}

TEST(LocalCover, IsNoneFromElsewhere)
{
    EXPECT_EQ(read(""), std::nullopt);
    EXPECT_EQ(read("https://covers.example/1.jpg"), std::nullopt);
    EXPECT_EQ(read("picture.png"), std::nullopt);
}

TEST(LocalCover, IsNoneFromWhatIsNoFile)
{
    const QTemporaryDir folder;
    const auto pipe = folder.filePath(QStringLiteral("pipe"));
    ASSERT_EQ(mkfifo(pipe.toUtf8().constData(), 0600), 0);
    for (const auto& path : {pipe, folder.path(), folder.filePath(QStringLiteral("missing"))})
        EXPECT_EQ(LocalCover::read(QUrl::fromLocalFile(path).toString()), std::nullopt);
}

TEST(LocalCover, IsNoneFromAFileThatIsEmptyOrTooLong)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("cover")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const auto address = QUrl::fromLocalFile(file.fileName()).toString();
    EXPECT_EQ(LocalCover::read(address), std::nullopt);
    ASSERT_TRUE(file.resize(LocalCover::longest));
    EXPECT_EQ(LocalCover::read(address)->size(), LocalCover::longest);
    ASSERT_TRUE(file.resize(LocalCover::longest + 1));
    EXPECT_EQ(LocalCover::read(address), std::nullopt);
}
} // namespace
