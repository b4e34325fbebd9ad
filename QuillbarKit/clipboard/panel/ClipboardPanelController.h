#pragma once

#include "clipboard/panel/ClipboardPanelModel.h"
#include "clipboard/panel/ClipboardPanelWindow.h"
#include "platform/Keystrokes.h"
#include "platform/Screens.h"
#include "support/PrivateTemporaryFolder.h"
#include "support/ScreenRect.h"

#include <QList>
#include <QObject>
#include <QStringList>
#include <QUuid>

#include <functional>
#include <limits>
#include <memory>
#include <optional>

class Clock;
class ImageCodec;
class Pasteboard;
class QQuickItem;
class QuickLookModel;
class SerialQueue;
class WindowServer;

/// Shows and hides the floating clipboard panel, turns what its model asks for into pasteboard contents and
/// keystrokes in the program that was in front before, and handles the panel's keys. Main thread only.
class ClipboardPanelController : public QObject
{
    Q_OBJECT

public:
    /// All of it outlives the controller.
    struct Services
    {
        ClipboardPanelModel::Services model;
        LinkPreviewService::Fetcher linkPreviewFetcher;
        Pasteboard& pasteboard;
        Keystrokes& keystrokes;
        const Screens& screens;
        WindowServer& windowServer;
        const Clock& clock;
        /// Where the panel opens without an anchor; none while there is no display.
        std::function<std::optional<Screen>()> preferredScreen;
        std::function<bool()> isOptionHeld;
        /// Makes a view of that model, with the signals closeRequested, openSettingsRequested,
        /// aboutRequested and quitRequested, the function focusSearch, and the properties blended (set:
        /// whether what lies beneath shows through), keysAreTaken (read: whether Return and Space press
        /// something else than the list's selection) and keyboardIsHeld (read: whether an editor, a name
        /// field, a menu or a question has the keyboard, and so every key).
        std::function<QQuickItem*(ClipboardPanelModel&)> makeView;
        /// Makes a view of a preview, with the signal closeRequested.
        std::function<QQuickItem*(QuickLookModel&)> makeQuickLookView;
        /// Where previews are read and decoded.
        std::shared_ptr<SerialQueue> quickLookQueue;
        const ImageCodec& imageCodec;
        /// The system's, in which the images to preview get a folder.
        QString temporaryDirectory;
    };

    explicit ClipboardPanelController(Services services, QObject* parent = nullptr);
    ~ClipboardPanelController() override;

    std::function<void()> onOpenSettings;
    std::function<void()> onAbout;
    std::function<void()> onQuit;

    /// Opens the panel anew, whatever was open, below the anchor or at the top of the screen. Does nothing
    /// without a display. The panel has the keyboard on return.
    void show(const std::optional<ScreenRect>& anchor);

    /// Closes the panel over 0.22 seconds and then calls `then`; at once when there is none, or one that is
    /// closing already.
    void animateOutAndClose(std::function<void()> then = {});

    /// Whether the panel is there and not on its way out.
    bool isOpen() const { return m_window && !m_isClosing; }

    /// How long ago the panel was last closed by losing the keyboard, in seconds; infinite for never.
    double secondsSinceResignClose() const;

    /// Null unless the panel is there.
    ClipboardPanelModel* model() const { return m_model; }
    ClipboardPanelWindow* window() const { return m_window.get(); }

    /// Whether Space means a preview now: the panel has the keyboard, nobody types in it, and the selected
    /// clip is an image or files.
    bool canQuickLookSelection() const;
    /// Opens the preview of the selected clip, or closes the one that is open, after which the panel has the
    /// keyboard. Does nothing for a clip of which there is nothing to show.
    void toggleQuickLook();
    /// Whether a preview is there. Then the panel may lose the keyboard to it.
    bool quickLookActive() const { return m_quickLookActive; }
    /// The files of the preview.
    const QStringList& previewURLs() const { return m_previewURLs; }
    /// Null unless a preview is there.
    ClipboardPanelWindow* quickLookWindow() const { return m_quickLookWindow.get(); }
    QuickLookModel* quickLookModel() const { return m_quickLookModel; }

private Q_SLOTS:
    void closeRequested();
    void openSettingsRequested();
    void aboutRequested();
    void quitRequested();
    void endQuickLook();

private:
    void discardWindow();
    void makeModel();
    void makeView();
    void windowDidBecomeKey();
    void windowDidResignKey();
    bool handleKey(const QKeyEvent& event);
    void closeAndPaste();
    void performAutoPasteIfEnabled();
    void performSequentialPaste(const QList<Clip>& clips);
    /// Calls `then` once another program has begun to read what we copied last, or has not for long enough.
    void whenReadOrLater(std::function<void()> then);
    void performPasteStep(const QList<Clip>& clips, qsizetype index, double beginning);
    void pressPasteOfStep(const QList<Clip>& clips, qsizetype index, double beginning);

    bool prepareQuickLookItems();
    std::optional<QString> writeTempImage(const QByteArray& data, const QUuid& uuid);
    void showQuickLook();
    void fitQuickLook();
    void revealQuickLookInTime();
    void quickLookDidResignKey();
    void closeQuickLook();
    void cleanupTempFiles();

    static constexpr double distantPast = -std::numeric_limits<double>::infinity();

    Services m_services;
    bool m_isClosing = false;
    /// Set once the window has become key: only then does losing it close the panel.
    bool m_armed = false;
    // By the monotonic clock.
    double m_openedAt = distantPast;
    double m_lastResignClose = distantPast;
    std::optional<PriorWindow> m_priorApp;
    bool m_didPromptForAccessibility = false;
    std::unique_ptr<ClipboardPanelWindow> m_window;
    // The window's.
    ClipboardPanelModel* m_model = nullptr;
    QQuickItem* m_view = nullptr;
    /// The screen that the panel is on.
    ScreenRect m_screenFrame;
    bool m_quickLookActive = false;
    QStringList m_previewURLs;
    PrivateTemporaryFolder m_tempDir;
    std::unique_ptr<ClipboardPanelWindow> m_quickLookWindow;
    // The preview window's.
    QuickLookModel* m_quickLookModel = nullptr;
};
