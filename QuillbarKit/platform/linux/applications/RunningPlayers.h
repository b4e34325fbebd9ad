#pragma once

#include <QList>
#include <QString>

/// A media player as it tells of itself.
struct RunningPlayer
{
    /// 0 when not known.
    qint64 pid = 0;
    /// The id of its desktop file; may be empty or wrong.
    QString desktopEntry;
    /// What it calls itself; may be empty.
    QString identity;
    bool canRaise = false;
};

/// The media players that run. Main thread only.
class RunningPlayers
{
public:
    virtual ~RunningPlayers() = default;

    virtual QList<RunningPlayer> players() const = 0;

    /// Asks the player of this process to show itself.
    virtual void raise(qint64 pid) const = 0;
};
