#pragma once

#include "Rest.h"
#include "ViewWindow.h"
#include "fakes/FakeMediaSource.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ManualMainQueue.h"
#include "fakes/ManualSerialQueue.h"
#include "fakes/TestModule.h"
#include "media/CoverImage.h"
#include "media/MediaModule.h"
#include "media/WaveformBars.h"
#include "platform/linux/images/QtImageCodec.h"
#include "settings/QuillbarSettings.h"
#include "shell/ModuleRegistry.h"
#include "shell/PanelState.h"
#include "support/UserDefaults.h"

#include <QBuffer>
#include <QPainter>
#include <QTemporaryDir>

#include <gmock/gmock.h>

/// The panel's view with the media module and one more in it, over a player that a test drives. What views do
/// over time they do in real time; the position in a track is that of the hand-driven clock.
class MediaViewsFixture : public testing::Test, protected ViewWindow
{
protected:
    MediaViewsFixture() : registry(makeModules()) {}
    ~MediaViewsFixture() override { view.reset(); }

    std::vector<std::unique_ptr<NotchModule>> makeModules()
    {
        std::vector<std::unique_ptr<NotchModule>> modules;
        modules.push_back(
            std::make_unique<MediaModule>(model, settings, workspace, codec, clock, mainQueue, covers));
        modules.push_back(std::make_unique<TestModule>(u"other"_qs));
        return modules;
    }
    NotchModule& module() { return *registry.module(u"media"_qs); }

    void launch()
    {
        sizeDrawer();
        showView(urlOf(u"NotchRootView"_qs),
                 {{u"panelState"_qs, QVariant::fromValue(&panelState)},
                  {u"registry"_qs, QVariant::fromValue(&registry)},
                  {u"settings"_qs, QVariant::fromValue(&settings)},
                  {u"nowPlaying"_qs, QVariant::fromValue(&model)},
                  {u"blended"_qs, true},
                  {u"notchInsetTop"_qs, 24},
                  {u"notchWidth"_qs, 200},
                  {u"expandedWidth"_qs, 600},
                  {u"expandedHeight"_qs, 240}},
                 {600, 240});
    }
    void open()
    {
        panelState.setActiveModuleID(u"media"_qs);
        panelState.setIsOpen(true);
        settle();
    }
    void close()
    {
        panelState.setIsOpen(false);
        settle();
    }
    void launchOpen()
    {
        launch();
        open();
    }
    void launchOpen(const NowPlaying& track)
    {
        play(track);
        launchOpen();
        decode();
        settle();
    }
    void settle() { Rest::wait(window); }

    /// As the program sizes its panel.
    void sizeDrawer()
    {
        panelState.setContentHeight(module().preferredContentHeight().value_or(216));
        window.resize(600, static_cast<int>(24 + panelState.contentHeight()));
    }
    void setCover(Settings::MediaArtPosition position, Settings::MediaArtSize size)
    {
        settings.setMediaArtPosition(position);
        settings.setMediaArtSize(size);
        sizeDrawer();
    }

    /// What the source delivers, with its cover decoded.
    void play(const std::optional<NowPlaying>& track)
    {
        source.emit(track);
        registry.notifyActivityChanged();
        decode();
    }
    void decode()
    {
        covers.runAll();
        palettes.runAll();
        mainQueue.runUntilIdle();
    }

