#include "clipboard/previews/QuickLookModel.h"

#include "ViewWindow.h"
#include "fakes/ManualMainQueue.h"
#include "fakes/ManualSerialQueue.h"
#include "platform/linux/images/QtImageCodec.h"

#include <QFile>
#include <QPainter>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using testing::Contains;
using testing::Not;

namespace {
/// The view of a preview over real files, which are read when a test says so.
class QuickLookViewTest : public testing::Test, protected ViewWindow
{
protected:
    ~QuickLookViewTest() override { view.reset(); }

    QString file(const QString& name, const QByteArray& bytes)
    {
        const auto path = folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }
    QString picture(const QString& name, const QSize& size, QColor colour)
    {
        const auto path = folder.filePath(name);
        QImage image(size, QImage::Format_ARGB32);
        image.fill(colour);
        EXPECT_TRUE(image.save(path));
        return path;
    }

    void show(const QStringList& paths, const QSize& size)
    {
        model = std::make_unique<QuickLookModel>(QuickLookModel::Services{codec, queue, work}, paths,
                                                 QString(), 800, 1);
        ASSERT_NO_FATAL_FAILURE(showView(urlOf(QStringLiteral("QuickLookView")),
                                         {{QStringLiteral("model"), QVariant::fromValue(model.get())}},
                                         size));
        view->forceActiveFocus();
    }
    void load()
    {
        work->runAll();
        queue.runUntilIdle();
        QCoreApplication::processEvents();
    }
    void press(Qt::Key key) { QTest::keyClick(&window, key); }

    QQuickItem* reading() { return view->findChild<QQuickItem*>(QStringLiteral("reading")); }

    QTemporaryDir folder;
    QtImageCodec codec;
    ManualMainQueue queue;
    std::shared_ptr<ManualSerialQueue> work = std::make_shared<ManualSerialQueue>(QStringLiteral("work"));
    std::unique_ptr<QuickLookModel> model;
};
} // namespace

TEST_F(QuickLookViewTest, APictureFillsTheWindowInItsOwnShape)
{
    show({picture(u"red.png"_qs, {600, 400}, Qt::red)}, {624, 468});
    load();
    EXPECT_THAT(texts(), Contains(u"red.png"_qs));
    EXPECT_THAT(texts(), Contains(testing::ResultOf(
                             [](const QString& text) { return text.contains(u"600 × 400"_qs); }, true)));
    const auto image = window.grabWindow();
    EXPECT_EQ(image.pixelColor(312, 256), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(30, 256), QColor(Qt::red));
    EXPECT_NE(image.pixelColor(6, 256), QColor(Qt::red));
}

TEST_F(QuickLookViewTest, ASmallPictureIsNotMadeLarger)
{
    show({picture(u"red.png"_qs, {20, 20}, Qt::red)}, {360, 220});
    load();
    const auto image = window.grabWindow();
    EXPECT_EQ(image.pixelColor(180, 132), QColor(Qt::red));
    EXPECT_NE(image.pixelColor(180, 150), QColor(Qt::red));
}

TEST_F(QuickLookViewTest, BlackOnNothingCanBeSeen)
{
    auto path = picture(u"black.png"_qs, {200, 100}, Qt::transparent);
    QImage image(path);
    QPainter(&image).fillRect(0, 0, 100, 100, Qt::black);
    ASSERT_TRUE(image.save(path));
    show({path}, {360, 220});
    load();
    const auto drawn = window.grabWindow();
    EXPECT_EQ(drawn.pixelColor(130, 132), QColor(Qt::black));
    EXPECT_GT(drawn.pixelColor(230, 132).lightness(), 100);
}

TEST_F(QuickLookViewTest, CodeIsSetInAFixedWidthAndScrolls)
{
    show({file(u"a.py"_qs, QByteArray("print(1)\n").repeated(200))}, {760, 640});
    load();
    auto* flickable = reading();
    ASSERT_TRUE(flickable && flickable->isVisible());
    auto* words = flickable->findChild<QQuickItem*>(QStringLiteral("words"));
    ASSERT_TRUE(words);
    EXPECT_EQ(words->property("font").value<QFont>().family(), u"JetBrains Mono"_qs);
    press(Qt::Key_Down);
    EXPECT_GT(flickable->property("contentY").toDouble(), 0);
    press(Qt::Key_End);
    EXPECT_EQ(flickable->property("contentY").toDouble(),
              flickable->property("contentHeight").toDouble() - flickable->height());
    press(Qt::Key_Home);
    EXPECT_EQ(flickable->property("contentY").toDouble(), 0);
}

TEST_F(QuickLookViewTest, AShortTextStaysAtItsTop)
{
    show({file(u"a.txt"_qs, "hello")}, {760, 640});
    load();
    EXPECT_THAT(texts(), Contains(u"hello"_qs));
    press(Qt::Key_Down);
    press(Qt::Key_End);
    EXPECT_EQ(reading()->property("contentY").toDouble(), 0);
}

TEST_F(QuickLookViewTest, ALongTextSaysThatItGoesOn)
{
    show({file(u"a.txt"_qs, QByteArray("a line\n").repeated(2000))}, {760, 640});
    load();
    EXPECT_THAT(
        texts(),
        Contains(testing::ResultOf(
            [](const QString& text) { return text.endsWith(u"only its beginning is shown"_qs); }, true)));
}

TEST_F(QuickLookViewTest, AnythingElseHasItsFacts)
{
    show({file(u"song.ogg"_qs, "OggS")}, {460, 240});
    load();
    EXPECT_EQ(model->state(), QuickLookModel::Facts);
    EXPECT_THAT(texts(), Contains(model->typeName()));
    EXPECT_THAT(texts(), Contains(model->byteCount()));
    EXPECT_THAT(texts(), Contains(u"Changed "_qs + model->modified()));
}

TEST_F(QuickLookViewTest, ArrowsTurnOverAndTellWhereOneIs)
{
    show({file(u"a.txt"_qs, "one"), file(u"b.txt"_qs, "two")}, {760, 640});
    load();
    EXPECT_THAT(texts(), Contains(u"1 of 2"_qs));
    press(Qt::Key_Right);
    load();
    EXPECT_THAT(texts(), Contains(u"2 of 2"_qs));
    EXPECT_THAT(texts(), Contains(u"two"_qs));
    press(Qt::Key_Left);
    load();
    EXPECT_THAT(texts(), Contains(u"one"_qs));
}

TEST_F(QuickLookViewTest, ASingleFileIsNotCounted)
{
    show({file(u"a.txt"_qs, "one")}, {760, 640});
    load();
    EXPECT_THAT(texts(), Not(Contains(u"1 of 1"_qs)));
}

TEST_F(QuickLookViewTest, SpaceAndEscapeCloseItWhileItLoadsAndAfter)
{
    show({file(u"a.txt"_qs, "one"), file(u"b.txt"_qs, "two")}, {760, 640});
    QSignalSpy closed(view.get(), SIGNAL(closeRequested()));
    press(Qt::Key_Escape);
    EXPECT_EQ(closed.count(), 1);
    load();
    press(Qt::Key_Space);
    EXPECT_EQ(closed.count(), 2);
    // Also where a button has the keyboard.
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_EQ(closed.count(), 3);
}
