#include "clipboard/history/ClipboardWatcher.h"

#include "clipboard/detection/ClipContentDetector.h"
#include "clipboard/history/ClipOrder.h"
#include "clipboard/history/ClipboardHistoryFile.h"
#include "platform/ImageCodec.h"
#include "platform/Pasteboard.h"
#include "support/Clock.h"
#include "support/MainQueue.h"
#include "support/PrivateFile.h"
#include "support/RepeatingTimer.h"
#include "support/SerialQueue.h"

#include <QPointer>

#include <algorithm>
#include <utility>

ClipboardWatcher::ClipboardWatcher(Pasteboard& pasteboard, const Workspace& workspace,
                                   const ImageCodec& imageCodec, const Clock& clock, MainQueue& mainQueue,
                                   std::shared_ptr<SerialQueue> imageQueue, QString storePath,
                                   QObject* parent)
    : QObject(parent), m_pasteboard(pasteboard), m_workspace(workspace), m_imageCodec(imageCodec),
      m_clock(clock), m_mainQueue(mainQueue), m_imageQueue(std::move(imageQueue)),
      m_storePath(std::move(storePath)), m_lastChangeCount(pasteboard.changeCount())
{
    m_pasteboard.setChangeHandler([this] { look(); });
}

ClipboardWatcher::~ClipboardWatcher()
{
    m_pasteboard.setChangeHandler({});
}

void ClipboardWatcher::setEnabled(bool enabled)
{
    // What was copied meanwhile has its turn now.
    if (enabled && !m_enabled)
        look();
    m_enabled = enabled;
}

void ClipboardWatcher::look()
{
    if (m_timer)
        m_timer->wake();
}

void ClipboardWatcher::publishClips(QList<Clip> clips)
{
    m_clips = std::move(clips);
    Q_EMIT clipsChanged();
}

void ClipboardWatcher::publishBoards(QList<Pinboard> boards)
{
    m_boards = std::move(boards);
    Q_EMIT boardsChanged();
}

qsizetype ClipboardWatcher::indexOf(const QUuid& boardID) const
{
    const auto found = std::find_if(m_boards.begin(), m_boards.end(),
                                    [&](const Pinboard& board) { return board.id == boardID; });
    return found == m_boards.end() ? -1 : found - m_boards.begin();
}

void ClipboardWatcher::setMaxItems(int maxItems)
{
    m_maxItems = maxItems;
    auto clips = m_clips;
    ClipOrder::trim(clips, m_maxItems);
    publishClips(std::move(clips));
    save();
}

Pinboard ClipboardWatcher::addBoard(const QString& name)
{
    Pinboard board{QUuid::createUuid(), name, {}, m_clock.now()};
    auto boards = m_boards;
    boards.append(board);
    publishBoards(std::move(boards));
    save();
    return board;
}

void ClipboardWatcher::renameBoard(const QUuid& id, const QString& name)
{
    const auto index = indexOf(id);
    if (index < 0)
        return;
    auto boards = m_boards;
    boards[index].name = name;
    publishBoards(std::move(boards));
    save();
}

void ClipboardWatcher::deleteBoard(const QUuid& id)
{
    auto boards = m_boards;
    boards.removeIf([&](const Pinboard& board) { return board.id == id; });
    publishBoards(std::move(boards));
    save();
}

void ClipboardWatcher::addClip(const QUuid& clipUUID, const QUuid& boardID)
{
    const auto index = indexOf(boardID);
    if (index < 0 || m_boards[index].clipUUIDs.contains(clipUUID))
        return;
    auto boards = m_boards;
    boards[index].clipUUIDs.append(clipUUID);
    publishBoards(std::move(boards));
    save();
}

void ClipboardWatcher::removeClip(const QUuid& clipUUID, const QUuid& boardID)
{
    const auto index = indexOf(boardID);
    if (index < 0)
        return;
    auto boards = m_boards;
    boards[index].clipUUIDs.removeAll(clipUUID);
    publishBoards(std::move(boards));
    save();
}

QList<Clip> ClipboardWatcher::clips(const QUuid& boardID) const
{
    const auto index = indexOf(boardID);
    if (index < 0)
        return {};
    QList<Clip> members;
    for (const QUuid& uuid : m_boards[index].clipUUIDs) {
        const auto found =
            std::find_if(m_clips.begin(), m_clips.end(), [&](const Clip& clip) { return clip.uuid == uuid; });
        if (found != m_clips.end())
            members.append(*found);
    }
    return members;
}

