// Shows a solid square in the bar, with a menu of "Pin_Open" (which checks and unchecks itself), a separator,
// "Settings…" (disabled) and "Quit" (with a key). Writes "clicked X Y" for a click (the middle of the frame,
// in points, y up) and "chosen TITLE" for an entry. Ends with its standard input.

#include "CommandReader.h"
#include "platform/linux/tray/DesktopStatusItem.h"
#include "platform/linux/x11/X11Connection.h"
#include "support/QtMainQueue.h"

#include <QDBusConnection>
#include <QGuiApplication>

#include <iostream>

namespace {
void setMenu(StatusItem& item, bool isPinned)
{
    const auto say = [](const char* title) {
        return [title] { std::cout << "chosen " << title << std::endl; };
    };
    item.setMenu({
        {QStringLiteral("Pin_Open"),
         {},
         isPinned,
         true,
         [&item, isPinned, say] {
             setMenu(item, !isPinned);
             say("Pin_Open")();
         }},
        {},
        {QStringLiteral("Settings…"), QStringLiteral(","), std::nullopt, false, say("Settings")},
        {QStringLiteral("Quit"), QStringLiteral("q"), std::nullopt, true, say("Quit")},
    });
}
} // namespace

int main(int argc, char* argv[])
{
    const QGuiApplication application(argc, argv);
    QtMainQueue mainQueue;
    X11Connection connection;
    DesktopStatusItem item(QDBusConnection::sessionBus(), connection, mainQueue);
    item.setClickHandler([&item] {
        const auto frame = item.frameOnScreen().value_or(ScreenRect{});
        std::cout << "clicked " << frame.midX() << ' ' << frame.y + frame.height / 2 << std::endl;
    });
    setMenu(item, false);
    QImage square(64, 64, QImage::Format_ARGB32_Premultiplied);
    square.fill(Qt::black);
    item.install(square, QStringLiteral("Quillbar"));
    const CommandReader reader([](const std::string&) {});
    return QGuiApplication::exec();
}
