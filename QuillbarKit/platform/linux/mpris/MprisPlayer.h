#pragma once

#include "platform/linux/mpris/MprisObject.h"
#include "platform/linux/mpris/MprisProperties.h"
#include "platform/linux/mpris/MprisTimeline.h"

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>

#include <memory>

class Clock;
class MainQueue;
class WorkItem;

/// A player on the session bus, as its owner shows it in the MPRIS 2.2 interface. Nothing of it is known
/// before it has told all of its state once, and nothing while it doesn't answer. Main thread only; nothing
/// in it waits for the player.
class MprisPlayer final : public QObject
{
    Q_OBJECT

public:
    /// `owner`: the unique name behind its well-known one.
    MprisPlayer(QDBusConnection bus, QString owner, MainQueue& mainQueue, const Clock& clock,
                QObject* parent = nullptr);
    ~MprisPlayer() override;

    const QString& owner() const { return m_object.owner(); }

    /// Whether its state is known and it answers.
    bool isAvailable() const { return m_isKnown && m_pendingReads == 0 && m_answers; }
    const MprisProperties& properties() const { return m_properties; }

    /// 0 when not known.
    qint64 pid() const { return m_pid; }
    /// The id of its desktop file as it says itself; often empty, sometimes wrong.
    const QString& desktopEntry() const { return m_desktopEntry; }
    /// What it calls itself; may be empty.
    const QString& identity() const { return m_identity; }
    bool canRaise() const { return m_canRaise; }

    MprisTimeline::Place place();
    double length() const { return m_timeline.length(); }

    /// Somebody looks at the position: asks the player for it now and then, so that a move which it didn't
    /// announce is seen within seconds.
    void lookAtPosition();

    /// False where the player can't.
    bool togglePlayPause();
    bool next();
    bool previous();
    /// In seconds; what the player can't is ignored.
    void seek(double seconds);
    void raise();

Q_SIGNALS:
    /// Anything but the position's natural course has changed.
    void changed();

private:
    MprisTimeline::Moment now() const;
    void readAll();
    void handleRead();
    void readPosition();
    void handlePosition(double position, double asked);
    void handleChange(const QVariantMap& values, bool others);
    void handleSeeked(double position);
    void applySoon();
    /// Takes over what it has told, unless it may be between two tracks: then what was known stays for a
    /// moment.
    void apply();
    void take();
    void followTrack(const MprisProperties& former, bool mayHaveMoved);
    void setAnswers(bool answers);
    void retryLater();
    void after(double seconds, std::shared_ptr<WorkItem>& item, void (MprisPlayer::*action)());

    MprisObject m_object;
    MainQueue& m_mainQueue;
    const Clock& m_clock;

    bool m_isKnown = false;
    bool m_answers = true;
    int m_pendingReads = 0;
    double m_readAllAt = 0;
    double m_retryDelay;
    /// What it has told, not looked at yet.
    QVariantMap m_values;
    bool m_mustReadAll = false;
    double m_appliedAt = 0;
    MprisProperties m_properties;
    MprisTimeline m_timeline;
    bool m_announcesSeeks = false;
    bool m_isReadingPosition = false;
    double m_positionAskedAt = 0;
    qint64 m_pid = 0;
    QString m_desktopEntry;
    QString m_identity;
    bool m_canRaise = false;
    std::shared_ptr<WorkItem> m_apply;
    /// Set while it may be between two tracks.
    std::shared_ptr<WorkItem> m_gap;
    std::shared_ptr<WorkItem> m_laterReading;
    std::shared_ptr<WorkItem> m_retry;
};
