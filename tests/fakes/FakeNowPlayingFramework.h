#pragma once

#include "platform/NowPlayingFramework.h"

#include <QList>
#include <QStringList>

#include <map>
#include <utility>
#include <vector>

/// The framework of a desktop on which a test plays. It has all functions but those in `missing`, and answers
/// at once unless held.
class FakeNowPlayingFramework final : public NowPlayingFramework
{
public:
    enum Answers { AtOnce, Held };

    explicit FakeNowPlayingFramework(Answers answers = AtOnce) : isHeld(answers == Held) {}

    /// What plays, by the framework's own keys.
    QVariantMap info;
    qint32 pid = 0;
    /// Names of functions that there are not.
    QStringList missing;
    /// While true nobody is answered before answer().
    bool isHeld;

    // What was asked for.
    int registrations = 0;
    mutable QStringList lookedUp;
    QList<int> commands;
    QList<QVariantMap> commandOptions;
    QList<double> positions;
    int infoReads = 0;
    int pidReads = 0;

    std::any symbol(const QString& name) const override
    {
        lookedUp.append(name);
        const auto found = m_symbols.find(name);
        return missing.contains(name) || found == m_symbols.end() ? std::any() : found->second;
    }

    std::shared_ptr<void> addObserver(const QString& name, std::function<void()> handler) override
    {
        auto observer = std::make_shared<Observer>(name, std::move(handler));
        m_observers.push_back(observer);
        return observer;
    }

    void play(const QString& title) { info = {{QStringLiteral("kMRMediaRemoteNowPlayingInfoTitle"), title}}; }

    void notify(const QString& name)
    {
        for (const auto& weak : std::vector(m_observers)) {
            if (const auto observer = weak.lock(); observer && observer->first == name)
                observer->second();
        }
    }
    void notifyInfo() { notify(QStringLiteral("kMRMediaRemoteNowPlayingInfoDidChangeNotification")); }

    /// Answers those who wait now.
    void answer()
    {
        for (const auto& reply : std::exchange(m_held, {}))
            reply();
    }

    int observerCount() const
    {
        int count = 0;
        for (const auto& observer : m_observers)
            count += observer.expired() ? 0 : 1;
        return count;
    }

private:
    using Observer = std::pair<QString, std::function<void()>>;

    void reply(std::function<void()> reply)
    {
        if (isHeld)
            m_held.push_back(std::move(reply));
        else
            reply();
    }

    /// As the client looks them up; each reaches this very object.
    const std::map<QString, std::any> m_symbols{
        {QStringLiteral("MRMediaRemoteGetNowPlayingInfo"), GetInfo([this](auto callback) {
             ++infoReads;
             reply([this, callback] { callback(info); });
         })},
        {QStringLiteral("MRMediaRemoteRegisterForNowPlayingNotifications"),
         Register([this] { ++registrations; })},
        {QStringLiteral("MRMediaRemoteSendCommand"),
         SendCommand([this](int command, const QVariantMap& options) {
             commands.append(command);
             commandOptions.append(options);
             return true;
         })},
        {QStringLiteral("MRMediaRemoteSetElapsedTime"),
         SetElapsed([this](double seconds) { positions.append(seconds); })},
        {QStringLiteral("MRMediaRemoteGetNowPlayingApplicationPID"), GetPID([this](auto callback) {
             ++pidReads;
             reply([this, callback] { callback(pid); });
         })},
    };
    std::vector<std::weak_ptr<Observer>> m_observers;
    std::vector<std::function<void()>> m_held;
};
