#pragma once

#include "platform/GlobalHotKeys.h"

#include <functional>
#include <memory>

/// One key combination that calls a closure from anywhere, whichever program is in front. Main thread only.
class GlobalHotKey
{
public:
    /// The default combination: Command, Shift and V.
    static constexpr quint32 keyV = 9;
    static constexpr quint32 cmdShift = HotKeyModifier::command | HotKeyModifier::shift;

    /// Registers nothing yet. `hotKeys` must outlive this.
    GlobalHotKey(GlobalHotKeys& hotKeys, quint32 keyCode, quint32 modifiers, std::function<void()> handler);

    /// What registerHotKey() will register. Changing it does not touch a combination that is registered.
    quint32 keyCode;
    quint32 modifiers;

    /// A number of this object alone, counted from 1 in the order of creation.
    quint32 hotKeyID() const { return m_hotKeyID; }

    /// Registers the present combination, unless one is registered already. True when one is afterwards;
    /// false when another program holds it.
    bool registerHotKey();

    /// Gives up what is registered and registers this combination instead. The pair is kept either way.
    bool registerHotKey(quint32 newKeyCode, quint32 newModifiers);

    /// Gives up what is registered, if anything is.
    void unregister();

private:
    GlobalHotKeys& m_hotKeys;
    std::function<void()> m_handler;
    quint32 m_hotKeyID;
    std::unique_ptr<GlobalHotKeys::Token> m_hotKeyRef;
};
