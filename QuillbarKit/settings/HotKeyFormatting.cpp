#include "settings/HotKeyFormatting.h"

#include "platform/GlobalHotKeys.h"

#include <algorithm>
#include <array>

namespace {
struct NamedKey
{
    quint32 code;
    const char16_t* name;
};

constexpr std::array namedKeys{
    NamedKey{0, u"A"},      NamedKey{11, u"B"},    NamedKey{8, u"C"},     NamedKey{2, u"D"},
    NamedKey{14, u"E"},     NamedKey{3, u"F"},     NamedKey{5, u"G"},     NamedKey{4, u"H"},
    NamedKey{34, u"I"},     NamedKey{38, u"J"},    NamedKey{40, u"K"},    NamedKey{37, u"L"},
    NamedKey{46, u"M"},     NamedKey{45, u"N"},    NamedKey{31, u"O"},    NamedKey{35, u"P"},
    NamedKey{12, u"Q"},     NamedKey{15, u"R"},    NamedKey{1, u"S"},     NamedKey{17, u"T"},
    NamedKey{32, u"U"},     NamedKey{9, u"V"},     NamedKey{13, u"W"},    NamedKey{7, u"X"},
    NamedKey{16, u"Y"},     NamedKey{6, u"Z"},

    NamedKey{29, u"0"},     NamedKey{18, u"1"},    NamedKey{19, u"2"},    NamedKey{20, u"3"},
    NamedKey{21, u"4"},     NamedKey{23, u"5"},    NamedKey{22, u"6"},    NamedKey{26, u"7"},
    NamedKey{28, u"8"},     NamedKey{25, u"9"},

    NamedKey{49, u"Space"}, NamedKey{36, u"↩"},    NamedKey{48, u"⇥"},

    NamedKey{27, u"-"},     NamedKey{24, u"="},    NamedKey{33, u"["},    NamedKey{30, u"]"},
    NamedKey{41, u";"},     NamedKey{39, u"'"},    NamedKey{43, u","},    NamedKey{47, u"."},
    NamedKey{44, u"/"},     NamedKey{42, u"\\"},   NamedKey{50, u"`"},

    NamedKey{122, u"F1"},   NamedKey{120, u"F2"},  NamedKey{99, u"F3"},   NamedKey{118, u"F4"},
    NamedKey{96, u"F5"},    NamedKey{97, u"F6"},   NamedKey{98, u"F7"},   NamedKey{100, u"F8"},
    NamedKey{101, u"F9"},   NamedKey{109, u"F10"}, NamedKey{103, u"F11"}, NamedKey{111, u"F12"},
};
} // namespace

quint32 HotKeyFormatting::carbonModifiers(Qt::KeyboardModifiers modifiers)
{
    quint32 mask = 0;
    if (modifiers & Qt::MetaModifier)
        mask |= HotKeyModifier::command;
    if (modifiers & Qt::ShiftModifier)
        mask |= HotKeyModifier::shift;
    if (modifiers & Qt::AltModifier)
        mask |= HotKeyModifier::option;
    if (modifiers & Qt::ControlModifier)
        mask |= HotKeyModifier::control;
    return mask;
}

QString HotKeyFormatting::modifierGlyphs(quint32 modifiers)
{
    QString glyphs;
    if (modifiers & HotKeyModifier::command)
        glyphs += u'⌘';
    if (modifiers & HotKeyModifier::control)
        glyphs += u'⌃';
    if (modifiers & HotKeyModifier::option)
        glyphs += u'⌥';
    if (modifiers & HotKeyModifier::shift)
        glyphs += u'⇧';
    return glyphs;
}

QString HotKeyFormatting::keyName(quint32 code)
{
    const auto found = std::find_if(namedKeys.begin(), namedKeys.end(),
                                    [&](const NamedKey& key) { return key.code == code; });
    return found == namedKeys.end() ? QStringLiteral("Key %1").arg(code) : QString::fromUtf16(found->name);
}

QString HotKeyFormatting::display(quint32 keyCode, quint32 modifiers)
{
    return modifierGlyphs(modifiers) + keyName(keyCode);
}
