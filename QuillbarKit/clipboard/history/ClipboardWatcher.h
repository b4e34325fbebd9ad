#pragma once

#include "clipboard/boards/Pinboard.h"
#include "clipboard/history/Clip.h"
#include "clipboard/history/ClipboardHistoryFile.h"

#include <QList>
#include <QObject>
#include <QSet>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

class Clock;
class ImageCodec;
class MainQueue;
class Pasteboard;
struct PasteboardContents;
class RepeatingTimer;
class SerialQueue;
class Workspace;

/// The single owner of the clipboard history: watches the pasteboard, keeps what may be kept as clips and
/// boards, and writes both to their file after each change. Main thread only.
///
/// Where an operation names a clip or a board that isn't there it does nothing. A file that can't be written
/// stays as it was, without a word; the lists in memory go on.
class ClipboardWatcher : public QObject
{
    Q_OBJECT

public:
    /// What is passed by reference must outlive the watcher. `storePath` is the history file's absolute path;
    /// nothing is read or written before start(). Images are decoded on `imageQueue`.
    ClipboardWatcher(Pasteboard& pasteboard, const Workspace& workspace, const ImageCodec& imageCodec,
                     const Clock& clock, MainQueue& mainQueue, std::shared_ptr<SerialQueue> imageQueue,
                     QString storePath, QObject* parent = nullptr);
    ~ClipboardWatcher() override;

    /// In canonical order: pinned ones first, and the latest first among equals.
    const QList<Clip>& clips() const { return m_clips; }
    const QList<Pinboard>& boards() const { return m_boards; }

    /// Where the programs that clips came from are known.
    const Workspace& workspace() const { return m_workspace; }

    /// Whether copies are recorded.
    bool enabled() const { return m_enabled; }
    void setEnabled(bool enabled);

    /// What is copied while one of these programs is in front is not recorded.
    const QSet<QString>& excludedBundleIDs() const { return m_excludedBundleIDs; }
    void setExcludedBundleIDs(QSet<QString> bundleIDs) { m_excludedBundleIDs = std::move(bundleIDs); }

    /// How many clips are kept that aren't pinned. Setting it trims and saves, also when it is the same.
    int maxItems() const { return m_maxItems; }
    void setMaxItems(int maxItems);

    /// Reads the history, takes in what is on the pasteboard, and watches it from now on. From the first
    /// start on the history is saved.
    void start();
    /// Watches no longer.
    void stop();
    bool isRunning() const { return m_timer != nullptr; }

    /// Makes a clip of the pasteboard's contents. True when a new one entered the history, false when there
    /// is nothing to keep, nothing that may be kept, or a repeat of a clip that is there.
    bool ingestPasteboard();

    /// A board of that name at the end of the list, of which there may be several.
    Pinboard addBoard(const QString& name);
    void renameBoard(const QUuid& id, const QString& name);
    /// Leaves the clips.
    void deleteBoard(const QUuid& id);
    /// At the end of the board, unless it is in it.
    void addClip(const QUuid& clipUUID, const QUuid& boardID);
    void removeClip(const QUuid& clipUUID, const QUuid& boardID);
    /// The clips of a board in the board's order.
    QList<Clip> clips(const QUuid& boardID) const;

    void deleteClip(const Clip& clip);
    void togglePin(const Clip& clip);
    /// Boards keep the clips they name, here and below; what is gone is not shown.
    void clearUnpinned();
    void clear();
    /// Of a text clip; drops its rich forms.
    void updateText(const Clip& clip, const QString& text);

    /// Replaces the clips by what another device has made of them.
    void replaceForSync(QList<Clip> clips);
    void replaceForSync(QList<Pinboard> boards);

    /// Puts the clip on the pasteboard, with its rich forms, and moves it up as the latest. An image is
    /// decoded first, which takes some tenths of a second with a large one, and comes to the pasteboard after
    /// that, unless something newer is there by then; of one that is no picture the pasteboard is left empty.
    void copy(const Clip& clip);
    /// The same without the rich forms.
    void copyPlain(const Clip& clip);
    /// Calls `action` as soon as no image is on its way to the pasteboard: at once, or on a later turn.
    void afterCopy(std::function<void()> action);

    /// Writes the history file on the calling thread; nothing before the first start().
    void save();

Q_SIGNALS:
    void clipsChanged();
    void boardsChanged();

private:
    void loadStore(QByteArray bytes);
    /// Has the pasteboard looked at on the next beat.
    void look();
    bool isExcluded(const std::optional<QString>& bundleID) const;
    void tick();
    bool ingestClip(Clip clip, qint64 changeCount);
    void write(const Clip& clip, bool plain);
    void writeDecoded(const QByteArray& image);
    void put(PasteboardContents contents);
    void endCopy();
    void publishClips(QList<Clip> clips);
    void publishBoards(QList<Pinboard> boards);
    qsizetype indexOf(const QUuid& boardID) const;

    Pasteboard& m_pasteboard;
    const Workspace& m_workspace;
    const ImageCodec& m_imageCodec;
    const Clock& m_clock;
    MainQueue& m_mainQueue;
    const std::shared_ptr<SerialQueue> m_imageQueue;
    const QString m_storePath;
    QList<Clip> m_clips;
    QList<Pinboard> m_boards;
    bool m_enabled = true;
    QSet<QString> m_excludedBundleIDs;
    std::unique_ptr<RepeatingTimer> m_timer;
    qint64 m_lastChangeCount;
    int m_maxItems = 25;
    /// The number of the last copy back.
    quint64 m_copies = 0;
    bool m_isDecoding = false;
    std::vector<std::function<void()>> m_afterCopy;
    /// So that nothing can be written over a file that has not been read.
    bool m_persistenceActive = false;
    ClipboardHistoryWriter m_writer;
};
