#include "platform/linux/x11/X11Pasteboard.h"

#include "platform/ImageCodec.h"
#include "platform/linux/LargeMemory.h"
#include "support/MainQueue.h"
#include "support/WorkItem.h"

#include <chrono>
#include <malloc.h>
#include <utility>

namespace {
// Less goes back to the heap in no time.
constexpr qsizetype bytesWorthTrimming = qsizetype{8} << 20;

qsizetype sizeOf(const PasteboardContents& contents)
{
    qsizetype size = contents.string ? contents.string->size() * qsizetype{sizeof(QChar)} : 0;
    size += contents.png ? contents.png->size() : 0;
    for (const auto& [type, bytes] : contents.data)
        size += bytes.size();
    return size;
}
} // namespace

X11Pasteboard::X11Pasteboard(const ImageCodec& codec, MainQueue& queue, Frontmost frontmost,
                             const X11PasteboardOptions& options)
    : m_codec(codec), m_queue(queue), m_frontmost(std::move(frontmost)),
      m_emptyAfterSeconds(std::chrono::duration<double>(options.emptyAfter).count()),
      m_background(QStringLiteral("pasteboard-image")),
      m_worker(
          options, [this](Change change) { note(std::move(change)); },
          [this](Fetched fetched) { deliver(std::move(fetched)); }, [this] { noteRead(); })
{}

X11Pasteboard::~X11Pasteboard() = default;

void X11Pasteboard::write(PasteboardContents contents)
{
    ++m_writes;
    m_worker.write(contents);
    replace(std::move(contents));
}

void X11Pasteboard::whenRead(std::function<void()> then)
{
    m_whenRead = std::move(then);
    m_isReadAwaited = true;
}

/// On the worker's thread.
void X11Pasteboard::noteRead()
{
    if (!m_isReadAwaited.exchange(false))
        return;
    post([](X11Pasteboard& self) {
        if (const auto then = std::exchange(self.m_whenRead, nullptr))
            then();
    });
}

/// Has the main thread do it, unless we are gone by then. On any thread of ours.
void X11Pasteboard::post(std::function<void(X11Pasteboard&)> work)
{
    m_queue.async([self = std::weak_ptr(m_self), work = std::move(work)] {
        if (const auto alive = self.lock())
            work(**alive);
    });
}

/// On the worker's thread.
void X11Pasteboard::note(Change change)
{
    post([change = std::move(change)](X11Pasteboard& self) {
        change->frontmost = self.m_frontmost();
        self.m_lastChange = change;
    });
}

/// On the worker's thread.
void X11Pasteboard::deliver(Fetched fetched)
{
    if (!fetched.change->hasOwner) {
        deliverNothing(std::move(fetched));
        return;
    }
    const quint64 number = ++m_lastFetched;
    if (fetched.image.isEmpty()) {
        postContents(std::move(fetched), number);
        return;
    }
    m_background.async([this, number, fetched = std::move(fetched)]() mutable {
        if (m_lastFetched != number)
            return; // Something newer has been copied.
        fetched.contents.png = m_codec.png(fetched.image);
        LargeMemory::release(fetched.image);
        postContents(std::move(fetched), number);
    });
}

/// On the worker's thread. Gets in line behind an image that is under way: it was copied before, and is no
/// less wanted because the program that copied it has gone.
void X11Pasteboard::deliverNothing(Fetched fetched)
{
    m_background.async([this, fetched = std::move(fetched)] {
        post([fetched](X11Pasteboard& self) { self.emptyLater(fetched); });
    });
}

void X11Pasteboard::emptyLater(const Fetched& fetched)
{
    m_queue.asyncAfter(
        m_emptyAfterSeconds,
        WorkItem::make([self = std::weak_ptr(m_self), change = fetched.change, writes = fetched.writes] {
            const auto alive = self.lock();
            // Somebody may have copied since then, and we may have.
            if (alive && (*alive)->m_lastChange == change && (*alive)->m_writes == writes)
                (*alive)->replace({});
        }));
}

/// On either thread.
void X11Pasteboard::postContents(Fetched fetched, quint64 number)
{
    post([number, fetched = std::make_shared<Fetched>(std::move(fetched))](X11Pasteboard& self) {
        self.accept(*fetched, number);
    });
}

void X11Pasteboard::accept(Fetched& fetched, quint64 number)
{
    // What we have written since then came after it.
    if (fetched.writes != m_writes || number <= m_lastAccepted) {
        release(std::move(fetched.contents));
        return;
    }
    m_lastAccepted = number;
    fetched.contents.copiedIn = fetched.change->frontmost;
    replace(std::move(fetched.contents));
}

void X11Pasteboard::replace(PasteboardContents contents)
{
    release(std::exchange(m_contents, std::move(contents)));
    ++m_changeCount;
    // The handler may set another one.
    if (const auto handler = m_handler)
        handler();
}

/// Large contents end where nobody waits.
void X11Pasteboard::release(PasteboardContents contents)
{
    if (sizeOf(contents) < bytesWorthTrimming)
        return;
    m_background.async([old = std::make_shared<PasteboardContents>(std::move(contents))] {
        if (old->string)
            LargeMemory::release(*old->string);
        if (old->png)
            LargeMemory::release(*old->png);
        for (auto& [type, bytes] : old->data)
            LargeMemory::release(bytes);
        malloc_trim(0);
    });
}
