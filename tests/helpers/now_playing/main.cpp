// Each line on standard input is a command, answered by a line of JSON:
//   info          what is known of the track, under the short names of its keys, and {} when nothing plays.
//                 Besides: "position" at this moment in seconds, "artwork" the size of the cover and its MD5.
//   pid           {"pid": NUMBER}
//   send NUMBER   {"sent": BOOL}
//   seek SECONDS  {"sought": BOOL}, false where that can't be asked for
//   told          {"info": NUMBER, "isPlaying": NUMBER}, how many notifications have come
//   turns         {"turns": NUMBER}, of a timer that ticks while nothing holds up the main thread
// The first line tells which functions there are. Ends with the input.

#include "CommandReader.h"
#include "platform/linux/http/QtHttpSession.h"
#include "platform/linux/mpris/MprisNowPlayingFramework.h"
#include "support/Clock.h"
#include "support/QtMainQueue.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

#include <iostream>
#include <sstream>

namespace {
void tell(const QJsonObject& answer)
{
    std::cout << QJsonDocument(answer).toJson(QJsonDocument::Compact).toStdString() << std::endl;
}

QJsonObject toJson(const QVariantMap& info)
{
    const QString prefix = QStringLiteral("kMRMediaRemoteNowPlayingInfo");
    QJsonObject json;
    for (auto value = info.begin(); value != info.end(); ++value) {
        const auto name = value.key().mid(prefix.size());
        if (value->userType() == QMetaType::QByteArray) {
            const auto bytes = value->toByteArray();
            json[QStringLiteral("artwork")] = bytes.size();
            json[QStringLiteral("artworkHash")] =
                QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toHex());
        } else if (value->userType() == QMetaType::QDateTime) {
            json[name] = static_cast<double>(value->toDateTime().toMSecsSinceEpoch()) / 1e3;
        } else {
            json[name] = QJsonValue::fromVariant(*value);
        }
    }
    if (!json.isEmpty()) {
        const double now = static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / 1e3;
        const double age = now - json[QStringLiteral("Timestamp")].toDouble();
        json[QStringLiteral("position")] = json[QStringLiteral("ElapsedTime")].toDouble() +
                                           age * json[QStringLiteral("PlaybackRate")].toDouble();
        json[QStringLiteral("now")] = now;
    }
    return json;
}

template <typename Function>
Function function(const NowPlayingFramework& framework, const char* name)
{
    const auto symbol = framework.symbol(QString::fromLatin1(name));
    return symbol.has_value() ? std::any_cast<Function>(symbol) : Function();
}
} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QtMainQueue mainQueue;
    const SystemClock clock;
    QtHttpSession session(mainQueue);
    MprisNowPlayingFramework framework(session, mainQueue, clock);
    using Framework = NowPlayingFramework;
    const auto getInfo = function<Framework::GetInfo>(framework, "MRMediaRemoteGetNowPlayingInfo");
    const auto getPID = function<Framework::GetPID>(framework, "MRMediaRemoteGetNowPlayingApplicationPID");
    const auto send = function<Framework::SendCommand>(framework, "MRMediaRemoteSendCommand");
    const auto seek = function<Framework::SetElapsed>(framework, "MRMediaRemoteSetElapsedTime");
    const auto begin =
        function<Framework::Register>(framework, "MRMediaRemoteRegisterForNowPlayingNotifications");
    tell({{QStringLiteral("functions"), int(!!getInfo) + !!getPID + !!send + !!seek + !!begin}});
    if (begin)
        begin();

    int infoCount = 0;
    int isPlayingCount = 0;
    const auto infoObserver = framework.addObserver(
        QStringLiteral("kMRMediaRemoteNowPlayingInfoDidChangeNotification"), [&] { ++infoCount; });
    const auto isPlayingObserver = framework.addObserver(
        QStringLiteral("kMRMediaRemoteNowPlayingApplicationIsPlayingDidChangeNotification"),
        [&] { ++isPlayingCount; });
    int turns = 0;
    QTimer ticks;
    QObject::connect(&ticks, &QTimer::timeout, &application, [&turns] { ++turns; });
    ticks.start(10);

    const CommandReader reader([&](const std::string& line) {
        std::istringstream words(line);
        std::string verb;
        double argument = 0;
        words >> verb >> argument;
        if (verb == "info" && getInfo)
            getInfo([](const QVariantMap& info) { tell(toJson(info)); });
        else if (verb == "pid" && getPID)
            getPID([](qint32 pid) { tell({{QStringLiteral("pid"), pid}}); });
        else if (verb == "send" && send)
            tell({{QStringLiteral("sent"), send(int(argument), {})}});
        else if (verb == "seek" && seek) {
            seek(argument);
            tell({{QStringLiteral("sought"), true}});
        } else if (verb == "told")
            tell({{QStringLiteral("info"), infoCount}, {QStringLiteral("isPlaying"), isPlayingCount}});
        else if (verb == "turns")
            tell({{QStringLiteral("turns"), turns}});
        else
            tell({});
    });
    return QCoreApplication::exec();
}
