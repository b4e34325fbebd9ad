#include "clipboard/panel/ClipboardPanelKeys.h"

std::optional<ClipboardPanelKeys::Stroke> ClipboardPanelKeys::stroke(int key, Qt::KeyboardModifiers modifiers)
{
    const bool isCommand = modifiers.testFlag(Qt::ControlModifier);
    if (isCommand && key >= Qt::Key_1 && key <= Qt::Key_9)
        return Stroke{Action::ActivateRow, key - Qt::Key_1};
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return Stroke{Action::ActivateSelected};
    case Qt::Key_Down:
        return Stroke{Action::MoveDown};
    case Qt::Key_Up:
        return Stroke{Action::MoveUp};
    case Qt::Key_Space:
        return modifiers == Qt::NoModifier ? std::optional(Stroke{Action::ToggleQuickLook}) : std::nullopt;
    case Qt::Key_Backspace:
        return isCommand ? std::optional(Stroke{Action::DeleteSelected}) : std::nullopt;
    case Qt::Key_P:
        return isCommand ? std::optional(Stroke{Action::TogglePinSelected}) : std::nullopt;
    default:
        return std::nullopt;
    }
}
