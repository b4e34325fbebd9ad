#include "platform/linux/mpris/MprisObject.h"

#include "platform/linux/dbus/SessionBus.h"
#include "platform/linux/mpris/MprisMetadataParser.h"

#include <QDBusPendingCallWatcher>

#include <utility>

namespace {
const auto objectPath = QStringLiteral("/org/mpris/MediaPlayer2");
const auto rootInterface = QStringLiteral("org.mpris.MediaPlayer2");
const auto playerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");
const auto propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

/// After so long a player counts as hung.
constexpr int answerMilliseconds = 3000;

bool isReply(const QDBusMessage& reply)
{
    return reply.type() == QDBusMessage::ReplyMessage;
}
} // namespace

MprisObject::MprisObject(QDBusConnection bus, QString owner, QObject* parent)
    : QObject(parent), m_bus(std::move(bus)), m_owner(std::move(owner))
{
    // By its unique name: asked to hear a well-known one, the library would wait for the bus.
    m_bus.connect(m_owner, objectPath, propertiesInterface, QStringLiteral("PropertiesChanged"),
                  {playerInterface}, QStringLiteral("sa{sv}as"), this,
                  SLOT(handlePropertiesChanged(QString, QVariantMap, QStringList)));
    m_bus.connect(m_owner, objectPath, playerInterface, QStringLiteral("Seeked"), this,
                  SLOT(handleSeeked(QDBusMessage)));
}

void MprisObject::handlePropertiesChanged(const QString&, const QVariantMap& values,
                                          const QStringList& withoutValues)
{
    Q_EMIT changed(values, !withoutValues.isEmpty());
}

void MprisObject::handleSeeked(const QDBusMessage& signal)
{
    if (const auto position = MprisMetadataParser::number(signal.arguments().value(0)))
        Q_EMIT seeked(*position);
}

QDBusMessage MprisObject::message(const QString& interface, const QString& method) const
{
    return QDBusMessage::createMethodCall(m_owner, objectPath, interface, method);
}

void MprisObject::call(QDBusMessage message, Answer answer)
{
    message.setAutoStartService(false);
    const auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message, answerMilliseconds), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [answer = std::move(answer)](QDBusPendingCallWatcher* call) {
                call->deleteLater();
                if (answer)
                    answer(call->reply());
            });
}

void MprisObject::readAll(const QString& interface, std::function<void(const Values&)> answer)
{
    auto question = message(propertiesInterface, QStringLiteral("GetAll"));
    question << interface;
    call(question, [answer = std::move(answer)](const QDBusMessage& reply) {
        const auto values = MprisMetadataParser::unwrapped(reply.arguments().value(0)).toMap();
        answer(isReply(reply) ? std::optional(values) : std::nullopt);
    });
}

void MprisObject::readPlayer(std::function<void(const Values&)> answer)
{
    readAll(playerInterface, std::move(answer));
}

void MprisObject::readProgram(std::function<void(const Values&)> answer)
{
    readAll(rootInterface, std::move(answer));
}

void MprisObject::readProcess(std::function<void(qint64)> answer)
{
    const auto bus = QStringLiteral("org.freedesktop.DBus");
    auto question = QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                                   QStringLiteral("GetConnectionUnixProcessID"));
    question << m_owner;
    call(question, [answer = std::move(answer)](const QDBusMessage& reply) {
        answer(isReply(reply) ? reply.arguments().value(0).toUInt() : 0);
    });
}

void MprisObject::readPosition(std::function<void(std::optional<double>, bool)> answer)
{
    auto question = message(propertiesInterface, QStringLiteral("Get"));
    question << playerInterface << QStringLiteral("Position");
    call(question, [answer = std::move(answer)](const QDBusMessage& reply) {
        answer(isReply(reply) ? MprisMetadataParser::number(reply.arguments().value(0)) : std::nullopt,
               SessionBus::isSilence(reply));
    });
}

void MprisObject::command(const QString& method, const QVariantList& arguments)
{
    auto order = message(playerInterface, method);
    order.setArguments(arguments);
    call(order);
}

void MprisObject::raise()
{
    call(message(rootInterface, QStringLiteral("Raise")));
}
