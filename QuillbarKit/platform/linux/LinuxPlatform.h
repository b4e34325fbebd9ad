#pragma once

#include "platform/Platform.h"

#include <memory>

class InstanceOwner;
class QObject;

/// The Linux side of every port, made once, after the application object and before everything that uses
/// it.
class LinuxPlatform
{
public:
    /// What must be settled before the application object is made: which window system to talk to and how to
    /// draw. False when there is no X server, not even one beside Wayland, to show a panel on.
    static bool prepareApplication();

    LinuxPlatform();
    ~LinuxPlatform();
    LinuxPlatform(const LinuxPlatform&) = delete;
    LinuxPlatform& operator=(const LinuxPlatform&) = delete;

    Platform ports();
    InstanceOwner& instanceOwner();

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};
