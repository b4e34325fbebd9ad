#include "ClipboardPanelViewFixture.h"

#include <QFont>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

namespace {
/// What a row shows of its clip, and what its menu does.
class ClipboardRowsTest : public ClipboardPanelViewFixture
{
protected:
    static PasteboardContents picture() { return image("png"); }

    QQuickItem* row() { return clipRows().at(0); }
    /// The pictures that are shown in the first row, thumbnails and icons.
    QList<QQuickItem*> pictures()
    {
        return visibleItems([this](QQuickItem* item) {
            return row()->isAncestorOf(item) && item->property("cornerRadius").isValid() &&
                   item->property("exists").toBool();
        });
    }
    bool waitForPictures(qsizetype count)
    {
        return QTest::qWaitFor([&] { return pictures().size() == count; });
    }
};
} // namespace

// The menu

TEST_F(ClipboardRowsTest, TheMenuCopiesEditsAndPastesPlain)
{
    copiedAll({u"a"_qs, u"b"_qs});
    QStringList plain;
    model.onActivatePlain = [&](const Clip& clip) { plain.append(clip.text); };
    show();
    choose(1, u"Copy"_qs);
    ASSERT_EQ(activated.size(), 1);
    EXPECT_EQ(activated.first().first, u"a"_qs);
    choose(1, u"Paste as plain text"_qs);
    EXPECT_THAT(plain, ElementsAre(u"a"_qs));
    EXPECT_EQ(activated.size(), 1);
    choose(1, u"Edit"_qs);
    EXPECT_TRUE(model.isEditing(clip(u"a"_qs)));
    type(u"!"_qs);
    QTest::keyClick(&window, Qt::Key_Return, Qt::ControlModifier);
    settle();
    EXPECT_THAT(shown(), UnorderedElementsAre(u"a!"_qs, u"b"_qs));
}

TEST_F(ClipboardRowsTest, TheMenuPinsUnpinsAndDeletes)
{
    copiedAll({u"a"_qs, u"b"_qs});
    show();
    choose(1, u"Pin"_qs);
    EXPECT_TRUE(clip(u"a"_qs).pinned);
    EXPECT_THAT(shown(), ElementsAre(u"a"_qs, u"b"_qs));
    choose(0, u"Unpin"_qs);
    EXPECT_FALSE(clip(u"a"_qs).pinned);
    EXPECT_THAT(shown(), ElementsAre(u"b"_qs, u"a"_qs));
    choose(1, u"Delete"_qs);
    EXPECT_THAT(shown(), ElementsAre(u"b"_qs));
}

TEST_F(ClipboardRowsTest, TheMenuAddsToABoardAndRemovesFromTheOneThatIsShown)
{
    copiedAll({u"a"_qs, u"b"_qs});
    boardOf(u"Home"_qs, {});
    boardOf(u"Work"_qs, {u"a"_qs});
    const auto onBoard = [this](int board) { return watcher->boards().at(board).clipUUIDs; };
    show();
    tap(clipRows().at(0), Qt::RightButton);
    tap(u"Add to board"_qs);
    EXPECT_THAT(menuEntries(),
                ElementsAre(u"Copy"_qs, u"Edit"_qs, u"Paste as plain text"_qs, u"Pin"_qs, u"Add to board"_qs,
                            u"Home"_qs, u"Work"_qs, u"New board…"_qs, u"Delete"_qs));
    tap(u"Work"_qs);
    EXPECT_THAT(onBoard(0), IsEmpty());
    EXPECT_THAT(onBoard(1), ElementsAre(clip(u"a"_qs).uuid, clip(u"b"_qs).uuid));
    tap(u"Work"_qs);
    tap(clipRows().at(0), Qt::RightButton);
    EXPECT_THAT(menuEntries(), ElementsAre(u"Copy"_qs, u"Edit"_qs, u"Paste as plain text"_qs, u"Pin"_qs,
                                           u"Add to board"_qs, u"Remove from this board"_qs, u"Delete"_qs));
    tap(u"Remove from this board"_qs);
    EXPECT_THAT(onBoard(1), ElementsAre(clip(u"b"_qs).uuid));
    EXPECT_EQ(watcher->clips().size(), 2);
}

