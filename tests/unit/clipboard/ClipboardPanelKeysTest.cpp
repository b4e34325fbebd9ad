#include "clipboard/panel/ClipboardPanelKeys.h"

#include <gtest/gtest.h>

using namespace ClipboardPanelKeys;

TEST(ClipboardPanelKeysTest, CommandAndADigitActivateARow)
{
    EXPECT_EQ(stroke(Qt::Key_1, Qt::ControlModifier), (Stroke{Action::ActivateRow, 0}));
    EXPECT_EQ(stroke(Qt::Key_9, Qt::ControlModifier), (Stroke{Action::ActivateRow, 8}));
    EXPECT_EQ(stroke(Qt::Key_3, Qt::ControlModifier | Qt::KeypadModifier), (Stroke{Action::ActivateRow, 2}));
    EXPECT_EQ(stroke(Qt::Key_3, Qt::ControlModifier | Qt::AltModifier), (Stroke{Action::ActivateRow, 2}));
    EXPECT_EQ(stroke(Qt::Key_0, Qt::ControlModifier), std::nullopt);
    EXPECT_EQ(stroke(Qt::Key_1, Qt::NoModifier), std::nullopt);
}

TEST(ClipboardPanelKeysTest, BothReturnKeysActivateTheSelectionWhateverIsHeld)
{
    EXPECT_EQ(stroke(Qt::Key_Return, Qt::NoModifier), Stroke{Action::ActivateSelected});
    EXPECT_EQ(stroke(Qt::Key_Enter, Qt::KeypadModifier), Stroke{Action::ActivateSelected});
    EXPECT_EQ(stroke(Qt::Key_Return, Qt::AltModifier), Stroke{Action::ActivateSelected});
}

TEST(ClipboardPanelKeysTest, TheVerticalArrowsMoveTheSelectionAndTheOthersTheCursor)
{
    EXPECT_EQ(stroke(Qt::Key_Down, Qt::NoModifier), Stroke{Action::MoveDown});
    EXPECT_EQ(stroke(Qt::Key_Up, Qt::KeypadModifier), Stroke{Action::MoveUp});
    EXPECT_EQ(stroke(Qt::Key_Left, Qt::NoModifier), std::nullopt);
}

TEST(ClipboardPanelKeysTest, SpaceAloneLooksQuickly)
{
    EXPECT_EQ(stroke(Qt::Key_Space, Qt::NoModifier), Stroke{Action::ToggleQuickLook});
    EXPECT_EQ(stroke(Qt::Key_Space, Qt::ShiftModifier), std::nullopt);
}

TEST(ClipboardPanelKeysTest, CommandWithDeleteOrPActsOnTheSelection)
{
    EXPECT_EQ(stroke(Qt::Key_Backspace, Qt::ControlModifier), Stroke{Action::DeleteSelected});
    EXPECT_EQ(stroke(Qt::Key_P, Qt::ControlModifier), Stroke{Action::TogglePinSelected});
    EXPECT_EQ(stroke(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier), Stroke{Action::TogglePinSelected});
    EXPECT_EQ(stroke(Qt::Key_Backspace, Qt::NoModifier), std::nullopt);
    EXPECT_EQ(stroke(Qt::Key_P, Qt::NoModifier), std::nullopt);
}

TEST(ClipboardPanelKeysTest, EscapeIsTheViews)
{
    EXPECT_EQ(stroke(Qt::Key_Escape, Qt::NoModifier), std::nullopt);
}
