#include "platform/linux/PasteboardOffer.h"

#include <gmock/gmock.h>

#include <map>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {
/// A program that offers `answers`, in that order of targets, and refuses what it has an empty answer for.
class Owner
{
public:
    Owner(std::initializer_list<std::pair<const char*, QByteArray>> answers)
    {
        for (const auto& [target, bytes] : answers) {
            m_targets.append(QString::fromLatin1(target));
            m_answers[m_targets.last()] = bytes;
        }
    }

    PasteboardOffer yieldAll()
    {
        PasteboardOffer offer(m_targets);
        while (const auto target = offer.nextTarget()) {
            asked.push_back(target->toStdString());
            const QByteArray& bytes = m_answers.at(*target);
            if (bytes.isNull())
                offer.skip();
            else
                offer.take(bytes, *target);
        }
        return offer;
    }

    std::vector<std::string> asked;

private:
    QStringList m_targets;
    std::map<QString, QByteArray> m_answers;
};
} // namespace

TEST(PasteboardOfferTest, FilesAreTakenAndNothingElseAskedFor)
{
    Owner owner{{"image/png", "p"}, {"UTF8_STRING", "a"}, {"text/uri-list", "file:///a\r\n"}};
    const PasteboardOffer offer = owner.yieldAll();
    EXPECT_THAT(owner.asked, ElementsAre("text/uri-list"));
    EXPECT_THAT(offer.contents().filePaths, ElementsAre(QStringLiteral("/a")));
    EXPECT_EQ(offer.contents().string, std::nullopt);
    EXPECT_THAT(offer.contents().types,
                ElementsAre(PasteboardType::png, PasteboardType::plainText, PasteboardType::fileURL));
}

TEST(PasteboardOfferTest, TheFileManagersFormStepsInForTheList)
{
    Owner owner{{"text/uri-list", {}}, {"x-special/gnome-copied-files", "copy\nfile:///a"}};
    EXPECT_THAT(owner.yieldAll().contents().filePaths, ElementsAre(QStringLiteral("/a")));
}

TEST(PasteboardOfferTest, AListWithoutLocalFilesLetsTheTextThrough)
{
    Owner owner{{"text/uri-list", "https://example.org/\r\n"}, {"UTF8_STRING", "https://example.org/"}};
    const PasteboardOffer offer = owner.yieldAll();
    EXPECT_THAT(offer.contents().filePaths, IsEmpty());
    EXPECT_EQ(offer.contents().string, QStringLiteral("https://example.org/"));
}

TEST(PasteboardOfferTest, TextComesWithItsRichFormsAndWithoutTheImage)
{
    Owner owner{
        {"image/png", "p"}, {"text/html", "<b>a</b>"}, {"text/rtf", "{\\rtf a}"}, {"UTF8_STRING", "a"}};
    const PasteboardOffer offer = owner.yieldAll();
    EXPECT_THAT(owner.asked, ElementsAre("UTF8_STRING", "text/rtf", "text/html"));
    EXPECT_EQ(offer.contents().string, QStringLiteral("a"));
    EXPECT_EQ(offer.contents().data, (std::map<QString, QByteArray>{{PasteboardType::rtf, "{\\rtf a}"},
                                                                    {PasteboardType::html, "<b>a</b>"}}));
    EXPECT_TRUE(offer.image().isEmpty());
}

TEST(PasteboardOfferTest, BlankTextIsKeptAndTheImageIsAskedFor)
{
    Owner owner{{"UTF8_STRING", " \n\t"}, {"text/html", "<br>"}, {"image/png", "p"}};
    const PasteboardOffer offer = owner.yieldAll();
    EXPECT_THAT(owner.asked, ElementsAre("UTF8_STRING", "image/png"));
    EXPECT_EQ(offer.contents().string, QStringLiteral(" \n\t"));
    EXPECT_EQ(offer.image(), "p");
}

