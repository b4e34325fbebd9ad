// The controller's share of the status item and of the keyboard shortcut.

#include "AppDelegate.h"

#include <QCoreApplication>

#include <utility>

namespace {
using Combination = std::pair<quint32, quint32>;

/// Only this program writes what it stores there, so a negative value is a mistake of its own.
quint32 unsignedOf(int value)
{
    if (value < 0)
        qFatal("Quillbar: %d is no part of a keyboard shortcut", value);
    return static_cast<quint32>(value);
}
} // namespace

void AppDelegate::launchStatusItem()
{
    m_statusController.onTogglePin = [this](bool pinned) { setPinned(pinned); };
    m_statusController.onAbout = [this] { m_aboutWindow.show(*m_engine, m_platform.windowServer); };
    m_statusController.onQuit = [] { QCoreApplication::quit(); };
    m_statusController.onClipboard = [this] { toggleClipboardPanel(); };
    if (onCheckForUpdates)
        m_statusController.onCheckForUpdates = [this] { onCheckForUpdates(); };
    m_statusController.install();
}

void AppDelegate::launchClipboardHotKey()
{
    m_clipboardHotKey.emplace(m_platform.globalHotKeys, unsignedOf(m_settings.clipboardHotKeyCode()),
                              unsignedOf(m_settings.clipboardHotKeyModifiers()),
                              [this] { toggleClipboardPanel(); });
    if (m_settings.clipboardHotkeyEnabled())
        m_clipboardHotKey->registerHotKey();
    onEach(m_settings, &QuillbarSettings::clipboardHotkeyEnabled,
           &QuillbarSettings::clipboardHotkeyEnabledChanged, [this](bool enabled) {
               if (enabled) {
                   m_clipboardHotKey->keyCode = unsignedOf(m_settings.clipboardHotKeyCode());
                   m_clipboardHotKey->modifiers = unsignedOf(m_settings.clipboardHotKeyModifiers());
                   m_clipboardHotKey->registerHotKey();
               } else {
                   m_clipboardHotKey->unregister();
               }
           });
    // As one stream: what counts is whether the pair differs from the one that was published before, not from
    // what the hot key has taken over meanwhile without registering it.
    const auto pair = [](const QuillbarSettings& settings) {
        return Combination(unsignedOf(settings.clipboardHotKeyCode()),
                           unsignedOf(settings.clipboardHotKeyModifiers()));
    };
    m_cancellables.push_back(
        subscribe(m_platform.mainQueue, &m_settings, pair, &QuillbarSettings::clipboardHotKeyCodeChanged)
            .alsoOn(&QuillbarSettings::clipboardHotKeyModifiersChanged)
            .removeDuplicates()
            .dropFirst()
            .then(this, [this](const Combination& wanted) {
                if (m_settings.clipboardHotkeyEnabled())
                    m_clipboardHotKey->registerHotKey(wanted.first, wanted.second);
            }));
}
