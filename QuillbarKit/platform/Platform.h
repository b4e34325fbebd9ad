#pragma once

class Clock;
class MainQueue;
class PointerMonitor;
class Screens;
class WindowServer;

/// Everything through which the kit reaches the world. All of it outlives the application controller.
struct Platform
{
    Clock& clock;
    MainQueue& mainQueue;
    Screens& screens;
    PointerMonitor& pointerMonitor;
    WindowServer& windowServer;
};
