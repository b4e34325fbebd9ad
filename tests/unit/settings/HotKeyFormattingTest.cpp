#include "settings/HotKeyFormatting.h"

#include "platform/GlobalHotKeys.h"

#include <QSet>
#include <QStringList>

#include <gmock/gmock.h>

namespace {
using HotKeyModifier::command;
using HotKeyModifier::control;
using HotKeyModifier::option;
using HotKeyModifier::shift;

QStringList names(const QList<quint32>& codes)
{
    QStringList names;
    for (const auto code : codes)
        names.append(HotKeyFormatting::keyName(code));
    return names;
}

QStringList letters(const QString& text)
{
    return text.split(QString(), Qt::SkipEmptyParts);
}

TEST(HotKeyFormatting, NamesLettersByTheirPlaceOnTheKeyboard)
{
    EXPECT_EQ(
        names({0, 11, 8, 2, 14, 3, 5, 4, 34, 38, 40, 37, 46, 45, 31, 35, 12, 15, 1, 17, 32, 9, 13, 7, 16, 6}),
        letters(QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ")));
}

TEST(HotKeyFormatting, NamesDigits)
{
    EXPECT_EQ(names({29, 18, 19, 20, 21, 23, 22, 26, 28, 25}), letters(QStringLiteral("0123456789")));
}

TEST(HotKeyFormatting, NamesPunctuation)
{
    EXPECT_EQ(names({27, 24, 33, 30, 41, 39, 43, 47, 44, 42, 50}), letters(QStringLiteral("-=[];',./\\`")));
}

TEST(HotKeyFormatting, NamesBlankReturnAndTab)
{
    EXPECT_EQ(names({49, 36, 48}),
              (QStringList{QStringLiteral("Space"), QStringLiteral("↩"), QStringLiteral("⇥")}));
}

TEST(HotKeyFormatting, NamesFunctionKeys)
{
    QStringList expected;
    for (int number = 1; number <= 12; ++number)
        expected.append(QStringLiteral("F%1").arg(number));
    EXPECT_EQ(names({122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 103, 111}), expected);
}

TEST(HotKeyFormatting, KnowsSixtyTwoKeysByDistinctNames)
{
    QSet<QString> known;
    int count = 0;
    for (quint32 code = 0; code < 256; ++code) {
        const QString name = HotKeyFormatting::keyName(code);
        if (name.startsWith(u"Key "))
            continue;
        known.insert(name);
        ++count;
    }
    EXPECT_EQ(count, 62);
    EXPECT_EQ(known.size(), 62);
}

TEST(HotKeyFormatting, WritesTheCodeOfAKeyWithoutAName)
{
    EXPECT_EQ(HotKeyFormatting::keyName(200), QStringLiteral("Key 200"));
    EXPECT_EQ(HotKeyFormatting::keyName(53), QStringLiteral("Key 53"));
    EXPECT_EQ(HotKeyFormatting::keyName(0xFFFFFFFF), QStringLiteral("Key 4294967295"));
}

TEST(HotKeyFormatting, WritesModifiersInTheOrderCommandControlOptionShift)
{
    EXPECT_EQ(HotKeyFormatting::modifierGlyphs(shift | option | control | command), QStringLiteral("⌘⌃⌥⇧"));
    EXPECT_EQ(HotKeyFormatting::modifierGlyphs(option), QStringLiteral("⌥"));
    EXPECT_EQ(HotKeyFormatting::modifierGlyphs(0), QString());
}

TEST(HotKeyFormatting, LeavesOutBitsOfNoModifier)
{
    EXPECT_EQ(HotKeyFormatting::modifierGlyphs(~(shift | option | control | command)), QString());
}

TEST(HotKeyFormatting, WritesGlyphsThenTheKey)
{
    EXPECT_EQ(HotKeyFormatting::display(9, 768), QStringLiteral("⌘⇧V"));
    EXPECT_EQ(HotKeyFormatting::display(49, control), QStringLiteral("⌃Space"));
    EXPECT_EQ(HotKeyFormatting::display(122, 0), QStringLiteral("F1"));
}

TEST(HotKeyFormatting, TurnsHeldModifiersIntoTheMask)
{
    EXPECT_EQ(HotKeyFormatting::carbonModifiers(Qt::MetaModifier), 256U);
    EXPECT_EQ(HotKeyFormatting::carbonModifiers(Qt::ShiftModifier), 512U);
    EXPECT_EQ(HotKeyFormatting::carbonModifiers(Qt::AltModifier), 2048U);
    EXPECT_EQ(HotKeyFormatting::carbonModifiers(Qt::ControlModifier), 4096U);
    EXPECT_EQ(HotKeyFormatting::carbonModifiers(Qt::MetaModifier | Qt::ShiftModifier), 768U);
}

TEST(HotKeyFormatting, IgnoresOtherModifiers)
{
    EXPECT_EQ(HotKeyFormatting::carbonModifiers(Qt::KeypadModifier | Qt::GroupSwitchModifier), 0U);
    EXPECT_EQ(HotKeyFormatting::carbonModifiers(Qt::NoModifier), 0U);
}
} // namespace