TEST(PasteboardOfferTest, TheNextBestFormIsTriedWhenOneIsRefusedOrEmpty)
{
    Owner owner{{"UTF8_STRING", {}}, {"text/plain", ""}, {"STRING", "\xe4"}};
    EXPECT_EQ(owner.yieldAll().contents().string, QStringLiteral("ä"));
    EXPECT_THAT(owner.asked, ElementsAre("UTF8_STRING", "text/plain", "STRING"));
}

TEST(PasteboardOfferTest, OneOfEachFormIsEnough)
{
    Owner owner{{"UTF8_STRING", "a"},
                {"STRING", "a"},
                {"application/rtf", "r"},
                {"text/rtf", "r"},
                {"image/png", "p"}};
    owner.yieldAll();
    EXPECT_THAT(owner.asked, ElementsAre("UTF8_STRING", "text/rtf"));
}

TEST(PasteboardOfferTest, RichFormsWithoutTextAreOfNoUse)
{
    Owner owner{{"text/html", "<img>"}, {"image/jpeg", {}}, {"image/bmp", "b"}, {"image/tiff", "t"}};
    EXPECT_EQ(owner.yieldAll().image(), "b");
    EXPECT_THAT(owner.asked, ElementsAre("image/bmp"));
}

TEST(PasteboardOfferTest, NothingIsAskedOfAConcealedOffer)
{
    Owner owner{{"UTF8_STRING", "secret"}, {"x-kde-passwordManagerHint", "1"}};
    const PasteboardOffer offer = owner.yieldAll();
    EXPECT_THAT(owner.asked, IsEmpty());
    EXPECT_THAT(offer.contents().types, ElementsAre(PasteboardType::concealed, PasteboardType::plainText,
                                                    QStringLiteral("x-kde-passwordManagerHint")));
}

TEST(PasteboardOfferTest, ATextThatIsTooLargeIsNotReplacedByAnotherForm)
{
    PasteboardOffer offer({QStringLiteral("UTF8_STRING"), QStringLiteral("STRING"),
                           QStringLiteral("text/html"), QStringLiteral("image/png")});
    EXPECT_EQ(offer.nextForm(), PasteboardTypes::Form::Text);
    offer.skipTooLarge();
    EXPECT_EQ(offer.nextTarget(), std::nullopt);
    EXPECT_EQ(offer.nextForm(), std::nullopt);
    EXPECT_FALSE(offer.hasAny());
}

TEST(PasteboardOfferTest, ARichFormThatIsTooLargeIsMissingAlone)
{
    PasteboardOffer offer({QStringLiteral("UTF8_STRING"), QStringLiteral("text/rtf"),
                           QStringLiteral("application/rtf"), QStringLiteral("text/html")});
    offer.take("a", QStringLiteral("UTF8_STRING"));
    EXPECT_EQ(offer.nextTarget(), QStringLiteral("text/rtf"));
    offer.skipTooLarge();
    EXPECT_EQ(offer.nextTarget(), QStringLiteral("text/html"));
    offer.skipTooLarge();
    EXPECT_EQ(offer.nextTarget(), std::nullopt);
    EXPECT_EQ(offer.contents().string, QStringLiteral("a"));
    EXPECT_TRUE(offer.contents().data.empty());
}

TEST(PasteboardOfferTest, HasWhateverFormHasCome)
{
    EXPECT_FALSE(PasteboardOffer({QStringLiteral("UTF8_STRING")}).hasAny());
    for (const char* target : {"text/uri-list", "UTF8_STRING", "image/png"})
        EXPECT_TRUE(Owner({{target, "file:///a"}}).yieldAll().hasAny()) << target;
    EXPECT_FALSE(Owner({{"UTF8_STRING", {}}}).yieldAll().hasAny());
}

TEST(PasteboardOfferTest, WhatIsNotHadIsMissingAndItsTypeKnown)
{
    const PasteboardOffer offer({QStringLiteral("UTF8_STRING"), QStringLiteral("text/html")});
    EXPECT_EQ(offer.nextTarget(), QStringLiteral("UTF8_STRING"));
    EXPECT_EQ(offer.contents().string, std::nullopt);
    EXPECT_THAT(offer.contents().types, ElementsAre(PasteboardType::plainText, PasteboardType::html));
}