TEST_F(ClipboardRowsTest, AnImageIsNeitherEditedNorPastedPlain)
{
    copied(picture());
    show();
    tap(row(), Qt::RightButton);
    EXPECT_THAT(menuEntries(), ElementsAre(u"Copy"_qs, u"Pin"_qs, u"Add to board"_qs, u"Delete"_qs));
    tap(u"Copy"_qs);
    EXPECT_EQ(activated.size(), 1);
    hover(row());
    EXPECT_FALSE(control(u"Edit"_qs));
}

// The preview

TEST_F(ClipboardRowsTest, AColourHasASwatchAndItsHexMonospaced)
{
    copiedAll({u"#FF8800"_qs});
    show();
    EXPECT_EQ(familyOf(u"#FF8800"_qs), u"JetBrains Mono"_qs);
    const auto swatches = visibleItems([this](QQuickItem* item) {
        return row()->isAncestorOf(item) && item->property("color").value<QColor>() == QColor(0xff, 0x88, 0);
    });
    EXPECT_EQ(swatches.size(), 1);
}

TEST_F(ClipboardRowsTest, CodeIsMonospacedAndOtherTextIsNot)
{
    const auto code = u"int main() {\n    return 0;\n}"_qs;
    copiedAll({code, u"plain words"_qs});
    ASSERT_EQ(clip(code).detectedKind.type(), DetectedKind::Type::Code);
    show();
    EXPECT_EQ(familyOf(code), u"JetBrains Mono"_qs);
    EXPECT_EQ(familyOf(u"plain words"_qs), u"Inter"_qs);
}

TEST_F(ClipboardRowsTest, ALinkShowsTheTitleAndIconOfItsPage)
{
    const auto url = u"https://example.com/page"_qs;
    pages[QUrl(url)] = {u"A page"_qs, QByteArray("icon")};
    copiedAll({url});
    show();
    EXPECT_THAT(texts(), Contains(u"A page"_qs));
    EXPECT_THAT(texts(), Contains(url));
    EXPECT_THAT(symbols(row()), Contains(u"link"_qs));
    EXPECT_TRUE(waitForPictures(1));
}

TEST_F(ClipboardRowsTest, ALinkWhosePageHasOnlyAnIconShowsItBesideTheURL)
{
    const auto url = u"https://example.com/icon"_qs;
    pages[QUrl(url)] = {std::nullopt, QByteArray("icon")};
    copiedAll({url});
    show();
    EXPECT_TRUE(waitForPictures(1));
    auto* line = textItem(url);
    ASSERT_TRUE(line);
    EXPECT_GT(line->x(), pictures().first()->x());
}

TEST_F(ClipboardRowsTest, ALinkWhosePageGaveNothingIsItsURL)
{
    const auto url = u"https://example.com/nothing"_qs;
    copiedAll({url});
    show();
    auto* line = textItem(url);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->x(), 0);
    EXPECT_THAT(pictures(), IsEmpty());
}

TEST_F(ClipboardRowsTest, AnImageShowsItsThumbnailAndSize)
{
    copied(picture());
    show();
    EXPECT_THAT(texts(), Contains(clipRows().at(0)->property("displayText").toString()));
    ASSERT_TRUE(waitForPictures(1));
    EXPECT_EQ(pictures().first()->property("maxPixel"), 72);
    EXPECT_THAT(symbols(row()), ElementsAre(u"photo"_qs)) << "the glyph alone";
}

TEST_F(ClipboardRowsTest, AnImageWithoutAThumbnailShowsAPhotoInItsPlace)
{
    copied(picture());
    show();
    ASSERT_TRUE(waitForPictures(1));
    pictures().first()->setProperty("image", QImage());
    EXPECT_THAT(symbols(row()), ElementsAre(u"photo"_qs, u"photo"_qs));
    EXPECT_THAT(pictures(), IsEmpty());
}

