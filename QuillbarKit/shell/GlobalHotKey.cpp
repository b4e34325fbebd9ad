#include "shell/GlobalHotKey.h"

#include <utility>

namespace {
quint32 nextID = 1;
}

GlobalHotKey::GlobalHotKey(GlobalHotKeys& hotKeys, quint32 keyCode, quint32 modifiers,
                           std::function<void()> handler)
    : keyCode(keyCode), modifiers(modifiers), m_hotKeys(hotKeys), m_handler(std::move(handler)),
      m_hotKeyID(nextID++)
{}

bool GlobalHotKey::registerHotKey()
{
    if (!m_hotKeyRef)
        m_hotKeyRef = m_hotKeys.registerHotKey(keyCode, modifiers, m_handler);
    return m_hotKeyRef != nullptr;
}

bool GlobalHotKey::registerHotKey(quint32 newKeyCode, quint32 newModifiers)
{
    keyCode = newKeyCode;
    modifiers = newModifiers;
    // Before the new one is asked for, which may be the same.
    unregister();
    return registerHotKey();
}

void GlobalHotKey::unregister()
{
    m_hotKeyRef.reset();
}
