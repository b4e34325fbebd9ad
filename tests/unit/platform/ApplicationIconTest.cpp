#include "platform/linux/applications/ApplicationIcon.h"

#include <QDir>
#include <QFile>
#include <QIcon>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {
/// A theme of one red picture, 48 pixels wide, and a green vector.
class ApplicationIconTest : public testing::Test
{
protected:
    ApplicationIconTest()
    {
        const QString theme = m_folder.path() + QStringLiteral("/hicolor");
        write(theme + QStringLiteral("/index.theme"),
              "[Icon Theme]\nName=Hicolor\nDirectories=48x48/apps,scalable/apps\n"
              "[48x48/apps]\nSize=48\nType=Fixed\n"
              "[scalable/apps]\nSize=48\nType=Scalable\nMinSize=8\nMaxSize=512\n");
        write(vector(), "<svg xmlns='http://www.w3.org/2000/svg' width='16' height='16'>"
                        "<rect width='16' height='16' fill='#00ff00'/></svg>");
        QImage red(48, 48, QImage::Format_RGB32);
        red.fill(Qt::red);
        QDir().mkpath(picture().section(u'/', 0, -2));
        EXPECT_TRUE(red.save(picture()));
        QIcon::setThemeSearchPaths({m_folder.path()});
        QIcon::setThemeName(QStringLiteral("hicolor"));
    }

    ~ApplicationIconTest() override
    {
        QIcon::setThemeSearchPaths(m_pathsBefore);
        QIcon::setThemeName(m_nameBefore);
    }

    QString picture() const { return m_folder.path() + QStringLiteral("/hicolor/48x48/apps/red.png"); }
    QString vector() const { return m_folder.path() + QStringLiteral("/hicolor/scalable/apps/green.svg"); }

private:
    static void write(const QString& path, const QByteArray& bytes)
    {
        QDir().mkpath(path.section(u'/', 0, -2));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytes), bytes.size());
    }

    QTemporaryDir m_folder;
    QStringList m_pathsBefore = QIcon::themeSearchPaths();
    QString m_nameBefore = QIcon::themeName();
};

/// Width and colour of the middle; nothing for no icon.
std::optional<std::pair<int, QColor>> icon(const QString& name, int pixels)
{
    const auto image = ApplicationIcon::image(name, pixels);
    if (!image)
        return std::nullopt;
    return std::pair(image->width(), image->pixelColor(image->width() / 2, image->height() / 2));
}
} // namespace

TEST_F(ApplicationIconTest, ANameIsLookedForInTheTheme)
{
    EXPECT_EQ(icon(QStringLiteral("red"), 32), std::pair(32, QColor(Qt::red)));
    EXPECT_EQ(icon(QStringLiteral("green"), 32), std::pair(32, QColor(Qt::green)));
}

TEST_F(ApplicationIconTest, ASuffixThatDoesNotBelongThereIsForgiven)
{
    EXPECT_EQ(icon(QStringLiteral("red.png"), 32), std::pair(32, QColor(Qt::red)));
}

TEST_F(ApplicationIconTest, APathIsThePicture)
{
    EXPECT_EQ(icon(picture(), 32), std::pair(32, QColor(Qt::red)));
    EXPECT_EQ(icon(vector(), 64), std::pair(64, QColor(Qt::green)));
}

TEST_F(ApplicationIconTest, APictureIsNeverMadeLarger)
{
    EXPECT_EQ(icon(QStringLiteral("red"), 256), std::pair(48, QColor(Qt::red)));
}

TEST_F(ApplicationIconTest, WithoutAnIconThereIsNone)
{
    EXPECT_FALSE(icon(QStringLiteral("missing"), 32));
    EXPECT_FALSE(icon(QStringLiteral("/missing.png"), 32));
    EXPECT_FALSE(icon(QString(), 32));
    EXPECT_FALSE(icon(QStringLiteral("red"), 0));
}