TEST_F(ClipboardRowsTest, ARowTellsTheProgramThatItsClipIsFrom)
{
    workspace.frontmost = u"org.example.Editor"_qs;
    workspace.names[u"org.example.Editor"_qs] = u"Editor"_qs;
    QImage icon(16, 16, QImage::Format_ARGB32);
    icon.fill(Qt::red);
    workspace.icons[u"org.example.Editor"_qs] = icon;
    copiedAll({u"a"_qs});
    show();
    EXPECT_THAT(texts(), Contains(u"Editor"_qs));
    EXPECT_EQ(pictures().size(), 1);
    EXPECT_EQ(row()->property("name"), u"1 a, Editor"_qs);
}

TEST_F(ClipboardRowsTest, OfAProgramWithoutANameTheIconIsShown)
{
    workspace.frontmost = u"org.example.Nameless"_qs;
    QImage icon(16, 16, QImage::Format_ARGB32);
    icon.fill(Qt::red);
    workspace.icons[u"org.example.Nameless"_qs] = icon;
    copiedAll({u"a"_qs});
    show();
    EXPECT_EQ(pictures().size(), 1);
}

TEST_F(ClipboardRowsTest, ARowOfAnUnknownProgramTellsNone)
{
    workspace.frontmost = u"org.example.Gone"_qs;
    copiedAll({u"a"_qs});
    show();
    EXPECT_THAT(pictures(), IsEmpty());
    EXPECT_EQ(row()->property("name"), u"1 a"_qs);
}

TEST_F(ClipboardRowsTest, APinTakesThePlaceOfTheGlyph)
{
    copiedAll({u"one\ntwo"_qs});
    show();
    EXPECT_THAT(symbols(row()), ElementsAre(u"text.alignleft"_qs));
    choose(0, u"Pin"_qs);
    hover(control(u"All"_qs));
    EXPECT_THAT(symbols(row()), ElementsAre(u"pin.fill"_qs));
    EXPECT_THAT(symbols(row()), Not(Contains(u"text.alignleft"_qs)));
}

TEST_F(ClipboardRowsTest, OnlyTheFirstNineRowsHaveANumberWhateverIsSearchedAndFiltered)
{
    QStringList many;
    for (int i = 0; i < 12; ++i)
        many.append(QStringLiteral("clip %1").arg(i));
    copiedAll(many);
    show(900);
    const auto numbers = [this] {
        QStringList found;
        for (auto* row : clipRows())
            found.append(row->property("name").toString().section(u' ', 0, 0));
        return found;
    };
    EXPECT_THAT(numbers(), ElementsAre(u"1"_qs, u"2"_qs, u"3"_qs, u"4"_qs, u"5"_qs, u"6"_qs, u"7"_qs, u"8"_qs,
                                       u"9"_qs, u"clip"_qs, u"clip"_qs, u"clip"_qs));
    // As they are drawn, too.
    const auto drawn = [this] {
        QStringList found =
            ItemsInSight::property("text", visibleItems([](QQuickItem* item) {
                                       return item->property("fadeSeconds").isValid() &&
                                              item->parentItem()->property("editDraft").isValid();
                                   }));
        found.sort();
        return found;
    };
    const QStringList nine{u"1"_qs, u"2"_qs, u"3"_qs, u"4"_qs, u"5"_qs, u"6"_qs, u"7"_qs, u"8"_qs, u"9"_qs};
    EXPECT_EQ(drawn(), nine);
    type(u"clip 1"_qs);
    EXPECT_THAT(numbers(), ElementsAre(u"1"_qs, u"2"_qs, u"3"_qs));
    model.setQuery({});

    for (const auto& text : many)
        watcher->togglePin(clip(text));
    model.setBoardFilter(BoardFilter::pinned());
    settle();
    EXPECT_EQ(numbers().size(), 12);
    EXPECT_EQ(numbers().first(9), nine);
    EXPECT_EQ(drawn(), nine);

    model.setBoardFilter(BoardFilter::board(boardOf(u"Work"_qs, many.first(10))));
    settle();
    EXPECT_EQ(numbers(), nine + QStringList{u"clip"_qs});
    EXPECT_EQ(drawn(), nine);
}
