#include "clipboard/panel/AutoPaster.h"

#include <utility>

bool AutoPaster::isTrusted(const Keystrokes& keystrokes)
{
    return keystrokes.isTrusted();
}

void AutoPaster::paste(Keystrokes& keystrokes, std::optional<PriorWindow> reactivating,
                       std::function<void(bool)> done)
{
    if (!done)
        done = [](bool) {};
    if (!keystrokes.isTrusted())
        done(false);
    else
        keystrokes.paste(reactivating, std::move(done));
}

void AutoPaster::promptForAccessibility(Keystrokes& keystrokes)
{
    keystrokes.prompt();
}

void AutoPaster::openAccessibilitySettings(Keystrokes& keystrokes)
{
    keystrokes.openSettings();
}
