#pragma once

#include <Qt>

#include <optional>

/// The keys of the clipboard panel that act whatever has the focus in it. Command is the Control key, as in
/// every program of this desktop.
namespace ClipboardPanelKeys {
enum class Action {
    ActivateRow,
    ActivateSelected,
    MoveUp,
    MoveDown,
    ToggleQuickLook,
    DeleteSelected,
    TogglePinSelected,
};

struct Stroke
{
    Action action;
    /// Of ActivateRow: which one, counted from 0.
    int row = 0;

    bool operator==(const Stroke&) const = default;
};

/// `key` is a Qt::Key. None for a key that is the focused control's own.
std::optional<Stroke> stroke(int key, Qt::KeyboardModifiers modifiers);
} // namespace ClipboardPanelKeys
