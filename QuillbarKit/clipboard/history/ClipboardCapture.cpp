// How what is on the pasteboard becomes a clip.

#include "clipboard/detection/ClipContentDetector.h"
#include "clipboard/history/ClipOrder.h"
#include "clipboard/history/ClipboardHistoryFile.h"
#include "clipboard/history/ClipboardWatcher.h"
#include "clipboard/history/PasteboardConcealment.h"
#include "platform/Pasteboard.h"
#include "platform/Workspace.h"
#include "support/Clock.h"
#include "support/PrivateFile.h"
#include "support/RepeatingTimer.h"

#include <QHash>

#include <algorithm>
#include <utility>

namespace {
constexpr double pollPeriodSeconds = 0.7;

/// Only tells apart what has the same change count.
qint64 discriminator(const Clip& clip)
{
    switch (clip.kind) {
    case Clip::Kind::Text:
        return static_cast<qint64>(qHash(clip.text));
    case Clip::Kind::Image:
        return clip.imageData->size();
    case Clip::Kind::File:
        return static_cast<qint64>(qHash(clip.filePaths.join(u':')));
    }
    Q_UNREACHABLE();
}

QLatin1String word(Clip::Kind kind)
{
    switch (kind) {
    case Clip::Kind::Text:
        return QLatin1String("text");
    case Clip::Kind::Image:
        return QLatin1String("image");
    case Clip::Kind::File:
        return QLatin1String("file");
    }
    Q_UNREACHABLE();
}

/// As a clip without identity; none when there is nothing to make one of. A copied file that also carries its
/// name as text is a file, and a copied picture that also carries text is a text.
std::optional<Clip> clipOf(const PasteboardContents& contents)
{
    Clip clip;
    if (!contents.filePaths.isEmpty()) {
        clip.kind = Clip::Kind::File;
        clip.filePaths = contents.filePaths;
    } else if (contents.string && !contents.string->trimmed().isEmpty()) {
        clip.kind = Clip::Kind::Text;
        clip.text = *contents.string;
        clip.detectedKind = ClipContentDetector::detect(clip.text);
        for (const auto& type : {PasteboardType::rtf, PasteboardType::html}) {
            if (const auto found = contents.data.find(type); found != contents.data.end())
                clip.richData.emplace(type, ClipData(found->second));
        }
    } else if (contents.png) {
        clip.kind = Clip::Kind::Image;
        clip.imageData.emplace(*contents.png);
    } else {
        return {};
    }
    return clip;
}
} // namespace

void ClipboardWatcher::start()
{
    m_persistenceActive = true;
    if (auto bytes = PrivateFile::read(m_storePath))
        loadStore(std::move(*bytes));
    m_timer = std::make_unique<RepeatingTimer>(m_mainQueue, pollPeriodSeconds, [this] { tick(); });
    if (m_enabled) {
        ingestPasteboard();
        m_lastChangeCount = m_pasteboard.changeCount();
    }
    // A count that stands still needs no look: the pasteboard tells when it grows.
    m_timer->doze();
}

void ClipboardWatcher::stop()
{
    m_timer.reset();
}

void ClipboardWatcher::loadStore(QByteArray bytes)
{
    auto store = ClipboardHistoryFile::read(std::move(bytes));
    if (!store)
        return;
    ClipOrder::resort(store->clips);
    ClipOrder::trim(store->clips, m_maxItems);
    // Both before anybody hears of one of them: what a board names must be found.
    m_clips = std::move(store->clips);
    m_boards = std::move(store->boards);
    Q_EMIT boardsChanged();
    Q_EMIT clipsChanged();
}

bool ClipboardWatcher::isExcluded(const std::optional<QString>& bundleID) const
{
    return bundleID && m_excludedBundleIDs.contains(*bundleID);
}

void ClipboardWatcher::tick()
{
    m_timer->doze();
    if (!m_enabled)
        return;
    const auto changeCount = m_pasteboard.changeCount();
    if (changeCount == m_lastChangeCount)
        return;
    // Before the look, so that what is refused is not looked at again.
    m_lastChangeCount = changeCount;
    ingestPasteboard();
}

bool ClipboardWatcher::ingestPasteboard()
{
    const auto& contents = m_pasteboard.contents();
    if (isConcealed(contents.types))
        return false;
    const auto source = m_workspace.frontmostApplication();
    // By now the user may have turned to another program than that in which this was copied.
    if (isExcluded(source) || isExcluded(contents.copiedIn))
        return false;
    auto clip = clipOf(contents);
    if (!clip)
        return false;
    clip->sourceBundleID = source;
    return ingestClip(std::move(*clip), m_pasteboard.changeCount());
}

bool ClipboardWatcher::ingestClip(Clip clip, qint64 changeCount)
{
    const auto repeats = [&](const Clip& each) { return each.hasSameContentAs(clip); };
    clip.date = m_clock.now();
    auto clips = m_clips;
    const auto found = std::find_if(clips.begin(), clips.end(), repeats);
    const bool isNew = found == clips.end();
    if (isNew) {
        clip.id = QStringLiteral("%1-%2-%3").arg(changeCount).arg(word(clip.kind)).arg(discriminator(clip));
        clip.uuid = QUuid::createUuid();
    } else {
        clip.id = found->id;
        clip.uuid = found->uuid;
        clip.pinned = found->pinned;
        clips.removeIf(repeats);
    }
    clips.append(std::move(clip));
    ClipOrder::resort(clips);
    if (isNew)
        ClipOrder::trim(clips, m_maxItems);
    publishClips(std::move(clips));
    save();
    return isNew;
}
