#pragma once

#include <QString>
#include <Qt>
#include <QtGlobal>

/// How a hot key is written: what the settings window shows of a key code and a modifier mask, and the mask
/// of a key press. Pure functions.
///
/// Codes are virtual key codes: they name a place on the keyboard, not the letter that a layout puts there,
/// and the names are those of the US layout. Masks are of HotKeyModifier's bits.
namespace HotKeyFormatting {
/// The mask of the modifiers held: the logo key is Command and Alt is Option. Others don't count.
quint32 carbonModifiers(Qt::KeyboardModifiers modifiers);

/// Command first, then Control, Option and Shift: another order than other programs have, and users know it.
QString modifierGlyphs(quint32 modifiers);

/// "V", "↩", "F5"; "Key 200" for a code without a name.
QString keyName(quint32 code);

/// The glyphs and the name, such as "⌘⇧V".
QString display(quint32 keyCode, quint32 modifiers);
} // namespace HotKeyFormatting
