#include "platform/linux/LinuxPlatform.h"

#include "platform/linux/dbus/SessionInstanceOwner.h"
#include "platform/linux/http/QtHttpSession.h"
#include "platform/linux/images/QtImageCodec.h"
#include "platform/linux/mpris/MprisNowPlayingFramework.h"
#include "platform/linux/scripting/MprisScriptRunner.h"
#include "platform/linux/sound/CanberraAlertSound.h"
#include "platform/linux/tray/DesktopStatusItem.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11HotKeys.h"
#include "platform/linux/x11/X11Keystrokes.h"
#include "platform/linux/x11/X11Pasteboard.h"
#include "platform/linux/x11/X11PointerMonitor.h"
#include "platform/linux/x11/X11Screens.h"
#include "platform/linux/x11/X11WindowServer.h"
#include "platform/linux/x11/X11Workspace.h"
#include "support/AppPaths.h"
#include "support/Clock.h"
#include "support/QtMainQueue.h"
#include "support/UserDefaults.h"

#include <QDBusConnection>
#include <QtGlobal>

#include <array>

#include <xcb/xcb.h>

struct LinuxPlatform::Parts
{
    SystemClock clock;
    QtMainQueue mainQueue;
    SessionInstanceOwner instanceOwner{mainQueue};
    // One connection each, since each hears the events of its own alone.
    X11Connection screensConnection;
    X11Connection pointerConnection;
    X11Connection windowsConnection;
    X11Connection workspaceConnection;
    X11Connection statusItemConnection;
    X11Connection hotKeysConnection;
    X11Connection keystrokesConnection;
    X11Screens screens{screensConnection, mainQueue};
    X11PointerMonitor pointerMonitor{pointerConnection, screens, pointerConnection.isXWayland()};
    X11WindowServer windowServer{windowsConnection, windowsConnection.isXWayland()};
    CanberraAlertSound alertSound;
    QtImageCodec imageCodec;
    X11Pasteboard pasteboard{imageCodec, mainQueue, [this] { return workspace.frontmostApplication(); }};
    X11Workspace workspace{workspaceConnection, DesktopEntries::ofSession()};
    DesktopStatusItem statusItem{QDBusConnection::sessionBus(), statusItemConnection, mainQueue};
    X11HotKeys hotKeys{hotKeysConnection, mainQueue, hotKeysConnection.isXWayland()};
    X11Keystrokes keystrokes{keystrokesConnection, mainQueue};
    QtHttpSession httpSession{mainQueue};
    MprisNowPlayingFramework nowPlayingFramework{httpSession, mainQueue, clock};
    MprisScriptRunner scriptRunner{clock};
    UserDefaults userDefaults{AppPaths::configDirectory() + QStringLiteral("/defaults.json")};
};

namespace {
/// Sets a variable that the toolkit reads while the application object is made, until restoreEnvironment():
/// the programs that we start later must not inherit it.
struct Borrowed
{
    const char* name;
    const char* value;
    bool wasSet = false;
    QByteArray before = {};
};

std::array borrowedVariables{
    // A window that must sit at an exact place above everything is an X11 window, under Wayland too, whatever
    // the user has chosen for other programs.
    Borrowed{"QT_QPA_PLATFORM", "xcb"},
    // Frames are paced by the animations; no need to gather updates before one.
    Borrowed{"QT_QPA_UPDATE_IDLE_TIME", "0"},
};

void borrowEnvironment()
{
    for (auto& variable : borrowedVariables) {
        variable.wasSet = qEnvironmentVariableIsSet(variable.name);
        variable.before = qgetenv(variable.name);
        qputenv(variable.name, variable.value);
    }
}

void restoreEnvironment()
{
    for (const auto& variable : borrowedVariables) {
        if (variable.wasSet)
            qputenv(variable.name, variable.before);
        else
            qunsetenv(variable.name);
    }
}
} // namespace

bool LinuxPlatform::prepareApplication()
{
    // The toolkit would abort where this can tell.
    const auto connection = xcb_connect(nullptr, nullptr);
    const bool hasServer = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    if (!hasServer)
        return false;
    borrowEnvironment();
    // A panel that is closed nearly all day should not hold a GPU context.
    if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND"))
        qputenv("QT_QUICK_BACKEND", "software");
    return true;
}

LinuxPlatform::LinuxPlatform() : m_parts(std::make_unique<Parts>())
{
    restoreEnvironment();
    m_parts->workspace.setPlayers(m_parts->nowPlayingFramework.players());
}

LinuxPlatform::~LinuxPlatform() = default;

Platform LinuxPlatform::ports()
{
    return {m_parts->clock,
            m_parts->mainQueue,
            m_parts->screens,
            m_parts->pointerMonitor,
            m_parts->windowServer,
            m_parts->alertSound,
            m_parts->pasteboard,
            m_parts->workspace,
            m_parts->imageCodec,
            m_parts->statusItem,
            m_parts->hotKeys,
            m_parts->keystrokes,
            m_parts->httpSession,
            m_parts->nowPlayingFramework,
            m_parts->scriptRunner,
            m_parts->userDefaults,
            AppPaths::supportDirectory()};
}

InstanceOwner& LinuxPlatform::instanceOwner()
{
    return m_parts->instanceOwner;
}
