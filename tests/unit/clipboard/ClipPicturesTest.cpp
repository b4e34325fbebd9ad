#include "clipboard/rows/ClipPictures.h"

#include "clipboard/history/ClipThumbnailCache.h"
#include "unit/clipboard/ClipboardWatcherFixture.h"

#include <QCoreApplication>

namespace {
/// Knows a colour by its name as a picture.
class ColourCodec final : public ImageCodec
{
public:
    mutable std::atomic<int> decodes = 0;

    std::optional<QSize> pixelSize(const QByteArray&) const override { return {}; }
    std::optional<QImage> thumbnail(const QByteArray& file, int maxPixels) const override
    {
        ++decodes;
        const QColor colour(QString::fromUtf8(file));
        if (!colour.isValid())
            return {};
        QImage image(maxPixels, maxPixels, QImage::Format_RGB32);
        image.fill(colour);
        return image;
    }
    std::optional<QByteArray> png(const QByteArray&) const override { return {}; }
};

class ClipPicturesTest : public ClipboardWatcherFixture
{
protected:
    QImage icon(const QByteArray& file)
    {
        std::optional<QImage> found;
        pictures.findIcon(file, 16, &receiver, [&](const QImage& image) { found = image; });
        while (!found)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return *found;
    }

    ColourCodec codec;
    ClipThumbnailCache thumbnails{codec};
    QObject receiver;
    ClipPictures pictures{*watcher, thumbnails};
};
} // namespace

TEST_F(ClipPicturesTest, AnIconIsWhatItsFileHoldsAndDecodedOnce)
{
    EXPECT_EQ(icon("red").pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(icon("blue").pixelColor(0, 0), QColor(Qt::blue));
    EXPECT_EQ(icon("red").size(), QSize(32, 32)) << "at the two pixels a point of no screen";
    EXPECT_EQ(codec.decodes, 2);
}

TEST_F(ClipPicturesTest, AnIconMayBeAVectorGraphic)
{
    const auto drawn = icon("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 2 2'>"
                            "<rect width='2' height='2' fill='#00ff00'/></svg>");
    EXPECT_EQ(drawn.size(), QSize(32, 32));
    EXPECT_EQ(drawn.pixelColor(16, 16), QColor(0, 255, 0));
}
