#pragma once

#include <QString>

class AlertSound;
class Clock;
class GlobalHotKeys;
class HttpSession;
class ImageCodec;
class Keystrokes;
class MainQueue;
class NowPlayingFramework;
class Pasteboard;
class PointerMonitor;
class Screens;
class ScriptRunner;
class StatusItem;
class UserDefaults;
class WindowServer;
class Workspace;

/// Everything through which the kit reaches the world. All of it outlives the application controller.
struct Platform
{
    Clock& clock;
    MainQueue& mainQueue;
    Screens& screens;
    PointerMonitor& pointerMonitor;
    WindowServer& windowServer;
    AlertSound& alertSound;
    Pasteboard& pasteboard;
    Workspace& workspace;
    ImageCodec& imageCodec;
    StatusItem& statusItem;
    GlobalHotKeys& globalHotKeys;
    Keystrokes& keystrokes;
    HttpSession& httpSession;
    NowPlayingFramework& nowPlayingFramework;
    ScriptRunner& scriptRunner;
    UserDefaults& userDefaults;
    /// Where the stores have their files: an absolute path. The folder need not be there yet.
    QString supportDirectory;
};
