#pragma once

#include "platform/GlobalHotKeys.h"
#include "platform/linux/x11/X11Keyboard.h"

#include <QObject>

#include <memory>
#include <vector>

class MainQueue;
class X11Connection;

/// Hot keys as passive grabs on the root window, one for each combination of lock keys. They follow the
/// keyboard layout: when it changes, they move to the keys that now carry their symbols. A combination that
/// can't move since another program holds the new place is tried again at the next change.
///
/// Under XWayland a grab would hear the key over X11 windows alone, so there is no such service there.
class X11HotKeys final : public QObject, public GlobalHotKeys
{
    Q_OBJECT

public:
    /// `connection` must be given over to this object alone.
    X11HotKeys(X11Connection& connection, MainQueue& mainQueue, bool isXWayland, QObject* parent = nullptr);
    ~X11HotKeys() override;

    std::unique_ptr<Token> registerHotKey(quint32 keyCode, quint32 modifiers,
                                          std::function<void()> handler) override;

private:
    struct HotKey;
    class GrabToken;

    bool grab(HotKey& hotKey);
    void ungrab(HotKey& hotKey);
    void remove(const std::shared_ptr<HotKey>& hotKey);
    void handleEvent(const xcb_generic_event_t& event);
    void handlePress(const xcb_key_press_event_t& event);
    void followKeyboard();

    X11Connection& m_connection;
    MainQueue& m_mainQueue;
    bool m_isXWayland;
    X11Keyboard m_keyboard;
    bool m_keyboardChanged = false;
    std::vector<std::shared_ptr<HotKey>> m_hotKeys;
};
