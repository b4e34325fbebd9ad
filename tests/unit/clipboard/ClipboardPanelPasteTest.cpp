#include "unit/clipboard/ClipboardPanelControllerFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {
class ClipboardPanelPasteTest : public ClipboardPanelControllerFixture
{};

class ClipboardPanelStackTest : public ClipboardPanelControllerFixture
{
protected:
    ClipboardPanelStackTest()
    {
        settings.setAutoPasteEnabled(true);
        copyThree();
        open();
        controller.model()->setStackModeEnabled(true);
        for (int row = 2; row >= 0; --row)
            controller.model()->activateRow(row);
    }

    /// The keystroke is sent, and the other program pastes.
    void finishPaste()
    {
        keystrokes.finishPastes();
        pasteboard.read();
    }
};
} // namespace

TEST_F(ClipboardPanelPasteTest, TheKeystrokeComesAfterThePanelHasGoneAndGoesToTheProgramInFrontBefore)
{
    settings.setAutoPasteEnabled(true);
    copyThree();
    open();
    keystrokes.front = PriorWindow{99};
    press(Qt::Key_Return);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"three"_qs));
    queue.advance(0.21);
    EXPECT_THAT(keystrokes.pastes, IsEmpty());
    queue.advance(0.01);
    EXPECT_THAT(keystrokes.pastes, ElementsAre(std::optional(editor)));
}

TEST_F(ClipboardPanelPasteTest, WithoutAutoPasteTheClipStaysOnThePasteboard)
{
    copyThree();
    open();
    press(Qt::Key_Return);
    queue.advance(1);
    EXPECT_EQ(pasteboard.written.size(), 1u);
    EXPECT_THAT(keystrokes.pastes, IsEmpty());
    EXPECT_EQ(keystrokes.prompts, 0);
}

TEST_F(ClipboardPanelPasteTest, WithoutPermissionTheUserIsAskedOnceAndLaterPastesOnlyFillThePasteboard)
{
    settings.setAutoPasteEnabled(true);
    keystrokes.trusted = false;
    copyThree();
    for (int i = 0; i < 3; ++i) {
        open();
        press(Qt::Key_Return);
        finishClosing();
    }
    EXPECT_EQ(pasteboard.written.size(), 3u);
    EXPECT_EQ(keystrokes.prompts, 1);
    EXPECT_THAT(keystrokes.pastes, IsEmpty());
}

TEST_F(ClipboardPanelPasteTest, PlainModeLeavesPlainTextAloneOnThePasteboardAndTheRichFormsInTheClip)
{
    auto rich = text(u"rich"_qs);
    rich.data.emplace(PasteboardType::html, "<b>rich</b>");
    copied(rich);
    isOptionHeld = true;
    open();
    press(Qt::Key_Return);
    finishClosing();
    EXPECT_TRUE(pasteboard.written.back().data.empty());
    isOptionHeld = false;
    open();
    press(Qt::Key_Return);
    EXPECT_EQ(pasteboard.written.back().data.at(PasteboardType::html), "<b>rich</b>");
}

TEST_F(ClipboardPanelPasteTest, PastingBumpsTheClipsDateAndNothingElse)
{
    copyThree();
    const Clip before = clip(u"one"_qs);
    open();
    press(Qt::Key_3, Qt::ControlModifier);
    EXPECT_THAT(texts(), ElementsAre(u"one"_qs, u"three"_qs, u"two"_qs));
    const Clip& after = clip(u"one"_qs);
    EXPECT_GT(after.date, before.date);
    EXPECT_EQ(after.id, before.id);
    EXPECT_EQ(after.uuid, before.uuid);
    EXPECT_EQ(after.pinned, before.pinned);
}

TEST_F(ClipboardPanelPasteTest, APastedSnippetEntersTheHistoryOnce)
{
    settings.setAutoPasteEnabled(true);
    const auto snippet = snippets.add(u"greeting"_qs, u"Hello"_qs);
    for (int i = 0; i < 2; ++i) {
        open();
        controller.model()->onActivateSnippet(snippet);
        EXPECT_FALSE(controller.isOpen());
        finishClosing();
        nextTick();
    }
    EXPECT_THAT(texts(), ElementsAre(u"Hello"_qs));
    EXPECT_EQ(keystrokes.pastes.size(), 2u);
}

TEST_F(ClipboardPanelPasteTest, PasteNextSendsNoKeystroke)
{
    settings.setAutoPasteEnabled(true);
    copyThree();
    open();
    controller.model()->onPasteNext(clip(u"two"_qs));
    queue.advance(1);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"two"_qs));
    EXPECT_THAT(keystrokes.pastes, IsEmpty());
}

TEST_F(ClipboardPanelPasteTest, PlainActivationLeavesOutTheRichFormsAndPastes)
{
    settings.setAutoPasteEnabled(true);
    auto rich = text(u"rich"_qs);
    rich.data.emplace(PasteboardType::html, "<b>rich</b>");
    copied(rich);
    open();
    controller.model()->onActivatePlain(clip(u"rich"_qs));
    EXPECT_THAT(onPasteboard(), ElementsAre(u"rich"_qs));
    EXPECT_TRUE(pasteboard.written.back().data.empty());
    EXPECT_FALSE(controller.isOpen());
    finishClosing();
    EXPECT_EQ(keystrokes.pastes.size(), 1u);
}

