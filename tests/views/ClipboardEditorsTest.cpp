#include "ClipboardPanelViewFixture.h"

namespace {
/// What is typed into clips and snippets, and what of it is kept.
class ClipboardEditorsTest : public ClipboardPanelViewFixture
{
protected:
    const QString odd = u"a\u00a0b\r\nc\u2028d\re\u2029f"_qs;

    void editFirst()
    {
        hover(clipRows().at(0));
        tap(u"Edit"_qs);
        ASSERT_TRUE(model.isEditingAnyClip());
    }
    void editSnippet(const QString& title)
    {
        tap(u"Snippets"_qs);
        tap(control(title), Qt::RightButton);
        tap(u"Edit"_qs);
    }
    void save()
    {
        QTest::keyClick(&window, Qt::Key_Return, Qt::ControlModifier);
        settle();
    }
};
} // namespace

TEST_F(ClipboardEditorsTest, ControlReturnInTheTitleSavesTheSnippet)
{
    show();
    tap(u"Snippets"_qs);
    tap(u"New snippet"_qs);
    type(u"Hi"_qs);
    save();
    ASSERT_EQ(snippets.snippets().size(), 1);
    EXPECT_EQ(snippets.snippets().first().title, u"Hi"_qs);
    EXPECT_EQ(model.snippetEditing(), SnippetEdit::none());
    EXPECT_TRUE(view->property("searchFocused").toBool());
}

TEST_F(ClipboardEditorsTest, ReturnAloneGoesFromTheTitleToTheText)
{
    show();
    tap(u"Snippets"_qs);
    tap(u"New snippet"_qs);
    type(u"Hi"_qs);
    QTest::keyClick(&window, Qt::Key_Return);
    type(u"Hello"_qs);
    save();
    ASSERT_EQ(snippets.snippets().size(), 1);
    EXPECT_EQ(snippets.snippets().first().text, u"Hello"_qs);
}

TEST_F(ClipboardEditorsTest, AClipThatIsSavedUnchangedKeepsEveryCharacter)
{
    copiedAll({odd});
    show();
    editFirst();
    save();
    EXPECT_EQ(watcher->clips().first().text, odd);
}

TEST_F(ClipboardEditorsTest, AChangedClipKeepsItsNoBreakSpacesAndHasLineFeeds)
{
    copiedAll({odd});
    show();
    editFirst();
    type(u"!"_qs);
    save();
    EXPECT_EQ(watcher->clips().first().text, u"a\u00a0b\nc\nd\ne\nf!"_qs);
}

TEST_F(ClipboardEditorsTest, AChangeThatIsUndoneIsNone)
{
    copiedAll({odd});
    show();
    editFirst();
    type(u"!"_qs);
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    save();
    EXPECT_EQ(watcher->clips().first().text, odd);
}

TEST_F(ClipboardEditorsTest, ANewLineIsALineFeedWithShiftToo)
{
    copiedAll({u"a"_qs});
    show();
    editFirst();
    QTest::keyClick(&window, Qt::Key_Return);
    type(u"b"_qs);
    QTest::keyClick(&window, Qt::Key_Return, Qt::ShiftModifier);
    type(u"c"_qs);
    save();
    EXPECT_EQ(watcher->clips().first().text, u"a\nb\nc"_qs);
}

TEST_F(ClipboardEditorsTest, ASnippetWhoseTitleAloneIsChangedKeepsItsText)
{
    snippets.add(u"Hi"_qs, odd);
    show();
    editSnippet(u"Hi"_qs);
    QTest::keyClick(&window, Qt::Key_End);
    type(u"!"_qs);
    save();
    EXPECT_EQ(snippets.snippets().first().title, u"Hi!"_qs);
    EXPECT_EQ(snippets.snippets().first().text, odd);
}

TEST_F(ClipboardEditorsTest, AChangedSnippetKeepsItsNoBreakSpaces)
{
    snippets.add(u"Hi"_qs, u"a\u00a0b"_qs);
    show();
    editSnippet(u"Hi"_qs);
    QTest::keyClick(&window, Qt::Key_Return);
    QTest::keyClick(&window, Qt::Key_End);
    type(u"!"_qs);
    save();
    EXPECT_EQ(snippets.snippets().first().text, u"a\u00a0b!"_qs);
}
