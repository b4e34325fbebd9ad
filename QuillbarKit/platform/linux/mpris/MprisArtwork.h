#pragma once

#include "platform/linux/mpris/MprisArtworkFile.h"
#include "platform/linux/mpris/MprisMetadata.h"

#include <QObject>
#include <QUrl>

#include <memory>
#include <optional>

#include <qcoro/qcorotask.h>

class HttpSession;
class MainQueue;
class SerialQueue;
class WorkItem;

/// The cover of the present track, as the player's file, web address or data URL gives it. Main thread only;
/// reading happens elsewhere.
class MprisArtwork final : public QObject
{
    Q_OBJECT

public:
    /// All of these outlive it. Files are read on `background`.
    MprisArtwork(MainQueue& mainQueue, SerialQueue& background, HttpSession& session,
                 QObject* parent = nullptr);
    ~MprisArtwork() override;

    /// From now on the cover is this track's, of the player `owner` whose process is `pid`; empty until it
    /// has been read. True when that has begun with this call. Costs nothing for the track that it is
    /// already.
    bool follow(const std::optional<MprisMetadata>& track, const QString& owner, qint64 pid);

    const QByteArray& bytes() const { return m_bytes; }

    /// Whether it is not known yet if the track has a cover.
    bool isReading() const { return m_isReading; }

Q_SIGNALS:
    /// The cover has arrived, or its file was written anew.
    void changed();
    /// isReading() has become false, with a cover or without. After changed().
    void readingEnded();

private:
    void readFile();
    void readFileLater();
    void readData(const QString& address);
    QCoro::Task<> fetch(QUrl address);
    void finish(int generation, const std::optional<QByteArray>& bytes);

    MainQueue& m_mainQueue;
    SerialQueue& m_background;
    HttpSession& m_session;
    std::optional<MprisMetadata> m_track;
    QString m_owner;
    /// Counts the tracks, so that nothing which arrives late becomes another's cover.
    int m_generation = 0;
    QByteArray m_bytes;
    bool m_isReading = false;
    QStringList m_places;
    MprisArtworkFile::Stamp m_stamp;
    int m_looks = 0;
    std::shared_ptr<WorkItem> m_nextLook;
};