TEST_F(ClipboardPanelPasteTest, TheKeystrokeWaitsForAnImageThatTakesLongToDecode)
{
    settings.setAutoPasteEnabled(true);
    copied(image("large"));
    open();
    press(Qt::Key_Return);
    finishClosing();
    EXPECT_THAT(keystrokes.pastes, IsEmpty());
    decode();
    EXPECT_EQ(pasteboard.contents().png, QByteArray("large"));
    EXPECT_EQ(keystrokes.pastes.size(), 1u);
}

TEST_F(ClipboardPanelStackTest, AStepWithAnImageWaitsUntilItIsDecoded)
{
    copied(image("large"));
    controller.model()->onPasteAll({watcher->clips().first(), clip(u"two"_qs)});
    finishClosing();
    EXPECT_THAT(keystrokes.pastes, IsEmpty());
    decode();
    EXPECT_EQ(keystrokes.pastes.size(), 1u);
    finishPaste();
    queue.advance(0.15);
    EXPECT_THAT(onPasteboard(), ElementsAre(QString(), u"two"_qs));
}

TEST_F(ClipboardPanelStackTest, ThePermissionLostMidwayEndsTheKeystrokesAndNotTheCopies)
{
    controller.model()->pasteAll();
    finishClosing();
    keystrokes.trusted = false;
    finishPaste();
    queue.advance(1);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"one"_qs, u"two"_qs, u"three"_qs));
    EXPECT_EQ(keystrokes.pastes.size(), 1u);
    EXPECT_EQ(keystrokes.prompts, 0);
}

TEST_F(ClipboardPanelPasteTest, AControllerThatGoesBetweenTwoStepsPastesNoMore)
{
    copyThree();
    auto doomed = makeController();
    doomed->show({});
    doomed->model()->onPasteAll({clip(u"one"_qs), clip(u"two"_qs)});
    finishClosing();
    keystrokes.finishPastes();
    doomed.reset();
    queue.advance(1);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"one"_qs));
    EXPECT_EQ(keystrokes.pastes.size(), 1u);
}

TEST_F(ClipboardPanelPasteTest, AControllerThatGoesWhileAKeystrokeIsUnderWayPastesNoMore)
{
    copyThree();
    auto doomed = makeController();
    doomed->show({});
    doomed->model()->onPasteAll({clip(u"one"_qs), clip(u"two"_qs)});
    finishClosing();
    doomed.reset();
    keystrokes.finishPastes();
    queue.advance(1);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"one"_qs));
}

TEST_F(ClipboardPanelStackTest, TheStackIsPastedInItsOrderAStepEachFifteenHundredths)
{
    controller.model()->pasteAll();
    EXPECT_THAT(onPasteboard(), IsEmpty());
    finishClosing();
    EXPECT_THAT(onPasteboard(), ElementsAre(u"one"_qs));
    EXPECT_THAT(keystrokes.pastes, ElementsAre(std::optional(editor)));
    queue.advance(0.05);
    finishPaste();
    queue.advance(0.09);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"one"_qs));
    queue.advance(0.01);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"one"_qs, u"two"_qs));
    queue.advance(0.05);
    finishPaste();
    queue.advance(0.1);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"one"_qs, u"two"_qs, u"three"_qs));
    EXPECT_EQ(keystrokes.pastes.size(), 3u);
    EXPECT_THAT(texts(), ElementsAre(u"three"_qs, u"two"_qs, u"one"_qs));
}

TEST_F(ClipboardPanelStackTest, AStepWaitsForTheKeystrokeOfTheOneBefore)
{
    controller.model()->pasteAll();
    finishClosing();
    queue.advance(0.8);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"one"_qs));
    finishPaste();
    queue.advance(0.04);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"one"_qs));
    queue.advance(0.01);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"one"_qs, u"two"_qs));
}

TEST_F(ClipboardPanelStackTest, AStepWaitsForTheOtherProgramToHaveReadTheOneBefore)
{
    controller.model()->pasteAll();
    finishClosing();
    keystrokes.finishPastes();
    queue.advance(0.99);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"one"_qs));
    pasteboard.read();
    queue.advance(0.05);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"one"_qs, u"two"_qs));
    queue.advance(1);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"one"_qs, u"two"_qs));
}

TEST_F(ClipboardPanelStackTest, AProgramThatTakesNothingDelaysAStepByASecond)
{
    controller.model()->pasteAll();
    finishClosing();
    keystrokes.finishPastes();
    queue.advance(1.04);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"one"_qs));
    queue.advance(0.01);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"one"_qs, u"two"_qs));
    // The one that comes after all must not skip a step.
    pasteboard.read();
    queue.advance(0.1);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"one"_qs, u"two"_qs));
}

TEST_F(ClipboardPanelStackTest, AClipThatWasDeletedMeanwhileIsLeftOut)
{
    watcher->deleteClip(clip(u"two"_qs));
    queue.runUntilIdle();
    controller.model()->pasteAll();
    finishClosing();
    finishPaste();
    queue.advance(0.15);
    EXPECT_THAT(onPasteboard(), ElementsAre(u"one"_qs, u"three"_qs));
}
