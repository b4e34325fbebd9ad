#include "clipboard/rows/ClipViewTexts.h"

#include <gmock/gmock.h>

using Kind = ClipRowsModel::Kind;

TEST(ClipViewTextsTest, AGlyphTellsWhatAClipIs)
{
    const auto glyph = [](Kind kind, const QString& text, int files) {
        return ClipViewTexts::glyph(kind, text, files, true);
    };
    EXPECT_EQ(glyph(Kind::Text, u" HTTPS://example.org\nmore"_qs, 0), u"link");
    EXPECT_EQ(glyph(Kind::Text, u"http://example.org"_qs, 0), u"link");
    EXPECT_EQ(glyph(Kind::Text, u"see http://example.org"_qs, 0), u"text.quote");
    EXPECT_EQ(glyph(Kind::Text, u"one"_qs, 0), u"text.quote");
    EXPECT_EQ(glyph(Kind::Text, u"one\ntwo"_qs, 0), u"text.alignleft");
    EXPECT_EQ(glyph(Kind::Image, {}, 0), u"photo");
    EXPECT_EQ(glyph(Kind::File, {}, 0), u"doc");
    EXPECT_EQ(glyph(Kind::File, {}, 1), u"doc");
    EXPECT_EQ(glyph(Kind::File, {}, 2), u"doc.on.doc");
}

TEST(ClipViewTextsTest, TheDrawerDoesNotMarkLinks)
{
    EXPECT_EQ(ClipViewTexts::glyph(Kind::Text, u"http://example.org"_qs, 0, false), u"text.quote");
}

TEST(ClipViewTextsTest, APreviewIsTheBeginningWithoutBlankLines)
{
    EXPECT_EQ(ClipViewTexts::plainTextPreview(u" \n\n    indented\nnext \n"_qs), u"    indented\nnext");
    EXPECT_EQ(ClipViewTexts::plainTextPreview(u" \n "_qs), u"");
    EXPECT_EQ(ClipViewTexts::plainTextPreview({}), u"");
}

TEST(ClipViewTextsTest, APreviewIsShortAndNeverEndsInHalfACharacter)
{
    const QString half = QString(ClipViewTexts::previewCharacters - 1, u'x');
    EXPECT_EQ(ClipViewTexts::plainTextPreview(half + QChar(u'y') + half).size(),
              ClipViewTexts::previewCharacters);
    EXPECT_EQ(ClipViewTexts::plainTextPreview(half + QString::fromUcs4(U"\U0001F600") + half), half);
}

TEST(ClipViewTextsTest, AnEmptyListTellsWhy)
{
    using Filter = BoardFilter::Kind;
    EXPECT_EQ(ClipViewTexts::emptyListMessage(u" x "_qs, Filter::Board), u"No matches for “ x ”");
    EXPECT_EQ(ClipViewTexts::emptyListMessage(u"  "_qs, Filter::Board),
              u"This board is empty.\nRight-click a clip to add it.");
    EXPECT_EQ(ClipViewTexts::emptyListMessage({}, Filter::All), u"Nothing here yet");
    EXPECT_EQ(ClipViewTexts::emptyListMessage({}, Filter::Pinned), u"No pinned clips yet");
    EXPECT_EQ(ClipViewTexts::emptyListMessage({}, Filter::Snippets), u"No snippets yet");
}

TEST(ClipViewTextsTest, ASwatchIsTheColourItself)
{
    EXPECT_EQ(ClipViewTexts::swatch(u"#FF0080"_qs).rgba(), 0xFFFF0080U);
    EXPECT_EQ(ClipViewTexts::swatch(u"#FF008000"_qs).alpha(), 0);
    EXPECT_EQ(ClipViewTexts::swatch(u"no colour"_qs).alpha(), 0);
}
