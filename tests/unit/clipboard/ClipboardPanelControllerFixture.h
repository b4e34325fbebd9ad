#pragma once

#include "clipboard/history/ClipThumbnailCache.h"
#include "clipboard/panel/ClipboardPanelController.h"
#include "clipboard/previews/QuickLookModel.h"
#include "clipboard/snippets/SnippetStore.h"
#include "fakes/FakeKeystrokes.h"
#include "fakes/FakePanelView.h"
#include "fakes/FakeQuickLookView.h"
#include "fakes/FakeScreens.h"
#include "fakes/FakeWindowServer.h"
#include "fakes/ManualSerialQueue.h"
#include "settings/QuillbarSettings.h"
#include "support/UserDefaults.h"
#include "unit/clipboard/ClipboardWatcherFixture.h"

#include <QKeyEvent>
#include <QPointer>

/// A controller over fakes, with a program in front that the panel pastes into.
class ClipboardPanelControllerFixture : public ClipboardWatcherFixture
{
protected:
    static constexpr PriorWindow editor{7};

    ClipboardPanelControllerFixture()
    {
        screens.setSingle({0, 0, 1280, 800});
        keystrokes.front = editor;
        watcher->start();
    }

    /// Opens the panel, which gets the keyboard, and lets `seconds` go by.
    void open(double seconds = 1)
    {
        controller.show({});
        setKey(true);
        queue.advance(seconds);
    }
    void setKey(bool isKey) { Q_EMIT windowServer.isKeyChanged(controller.window(), isKey); }
    void finishClosing() { queue.advance(0.22); }
    /// Whether the panel kept the key from what has the focus in it.
    bool press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        return controller.window()->keyMonitor(QKeyEvent(QEvent::KeyPress, key, modifiers));
    }
    void copyThree()
    {
        for (const auto& each : {u"one"_qs, u"two"_qs, u"three"_qs})
            copied(each);
    }
    QStringList onPasteboard() const
    {
        QStringList strings;
        for (const auto& contents : pasteboard.written)
            strings.append(contents.string.value_or(QString()));
        return strings;
    }

    ClipboardPanelController::Services services()
    {
        return {
            {*watcher, snippets, settings, thumbnails, queue},
            [](const QUrl&) -> QCoro::Task<LinkPreview> { co_return LinkPreview(); },
            pasteboard,
            keystrokes,
            screens,
            windowServer,
            clock,
            [this] { return screens.mainScreen(); },
            [this] { return isOptionHeld; },
            [this](ClipboardPanelModel&) { return view = new FakePanelView; },
            [this](QuickLookModel&) { return quickLookView = new FakeQuickLookView; },
            quickLookQueue,
            imageCodec,
            temporary,
        };
    }
    /// Another one than the fixture's, for a test that ends it.
    std::unique_ptr<ClipboardPanelController> makeController()
    {
        return std::make_unique<ClipboardPanelController>(services());
    }

    FakeKeystrokes keystrokes;
    FakeScreens screens;
    FakeWindowServer windowServer;
    UserDefaults defaults{folder.filePath(QStringLiteral("defaults.json"))};
    QuillbarSettings settings{defaults};
    SnippetStore snippets{folder.filePath(QStringLiteral("snippets.json")), clock};
    ClipThumbnailCache thumbnails{imageCodec};
    bool isOptionHeld = false;
    FakePanelView* view = nullptr;
    /// Null unless a preview is there.
    QPointer<FakeQuickLookView> quickLookView;
    std::shared_ptr<ManualSerialQueue> quickLookQueue =
        std::make_shared<ManualSerialQueue>(QStringLiteral("quick-look"));
    /// Stands where the system's temporary directory does.
    const QString temporary = folder.filePath(QStringLiteral("tmp"));
    ClipboardPanelController controller{services()};
};
