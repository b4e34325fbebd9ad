#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>
#include <optional>

/// The bits of a hot key's modifier mask, as they are stored. Command is the Super key and Option the Alt key
/// on keyboards that name theirs so.
namespace HotKeyModifier {
inline constexpr quint32 command = 0x100;
inline constexpr quint32 shift = 0x200;
inline constexpr quint32 option = 0x800;
inline constexpr quint32 control = 0x1000;
} // namespace HotKeyModifier

/// Key combinations that reach this program whichever program is in front. Main thread only.
class GlobalHotKeys
{
public:
    /// Keeps a combination registered; destroying it gives the combination back.
    class Token
    {
    public:
        virtual ~Token() = default;
    };

    virtual ~GlobalHotKeys() = default;

    /// From now on `handler` runs once for each press of the combination, on a later turn of the main queue;
    /// a key that is held down counts as one press. It runs no more once the token is gone.
    ///
    /// `keyCode` is a virtual key code, 0 to 127 (9 is the key that types v), and means the key that carries
    /// that symbol in the present keyboard layout; where none does, the key at its place. `modifiers` are
    /// bits of HotKeyModifier, others are ignored.
    ///
    /// None when another program holds the combination, when this one has registered it already, when the
    /// code names no key, or where the desktop offers no such service.
    virtual std::unique_ptr<Token> registerHotKey(quint32 keyCode, quint32 modifiers,
                                                  std::function<void()> handler) = 0;

    /// The code of a key that was pressed in one of our own windows, such that registerHotKey() takes it for
    /// that same key in the present keyboard layout. `scanCode` is the one that the toolkit's key event
    /// carries. None for a modifier, and for a key that no code leads to.
    virtual std::optional<quint32> virtualKeyCode(quint32 scanCode) const = 0;
};
