// Each line on standard input is a command, answered by a line:
//   process PID           "program IDENTIFIER", "-" for none
//   name IDENTIFIER       "name NAME", "-" for none
//   running IDENTIFIER    "running" or "not running"
//   activate IDENTIFIER   "activated" or "not activated"
// Ends with the input.

#include "CommandReader.h"
#include "platform/linux/http/QtHttpSession.h"
#include "platform/linux/mpris/MprisNowPlayingFramework.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Workspace.h"
#include "support/Clock.h"
#include "support/QtMainQueue.h"

#include <QGuiApplication>

#include <iostream>

int main(int argc, char* argv[])
{
    const QGuiApplication application(argc, argv);
    QtMainQueue mainQueue;
    const SystemClock clock;
    QtHttpSession session(mainQueue);
    const MprisNowPlayingFramework framework(session, mainQueue, clock);
    X11Connection connection;
    X11Workspace workspace(connection, DesktopEntries::ofSession());
    workspace.setPlayers(framework.players());

    const CommandReader reader([&](const std::string& line) {
        const auto words = QString::fromStdString(line).split(u' ');
        const auto argument = words.value(1);
        if (words.first() == u"process") {
            const auto program = workspace.applicationForProcess(argument.toLongLong());
            std::cout << "program " << program.value_or(QStringLiteral("-")).toStdString() << std::endl;
        } else if (words.first() == u"name") {
            const auto name = workspace.applicationName(argument);
            std::cout << "name " << name.value_or(QStringLiteral("-")).toStdString() << std::endl;
        } else if (words.first() == u"running") {
            std::cout << (workspace.isRunning(argument) ? "running" : "not running") << std::endl;
        } else if (words.first() == u"activate") {
            std::cout << (workspace.activate(argument) ? "activated" : "not activated") << std::endl;
        }
    });
    return QGuiApplication::exec();
}
