#pragma once

#include "platform/GlobalHotKeys.h"
#include "platform/linux/x11/X11KeyGrabs.h"
#include "platform/linux/x11/X11Keyboard.h"

#include <QObject>

#include <memory>
#include <optional>
#include <vector>

class MainQueue;
class X11Connection;

/// Hot keys as grabbed keys, see X11KeyGrabs. They follow the keyboard layout: when it changes, they move to
/// the keys that now carry their symbols. A combination that can't move since another program holds the new
/// place is tried again at the next change.
///
/// Under XWayland a grab would hear the key over X11 windows alone, so there is no such service there.
class X11HotKeys final : public QObject, public GlobalHotKeys
{
    Q_OBJECT

public:
    /// `connection`, which tells of the keyboard, must be given over to this object alone.
    X11HotKeys(X11Connection& connection, MainQueue& mainQueue, bool isXWayland, QObject* parent = nullptr);
    ~X11HotKeys() override;

    std::unique_ptr<Token> registerHotKey(quint32 keyCode, quint32 modifiers,
                                          std::function<void()> handler) override;
    std::optional<quint32> virtualKeyCode(quint32 scanCode) const override;

private:
    struct HotKey;
    class GrabToken;

    bool grab(HotKey& hotKey);
    void remove(const std::shared_ptr<HotKey>& hotKey);
    void followKeyboard();

    X11Connection& m_connection;
    X11Keyboard m_keyboard;
    /// Not there where the desktop has no such service.
    std::optional<X11KeyGrabs> m_grabs;
    bool m_keyboardChanged = false;
    std::vector<std::shared_ptr<HotKey>> m_hotKeys;
};
