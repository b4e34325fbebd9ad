// Writes a line for each program that comes to the front: its bundle identifier, name and width of its icon
// of at most 48 pixels, with tabs between them; "-" for what there is none of. The first line tells who is in
// front at the start. With an argument it shows a window of its own of that title, which must not count.

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Workspace.h"

#include <QGuiApplication>
#include <QWindow>

#include <iostream>
#include <string>

namespace {
const QString none = QStringLiteral("-");

std::string lineAbout(const X11Workspace& workspace)
{
    const auto front = workspace.frontmostApplication();
    if (!front)
        return "-\t-\t-";
    const auto icon = workspace.applicationIcon(*front, 48);
    const auto words = {*front, workspace.applicationName(*front).value_or(none),
                        icon ? QString::number(icon->width()) : none};
    return QStringList(words).join(u'\t').toStdString();
}
} // namespace

int main(int argc, char* argv[])
{
    QGuiApplication application(argc, argv);
    X11Connection connection;
    X11Workspace workspace(connection, DesktopEntries::ofSession());

    std::string last;
    const auto tell = [&] {
        const auto line = lineAbout(workspace);
        if (line != last)
            std::cout << line << std::endl;
        last = line;
    };
    // After the workspace, which was connected first.
    QObject::connect(&connection, &X11Connection::eventsRead, &application, tell);
    QObject::connect(&connection, &X11Connection::lost, &application, &QCoreApplication::quit);
    tell();

    QWindow window;
    if (argc > 1) {
        window.setTitle(QString::fromLocal8Bit(argv[1]));
        window.resize(200, 100);
        window.show();
    }
    return QGuiApplication::exec();
}
