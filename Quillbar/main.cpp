#include "AppDelegate.h"
#include "platform/InstanceOwner.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/TerminationSignals.h"

#include <QGuiApplication>

#include <cstdio>
#include <cstdlib>

int main(int, char* argv[])
{
    if (!LinuxPlatform::prepareApplication()) {
        std::fputs(
            "Quillbar: no X server can be reached; it needs one, or XWayland beside a Wayland desktop\n",
            stderr);
        return EXIT_FAILURE;
    }
    // There are no command-line options, and the toolkit's own would undo what has just been settled.
    int argumentCount = 1;
    QGuiApplication application(argumentCount, argv);
    QGuiApplication::setApplicationName(QStringLiteral("quillbar"));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.vennor.quillbar"));
    QGuiApplication::setQuitOnLastWindowClosed(false);

    LinuxPlatform platform;
    if (!platform.instanceOwner().claim())
        return EXIT_SUCCESS;

    AppDelegate delegate(platform.ports());
    const TerminationSignals terminationSignals;
    QObject::connect(&terminationSignals, &TerminationSignals::received, &application,
                     &QCoreApplication::quit);
    QObject::connect(&application, &QCoreApplication::aboutToQuit, &delegate,
                     &AppDelegate::applicationWillTerminate);
    QObject::connect(&platform.instanceOwner(), &InstanceOwner::activationRequested, &delegate,
                     &AppDelegate::applicationDidReactivate);
    delegate.applicationDidFinishLaunching();
    return QGuiApplication::exec();
}
