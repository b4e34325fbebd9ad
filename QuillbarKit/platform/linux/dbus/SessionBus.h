#pragma once

/// The session bus of this desktop.
namespace SessionBus {
/// Whether the session has an address for one. Asked to connect without, the library would start a bus of
/// its own.
bool isAnnounced();
} // namespace SessionBus
