#pragma once

class AlertSound;
class Clock;
class MainQueue;
class PointerMonitor;
class Screens;
class UserDefaults;
class WindowServer;

/// Everything through which the kit reaches the world. All of it outlives the application controller.
struct Platform
{
    Clock& clock;
    MainQueue& mainQueue;
    Screens& screens;
    PointerMonitor& pointerMonitor;
    WindowServer& windowServer;
    AlertSound& alertSound;
    UserDefaults& userDefaults;
};