    /// A picture file of four quarters, red, green, blue and white from the top left on.
    static QByteArray picture(int width, int height)
    {
        QImage image(width, height, QImage::Format_RGB32);
        QPainter painter(&image);
        const int x = width / 2;
        const int y = height / 2;
        painter.fillRect(0, 0, x, y, Qt::red);
        painter.fillRect(x, 0, width - x, y, Qt::green);
        painter.fillRect(0, y, x, height - y, Qt::blue);
        painter.fillRect(x, y, width - x, height - y, Qt::white);
        return file(image);
    }
    static QByteArray picture(const QColor& color)
    {
        QImage image(64, 64, QImage::Format_RGB32);
        image.fill(color);
        return file(image);
    }
    static QByteArray file(const QImage& image)
    {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "png");
        return bytes;
    }

    /// A track as most players tell it.
    NowPlaying track(const QString& title = u"Morning Tide"_qs)
    {
        NowPlaying track;
        track.title = title;
        track.artist = u"The Estuaries"_qs;
        track.album = u"Low Water"_qs;
        track.duration = 200;
        track.elapsed = 50;
        track.playbackRate = 1;
        track.timestamp = clock.now();
        track.sourceBundleID = u"player"_qs;
        track.canControlShuffleRepeat = true;
        track.trackID = u"id of "_qs + title;
        return track;
    }

    QList<QQuickItem*> ofType(const char* name)
    {
        return visibleItems([&](QQuickItem* item) { return item->inherits(name); });
    }

    /// The one in sight whose QML type is of that file.
    QQuickItem* ofFile(const QString& name)
    {
        const auto found = visibleItems([&](QQuickItem* item) {
            return QString::fromLatin1(item->metaObject()->className()).startsWith(name + u"_QML"_qs);
        });
        return found.size() == 1 ? found.first() : nullptr;
    }

    static QRectF place(const QQuickItem* item) { return item->mapRectToScene(QRectF({}, item->size())); }

    QQuickItem* scrubber() { return ofFile(u"MediaScrubber"_qs); }
    QQuickItem* coverView() { return ofFile(u"CoverView"_qs); }

    /// In the window, at that part of the scrubber's line.
    QPoint onTrack(double fraction)
    {
        auto* item = scrubber();
        return item->mapToScene(QPointF(item->width() * fraction, 11)).toPoint();
    }

    QColor at(const QPoint& point) { return window.grabWindow().pixelColor(point); }

    /// The cover in the drawer, once it stands still.
    CoverImage* cover()
    {
        for (auto* item : coverView()->childItems()) {
            auto* image = qobject_cast<CoverImage*>(item);
            if (image && image->isVisible() && image->objectName() != u"hover")
                return image;
        }
        return nullptr;
    }

    QList<double> bars()
    {
        const auto found = ofType("WaveformBars");
        return found.size() == 1 ? qobject_cast<WaveformBars*>(found.first())->heights() : QList<double>();
    }

    QQuickItem* glow() { return view->findChild<QQuickItem*>(u"glow"_qs); }

    QStringList controlNames()
    {
        return ItemsInSight::property("name", visibleItems([](QQuickItem* item) {
                                          return ItemsInSight::isControl(item) &&
                                                 !item->property("iconSystemName").isValid();
                                      }));
    }
    QQuickItem* control(const QString& name)
    {
        const auto found = ItemsInSight::controls(window.contentItem(), name);
        return found.isEmpty() ? nullptr : found.last();
    }
    QStringList symbols() { return ItemsInSight::property("name", ofType("Symbol")); }
    void tap(const QString& name)
    {
        auto* item = control(name);
        ASSERT_NE(item, nullptr) << qUtf8Printable(name);
        QTest::mouseClick(&window, Qt::LeftButton, {}, ItemsInSight::middleOf(item));
    }
    void hover(const QString& name)
    {
        auto* item = control(name);
        ASSERT_NE(item, nullptr) << qUtf8Printable(name);
        QTest::mouseMove(&window, ItemsInSight::middleOf(item));
    }

    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(u"defaults.json"_qs)};
    QuillbarSettings settings{defaults};
    ManualClock clock;
    ManualMainQueue mainQueue{clock};
    FakeWorkspace workspace;
    QtImageCodec codec;
    ManualSerialQueue covers{u"covers"_qs};
    ManualSerialQueue palettes{u"palettes"_qs};
    FakeMediaSource source;
    NowPlayingModel model{source, mainQueue, palettes, codec};
    PanelState panelState;
    ModuleRegistry registry;
};
