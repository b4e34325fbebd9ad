#pragma once

class QDBusMessage;

/// The session bus of this desktop.
namespace SessionBus {
/// Whether the session has an address for one. Asked to connect without, the library would start a bus of
/// its own.
bool isAnnounced();

/// Whether whoever was asked has not answered in time.
bool isSilence(const QDBusMessage& reply);
} // namespace SessionBus