void ClipboardWatcher::deleteClip(const Clip& clip)
{
    // The clip may be one of the list's own.
    const auto id = clip.id;
    const auto uuid = clip.uuid;
    auto clips = m_clips;
    clips.removeIf([&](const Clip& each) { return each.id == id; });
    auto boards = m_boards;
    for (auto& board : boards)
        board.clipUUIDs.removeAll(uuid);
    publishClips(std::move(clips));
    publishBoards(std::move(boards));
    save();
}

void ClipboardWatcher::togglePin(const Clip& clip)
{
    auto clips = m_clips;
    const auto found =
        std::find_if(clips.begin(), clips.end(), [&](const Clip& each) { return each.id == clip.id; });
    if (found == clips.end())
        return;
    found->pinned = !found->pinned;
    ClipOrder::resort(clips);
    publishClips(std::move(clips));
    save();
}

void ClipboardWatcher::clearUnpinned()
{
    auto clips = m_clips;
    clips.removeIf([](const Clip& clip) { return !clip.pinned; });
    publishClips(std::move(clips));
    save();
}

void ClipboardWatcher::clear()
{
    publishClips({});
    save();
}

void ClipboardWatcher::updateText(const Clip& clip, const QString& text)
{
    auto clips = m_clips;
    const auto found =
        std::find_if(clips.begin(), clips.end(), [&](const Clip& each) { return each.uuid == clip.uuid; });
    if (found == clips.end() || found->kind != Clip::Kind::Text)
        return;
    found->text = text;
    found->detectedKind = ClipContentDetector::detect(text);
    found->richData.clear();
    found->date = m_clock.now();
    ClipOrder::resort(clips);
    publishClips(std::move(clips));
    save();
}

void ClipboardWatcher::replaceForSync(QList<Clip> clips)
{
    ClipOrder::resort(clips);
    ClipOrder::trim(clips, m_maxItems);
    publishClips(std::move(clips));
    save();
}

void ClipboardWatcher::replaceForSync(QList<Pinboard> boards)
{
    publishBoards(std::move(boards));
    save();
}

void ClipboardWatcher::copy(const Clip& clip)
{
    write(clip, false);
}

void ClipboardWatcher::copyPlain(const Clip& clip)
{
    write(clip, true);
}

void ClipboardWatcher::afterCopy(std::function<void()> action)
{
    if (m_isDecoding)
        m_afterCopy.push_back(std::move(action));
    else
        action();
}

void ClipboardWatcher::write(const Clip& clip, bool plain)
{
    const auto id = clip.id;
    ++m_copies;
    if (clip.kind == Clip::Kind::Image) {
        writeDecoded(clip.imageData ? clip.imageData->bytes() : QByteArray());
    } else {
        PasteboardContents contents;
        if (clip.kind == Clip::Kind::File) {
            contents.filePaths = clip.filePaths;
        } else {
            contents.string = clip.text;
            if (!plain) {
                for (const auto& [type, data] : clip.richData)
                    contents.data.emplace(type, data.bytes());
            }
        }
        put(std::move(contents));
    }

    auto clips = m_clips;
    const auto found =
        std::find_if(clips.begin(), clips.end(), [&](const Clip& each) { return each.id == id; });
    if (found == clips.end())
        return;
    found->date = m_clock.now();
    ClipOrder::resort(clips);
    publishClips(std::move(clips));
    save();
}

void ClipboardWatcher::writeDecoded(const QByteArray& image)
{
    m_isDecoding = true;
    m_imageQueue->async([self = QPointer(this), &codec = m_imageCodec, &mainQueue = m_mainQueue, image,
                         number = m_copies, changeCount = m_pasteboard.changeCount()] {
        PasteboardContents contents;
        contents.png = codec.png(image);
        // A PNG file that is whole has been taken for a picture unseen.
        if (contents.png && !codec.thumbnail(*contents.png, 1))
            contents.png.reset();
        mainQueue.async([self, contents = std::move(contents), number, changeCount] {
            // What has been copied since then, back or by another program, is newer.
            if (!self || self->m_copies != number)
                return;
            if (self->m_pasteboard.changeCount() == changeCount)
                self->put(contents);
            else
                self->endCopy();
        });
    });
}

void ClipboardWatcher::put(PasteboardContents contents)
{
    m_pasteboard.write(std::move(contents));
    // Our own copy is no news.
    m_lastChangeCount = m_pasteboard.changeCount();
    endCopy();
}

void ClipboardWatcher::endCopy()
{
    m_isDecoding = false;
    for (const auto& action : std::exchange(m_afterCopy, {}))
        action();
}

void ClipboardWatcher::save()
{
    if (!m_persistenceActive)
        return;
    // A failure is made good by the next save.
    static_cast<void>(
        PrivateFile::write(m_storePath, m_writer.write(ClipOrder::persistableClips(m_clips), m_boards)));
}
