// Writes a line of JSON for each look at the players:
//   {"snapshot": {...}}, or {"snapshot": null} when nothing plays. "artwork" is the cover's bytes as text.
// and one for each address that it would fetch from the web: {"fetch": URL}.
// Each line on standard input is a command:
//   playpause, next, previous, seek SECONDS, shuffle true|false, repeat off|all|one, loved true|false
//   page URL TEXT   what the web has at that address; at any other one it has nothing
//   ping            answered by {"pong": true} by the main thread
// Ends with the input.

#include "CommandReader.h"
#include "fakes/FakeWorkspace.h"
#include "media/CompositeMediaSource.h"
#include "platform/HttpSession.h"
#include "platform/NowPlayingFramework.h"
#include "platform/linux/scripting/MprisScriptRunner.h"
#include "support/Clock.h"
#include "support/QtMainQueue.h"
#include "support/ThreadSerialQueue.h"

#include <QCoreApplication>
#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <iostream>

namespace {
void tell(const QString& key, const QJsonValue& value)
{
    std::cout << QJsonDocument(QJsonObject{{key, value}}).toJson(QJsonDocument::Compact).toStdString()
              << std::endl;
}

/// A desktop that has none of the functions.
class AbsentFramework final : public NowPlayingFramework
{
public:
    std::any symbol(const QString&) const override { return {}; }
    std::shared_ptr<void> addObserver(const QString&, std::function<void()>) override { return {}; }
};

class ToldWeb final : public HttpSession
{
public:
    QHash<QUrl, QByteArray> pages;

    QCoro::Task<std::optional<HttpResponse>> get(HttpRequest request) override
    {
        tell(QStringLiteral("fetch"), request.url.toString(QUrl::FullyEncoded));
        const auto page = pages.constFind(request.url);
        co_return page == pages.cend() ? std::nullopt : std::optional(HttpResponse{200, *page});
    }
};

QJsonValue toJson(const std::optional<NowPlaying>& snapshot)
{
    if (!snapshot)
        return QJsonValue::Null;
    const auto& cover = snapshot->artworkData;
    return QJsonObject{
        {QStringLiteral("title"), snapshot->title},
        {QStringLiteral("artist"), snapshot->artist},
        {QStringLiteral("album"), snapshot->album},
        {QStringLiteral("artwork"), cover ? QJsonValue(QString::fromUtf8(*cover)) : QJsonValue()},
        {QStringLiteral("duration"), snapshot->duration},
        {QStringLiteral("elapsed"), snapshot->elapsed},
        {QStringLiteral("rate"), snapshot->playbackRate},
        {QStringLiteral("bundle"), snapshot->sourceBundleID.value_or(QString())},
        {QStringLiteral("shuffle"), snapshot->shuffle},
        {QStringLiteral("repeat"), RepeatModes::rawValue(snapshot->repeatMode)},
        {QStringLiteral("loved"), snapshot->isLoved},
        {QStringLiteral("trackID"), snapshot->trackID},
    };
}

void obey(const QStringList& words, MediaSource& source, ToldWeb& web)
{
    const QString verb = words.value(0);
    const QString argument = words.value(1);
    if (verb == u"playpause")
        source.send(MediaCommand::TogglePlayPause);
    else if (verb == u"next")
        source.send(MediaCommand::Next);
    else if (verb == u"previous")
        source.send(MediaCommand::Previous);
    else if (verb == u"seek")
        source.seek(argument.toDouble());
    else if (verb == u"shuffle")
        source.setShuffle(argument == u"true");
    else if (verb == u"repeat")
        source.setRepeat(RepeatModes::repeatMode(argument).value());
    else if (verb == u"loved")
        source.setLoved(argument == u"true");
    else if (verb == u"page")
        web.pages.insert(QUrl(argument), words.value(2).toUtf8());
    else if (verb == u"ping")
        tell(QStringLiteral("pong"), true);
    else
        qFatal("no such command: %s", qUtf8Printable(verb));
}
} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const SystemClock clock;
    QtMainQueue mainQueue;
    AbsentFramework framework;
    const FakeWorkspace workspace;
    ToldWeb web;
    MprisScriptRunner runner(clock);
    CompositeMediaSource source(
        {framework, workspace, runner, web, clock, mainQueue},
        std::make_shared<ThreadSerialQueue>(QStringLiteral("com.quillbar.applescript-media")));
    source.onChange = [](const std::optional<NowPlaying>& snapshot) {
        tell(QStringLiteral("snapshot"), toJson(snapshot));
    };
    source.start();
    const CommandReader reader([&source, &web](const std::string& line) {
        obey(QString::fromStdString(line).split(u' '), source, web);
    });
    return QCoreApplication::exec();
}
