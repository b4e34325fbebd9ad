#pragma once

#include <QString>
#include <QVariantMap>

#include <any>
#include <functional>
#include <memory>

/// The desktop's knowledge of the program that plays now. Its functions are found by name, and any of them
/// may be absent. Main thread only; nothing in it waits for another program.
class NowPlayingFramework
{
public:
    /// "MRMediaRemoteGetNowPlayingInfo": hands over what is known of the track, an empty map when there is
    /// none, on the main thread. The keys begin with "kMRMediaRemoteNowPlayingInfo": Title, Artist, Album
    /// (QString), ArtworkData (QByteArray), Duration, ElapsedTime, PlaybackRate (double), Timestamp
    /// (QDateTime).
    using GetInfo = std::function<void(std::function<void(const QVariantMap&)>)>;
    /// "MRMediaRemoteRegisterForNowPlayingNotifications": starts the notifications.
    using Register = std::function<void()>;
    /// "MRMediaRemoteSendCommand": a transport command by its number (2 play or pause, 4 next, 5 previous).
    using SendCommand = std::function<bool(int command, const QVariantMap& options)>;
    /// "MRMediaRemoteSetElapsedTime": moves the playback position, in seconds.
    using SetElapsed = std::function<void(double seconds)>;
    /// "MRMediaRemoteGetNowPlayingApplicationPID": hands over the process id of the program, 0 when there is
    /// none, on the main thread.
    using GetPID = std::function<void(std::function<void(qint32)>)>;

    virtual ~NowPlayingFramework() = default;

    /// A function of one of the types above; empty where there is none of that name.
    virtual std::any symbol(const QString& name) const = 0;

    /// Calls `handler` at each notification of that name until the returned object is destroyed:
    /// "kMRMediaRemoteNowPlayingInfoDidChangeNotification" and
    /// "kMRMediaRemoteNowPlayingApplicationIsPlayingDidChangeNotification".
    virtual std::shared_ptr<void> addObserver(const QString& name, std::function<void()> handler) = 0;
};
