#pragma once

#include "platform/Keystrokes.h"
#include "platform/linux/x11/X11Keyboard.h"

#include <memory>
#include <vector>

class MainQueue;
class X11Connection;

/// Presses keys through the server's test extension. There is no permission to be asked for: a server that
/// has the extension lets every program use it. Under XWayland the keys reach X11 windows alone.
///
/// Waiting is done by looking again every few milliseconds for the second at most that a paste takes: a
/// focus that comes and goes, a window that dies and keys that are let go are then one question.
class X11Keystrokes final : public Keystrokes
{
public:
    X11Keystrokes(X11Connection& connection, MainQueue& mainQueue);
    ~X11Keystrokes() override;

    bool isTrusted() const override;
    void prompt() override {}
    void openSettings() override {}
    std::optional<PriorWindow> frontWindow() const override;
    void paste(std::optional<PriorWindow> prior, std::function<void(bool)> done) override;

private:
    struct Paste;

    void look(Paste& paste);
    void finish(Paste& paste, bool pressed);
    void activate(xcb_window_t window) const;
    bool exists(xcb_window_t window) const;
    bool hasFocus(std::optional<PriorWindow> window) const;
    bool isKeyboardFree() const;
    bool isTerminal(xcb_window_t window) const;
    bool pressPaste(bool inTerminal) const;
    xcb_window_t focusWindow() const;
    xcb_window_t parentOf(xcb_window_t window) const;
    xcb_window_t windowProperty(xcb_atom_t property) const;

    X11Connection& m_connection;
    MainQueue& m_mainQueue;
    X11Keyboard m_keyboard;
    bool m_hasTestExtension = false;
    xcb_atom_t m_activeWindow = XCB_ATOM_NONE;
    xcb_atom_t m_managerCheck = XCB_ATOM_NONE;
    xcb_atom_t m_clientState = XCB_ATOM_NONE;
    std::vector<std::unique_ptr<Paste>> m_pastes;
};
