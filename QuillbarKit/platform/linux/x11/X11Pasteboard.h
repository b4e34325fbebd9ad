#pragma once

#include "platform/Pasteboard.h"
#include "platform/linux/x11/X11PasteboardOptions.h"
#include "platform/linux/x11/X11PasteboardWorker.h"
#include "support/ThreadSerialQueue.h"

#include <QDateTime>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>

class ImageCodec;
class MainQueue;

/// The CLIPBOARD selection of the X server. PRIMARY, the selection of the middle mouse button, is never
/// touched.
///
/// Whenever another program takes the clipboard, a thread of our own fetches what it offers; an image is then
/// made a PNG on another one, so that pasting from us goes on meanwhile. Only when all of it is complete do
/// the contents change, so nothing here ever waits. An owner that goes without another one in its place
/// leaves the contents for X11PasteboardOptions::emptyAfter.
class X11Pasteboard final : public Pasteboard
{
public:
    using Frontmost = std::function<std::optional<QString>()>;

    /// Connects to the display of $DISPLAY; without one the contents are what we write ourselves. What is on
    /// the clipboard already is fetched like any other copy. `codec` and `queue` must outlive it.
    /// `frontmost`, the program in front, is asked on the main thread.
    X11Pasteboard(const ImageCodec& codec, MainQueue& queue, Frontmost frontmost,
                  const X11PasteboardOptions& options = {});
    /// Hands our contents over to the session's clipboard manager: see X11PasteboardOptions::handOver. Waits
    /// for the one image, if any, that is being made a PNG just then, as long as `codec` takes for it.
    ~X11Pasteboard() override;

    qint64 changeCount() const override { return m_changeCount; }
    const PasteboardContents& contents() const override { return m_contents; }
    void write(PasteboardContents contents) override;
    void whenRead(std::function<void()> then) override;
    void setChangeHandler(std::function<void()> handler) override { m_handler = std::move(handler); }

private:
    using Change = X11PasteboardWorker::Change;
    using Fetched = X11PasteboardWorker::Fetched;

    void post(std::function<void(X11Pasteboard&)> work);
    void note(Change change);
    void deliver(Fetched fetched);
    void noteRead();
    void deliverNothing(Fetched fetched);
    void postContents(Fetched fetched, quint64 number);
    void accept(Fetched& fetched, quint64 number);
    void emptyLater(const Fetched& fetched);
    void replace(PasteboardContents contents);
    void release(PasteboardContents contents);

    const ImageCodec& m_codec;
    MainQueue& m_queue;
    const Frontmost m_frontmost;
    const double m_emptyAfterSeconds;
    /// From where no earlier run of the program has come: a count is part of what is saved.
    qint64 m_changeCount = QDateTime::currentMSecsSinceEpoch();
    PasteboardContents m_contents;
    std::function<void()> m_handler;
    std::function<void()> m_whenRead;
    /// So that the thread tells of one read and not of all.
    std::atomic<bool> m_isReadAwaited = false;

    quint64 m_writes = 0;
    Change m_lastChange;
    /// What is fetched is numbered, since a small text overtakes a large image that was copied before it.
    std::atomic<quint64> m_lastFetched{0};
    quint64 m_lastAccepted = 0;

    /// Empties itself when we go; main thread only.
    std::shared_ptr<X11Pasteboard*> m_self = std::make_shared<X11Pasteboard*>(this);
    ThreadSerialQueue m_background;
    X11PasteboardWorker m_worker; ///< Last: it uses all of the above.
};
