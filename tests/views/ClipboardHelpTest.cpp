#include "ClipboardPanelViewFixture.h"

using testing::IsSupersetOf;
using testing::UnorderedElementsAre;

namespace {
/// The words that explain the panel: helps and prompts.
class ClipboardHelpTest : public ClipboardPanelViewFixture
{
protected:
    /// Of all controls in sight, each once.
    QSet<QString> helps()
    {
        QSet<QString> helps;
        for (auto* item : visibleItems([](QQuickItem* item) { return item->property("help").isValid(); })) {
            if (const auto help = item->property("help").toString(); !help.isEmpty())
                helps.insert(help);
        }
        return helps;
    }
    QStringList prompts()
    {
        QStringList prompts;
        for (auto* item :
             visibleItems([](QQuickItem* item) { return item->property("editing").isValid(); })) {
            if (const auto prompt = item->property("prompt").toString(); !prompt.isEmpty())
                prompts.append(prompt);
        }
        return prompts;
    }
};
} // namespace

TEST_F(ClipboardHelpTest, OfThePanelAndARow)
{
    copiedAll({u"a"_qs});
    show();
    EXPECT_THAT(helps(), UnorderedElementsAre(u"Stack mode: queue clips and paste them in order"_qs,
                                              u"Clear clipboard history"_qs, u"New board"_qs, u"Copy"_qs,
                                              u"Edit"_qs, u"Pin"_qs, u"Delete"_qs, u"Settings"_qs,
                                              u"About Quillbar"_qs, u"Quit Quillbar"_qs));
    EXPECT_THAT(prompts(), UnorderedElementsAre(u"Search"_qs));
    watcher->togglePin(clip(u"a"_qs));
    settle();
    EXPECT_TRUE(helps().contains(u"Unpin"_qs));
    EXPECT_FALSE(helps().contains(u"Pin"_qs));
}

TEST_F(ClipboardHelpTest, OfTheQueue)
{
    copiedAll({u"a"_qs});
    show();
    enqueue({u"a"_qs});
    settle();
    EXPECT_THAT(helps(), IsSupersetOf({u"Stack mode on — tap clips to queue them"_qs, u"Add to stack"_qs,
                                       u"Remove from queue"_qs, u"Paste every queued clip in order"_qs,
                                       u"Paste the front item and close"_qs, u"Empty the queue"_qs}));
    EXPECT_FALSE(helps().contains(u"Stack mode: queue clips and paste them in order"_qs));
    EXPECT_FALSE(helps().contains(u"Copy"_qs));
}

TEST_F(ClipboardHelpTest, OfTheEditorOfAClip)
{
    copiedAll({u"a"_qs});
    show();
    hover(clipRows().at(0));
    tap(u"Edit"_qs);
    EXPECT_THAT(helps(), IsSupersetOf({u"Save (⌘↩)"_qs, u"Cancel (esc)"_qs}));
    EXPECT_FALSE(helps().contains(u"Edit"_qs));
}

TEST_F(ClipboardHelpTest, OfTheSnippets)
{
    snippets.add(u"Hi"_qs, u"Hello"_qs);
    show();
    tap(u"Snippets"_qs);
    EXPECT_THAT(helps(), IsSupersetOf({u"Save a reusable snippet"_qs, u"Edit"_qs, u"Delete"_qs}));
    tap(u"New snippet"_qs);
    EXPECT_TRUE(helps().contains(u"Save (⌘↩)"_qs));
    EXPECT_THAT(prompts(), UnorderedElementsAre(u"Search"_qs, u"Title"_qs));
}

TEST_F(ClipboardHelpTest, OfTheNamesOfBoards)
{
    copiedAll({u"a"_qs});
    boardOf(u"Work"_qs, {});
    show();
    tap(u"New board"_qs);
    EXPECT_THAT(prompts(), UnorderedElementsAre(u"Search"_qs, u"Name"_qs));
    QTest::keyClick(&window, Qt::Key_Escape);
    settle();
    tap(control(u"Work"_qs), Qt::RightButton);
    tap(u"Rename"_qs);
    EXPECT_THAT(prompts(), UnorderedElementsAre(u"Search"_qs, u"Name"_qs));
    QTest::keyClick(&window, Qt::Key_Escape);
    settle();
    choose(0, u"Add to board"_qs);
    tap(u"New board…"_qs);
    EXPECT_THAT(prompts(), UnorderedElementsAre(u"Search"_qs, u"Board name"_qs));
}
