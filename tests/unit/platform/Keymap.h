#pragma once

#include <memory>

#include <xkbcommon/xkbcommon.h>

/// A keyboard of the layouts that a test names, as `setxkbmap` would.
class Keymap
{
public:
    explicit Keymap(const char* layouts, const char* variants = "")
    {
        const xkb_rule_names names{"evdev", "pc105", layouts, variants, ""};
        m_keymap.reset(xkb_keymap_new_from_names(m_context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
    }

    xkb_keymap* get() const { return m_keymap.get(); }

private:
    struct Free
    {
        void operator()(xkb_context* context) const { xkb_context_unref(context); }
        void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
    };

    std::unique_ptr<xkb_context, Free> m_context{xkb_context_new(XKB_CONTEXT_NO_FLAGS)};
    std::unique_ptr<xkb_keymap, Free> m_keymap;
};
