#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QVariantMap>

#include <functional>
#include <optional>

/// A player's object on the session bus: what can be asked of it and told to it, and what it says unasked.
/// Main thread only; nothing in it waits for the player, and nothing comes once it is destroyed.
class MprisObject final : public QObject
{
    Q_OBJECT

public:
    /// None where it doesn't tell.
    using Values = std::optional<QVariantMap>;

    /// `owner`: the player's unique name. From now on its signals are heard.
    MprisObject(QDBusConnection bus, QString owner, QObject* parent = nullptr);

    const QString& owner() const { return m_owner; }

    /// All that it tells of itself as a player, and as a program.
    void readPlayer(std::function<void(const Values&)> answer);
    void readProgram(std::function<void(const Values&)> answer);
    /// 0 when not known.
    void readProcess(std::function<void(qint64)> answer);
    /// In its own units; none where it doesn't tell. `hangs`: it has not answered in time.
    void readPosition(std::function<void(std::optional<double>, bool hangs)> answer);

    /// A method of the player. One that refuses tells nobody else.
    void command(const QString& method, const QVariantList& arguments = {});
    void raise();

Q_SIGNALS:
    /// `others`: besides, something has changed of which it doesn't tell the value.
    void changed(const QVariantMap& values, bool others);
    /// In its own units.
    void seeked(double position);

private Q_SLOTS:
    void handlePropertiesChanged(const QString& interface, const QVariantMap& values,
                                 const QStringList& withoutValues);
    void handleSeeked(const QDBusMessage& signal);

private:
    using Answer = std::function<void(const QDBusMessage&)>;

    void readAll(const QString& interface, std::function<void(const Values&)> answer);
    QDBusMessage message(const QString& interface, const QString& method) const;
    void call(QDBusMessage message, Answer answer = {});

    QDBusConnection m_bus;
    const QString m_owner;
};
