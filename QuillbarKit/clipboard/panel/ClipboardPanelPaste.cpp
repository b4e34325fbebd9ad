// How the clipboard panel pastes.

#include "clipboard/history/ClipboardWatcher.h"
#include "clipboard/panel/AutoPaster.h"
#include "clipboard/panel/ClipboardPanelController.h"
#include "platform/Pasteboard.h"
#include "settings/QuillbarSettings.h"
#include "support/MainQueue.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace {
constexpr double stepSeconds = 0.15;
/// From the other program's first look at one step's contents to the next step's, for its further looks.
constexpr double readSeconds = 0.05;
/// How long it has for that first look; it may be busy, or not take what is pasted at all.
constexpr double readPatienceSeconds = 1.0;
} // namespace

void ClipboardPanelController::closeAndPaste()
{
    animateOutAndClose([this] {
        m_services.model.watcher.afterCopy([self = QPointer(this)] {
            if (self)
                self->performAutoPasteIfEnabled();
        });
    });
}

void ClipboardPanelController::performAutoPasteIfEnabled()
{
    if (!m_services.model.settings.autoPasteEnabled())
        return;
    if (AutoPaster::isTrusted(m_services.keystrokes))
        AutoPaster::paste(m_services.keystrokes, m_priorApp);
    else if (!std::exchange(m_didPromptForAccessibility, true))
        AutoPaster::promptForAccessibility(m_services.keystrokes);
}

void ClipboardPanelController::performSequentialPaste(const QList<Clip>& clips)
{
    if (!clips.isEmpty())
        performPasteStep(clips, 0, m_services.model.mainQueue.monotonicSeconds());
}

void ClipboardPanelController::performPasteStep(const QList<Clip>& clips, qsizetype index, double beginning)
{
    auto& watcher = m_services.model.watcher;
    watcher.copy(clips[index]);
    watcher.afterCopy([self = QPointer(this), clips, index, beginning] {
        if (self)
            self->pressPasteOfStep(clips, index, beginning);
    });
}

void ClipboardPanelController::pressPasteOfStep(const QList<Clip>& clips, qsizetype index, double beginning)
{
    const auto next = index + 1;
    const auto goOn = [self = QPointer(this), clips, next, beginning] {
        if (!self || next >= clips.size())
            return;
        auto& queue = self->m_services.model.mainQueue;
        const double now = queue.monotonicSeconds();
        const double due = std::max(beginning + static_cast<double>(next) * stepSeconds, now + readSeconds);
        queue.asyncAfter(due - now, WorkItem::make([self, clips, next, beginning] {
                             if (self)
                                 self->performPasteStep(clips, next, beginning);
                         }));
    };
    // The contents stay until the keystroke has been sent and the other program has read them.
    AutoPaster::paste(m_services.keystrokes, m_priorApp, [self = QPointer(this), goOn](bool isPressed) {
        if (self && isPressed)
            self->whenReadOrLater(goOn);
        else
            goOn();
    });
}

void ClipboardPanelController::whenReadOrLater(std::function<void()> then)
{
    // Whichever comes first.
    const auto run = [once = WorkItem::make(std::move(then))] {
        once->perform();
        once->cancel();
    };
    m_services.pasteboard.whenRead(run);
    m_services.model.mainQueue.asyncAfter(readPatienceSeconds, WorkItem::make(run));
}
