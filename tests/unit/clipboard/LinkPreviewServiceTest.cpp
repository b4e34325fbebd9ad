#include "clipboard/previews/LinkPreviewService.h"

#include "support/Completion.h"

#include <gmock/gmock.h>

#include <map>
#include <optional>
#include <vector>

namespace {
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

/// What a coroutine gave, once it has.
QCoro::Task<> note(LinkPreviewService& service, QUrl url, std::shared_ptr<std::vector<LinkPreview>> into)
{
    const auto preview = co_await service.preview(url);
    into->push_back(preview);
}

class LinkPreviewServiceTest : public testing::Test
{
protected:
    static QUrl url(const QString& name) { return QUrl(QStringLiteral("https://example.org/") + name); }
    static LinkPreview titled(const QString& title) { return {title, {}}; }

    /// A service whose fetches end when the test answers them.
    LinkPreviewService::Fetcher fetcher()
    {
        return [this](const QUrl& url) -> QCoro::Task<LinkPreview> {
            fetched.append(url.path().sliced(1));
            const auto result = running[url.path().sliced(1)].awaitable();
            co_return co_await result;
        };
    }
    void ask(const QString& name) { note(*service, url(name), found); }
    void answer(const QString& name) { answer(name, titled(name)); }
    void answer(const QString& name, const LinkPreview& preview)
    {
        auto completion = std::move(running.extract(name).mapped());
        completion.complete(preview);
    }
    void askAndAnswer(const QString& name)
    {
        ask(name);
        answer(name);
    }

    QStringList fetched;
    std::map<QString, Completion<LinkPreview>> running;
    std::shared_ptr<std::vector<LinkPreview>> found = std::make_shared<std::vector<LinkPreview>>();
    std::optional<LinkPreviewService> service{std::in_place, 2, fetcher()};
};

const QString a = QStringLiteral("a");
const QString b = QStringLiteral("b");
const QString c = QStringLiteral("c");

TEST_F(LinkPreviewServiceTest, FetchesOnceForAllWhoAskMeanwhile)
{
    for (int i = 0; i < 10; ++i)
        ask(a);
    EXPECT_THAT(fetched, ElementsAre(a));
    EXPECT_THAT(*found, IsEmpty());
    answer(a);
    EXPECT_EQ(found->size(), 10U);
    EXPECT_THAT(*found, Each(titled(a)));
}

TEST_F(LinkPreviewServiceTest, FetchesDifferentLinksBesideEachOther)
{
    ask(a);
    ask(b);
    EXPECT_THAT(fetched, ElementsAre(a, b));
    answer(b);
    answer(a);
    EXPECT_THAT(*found, ElementsAre(titled(b), titled(a)));
}

TEST_F(LinkPreviewServiceTest, KeepsWhatItFound)
{
    askAndAnswer(a);
    ask(a);
    EXPECT_THAT(fetched, ElementsAre(a));
    EXPECT_THAT(*found, ElementsAre(titled(a), titled(a)));
}

TEST_F(LinkPreviewServiceTest, ForgetsWhatWasAskedForTheLongestTimeAgo)
{
    askAndAnswer(a);
    askAndAnswer(b);
    ask(a);
    askAndAnswer(c);
    fetched.clear();
    ask(a);
    ask(c);
    EXPECT_THAT(fetched, IsEmpty());
    ask(b);
    EXPECT_THAT(fetched, ElementsAre(b));
}

TEST_F(LinkPreviewServiceTest, AsksAgainForWhatItHasForgotten)
{
    askAndAnswer(a);
    askAndAnswer(b);
    askAndAnswer(c);
    fetched.clear();
    askAndAnswer(a);
    EXPECT_THAT(fetched, ElementsAre(a));
    EXPECT_EQ(found->back(), titled(a));
}

TEST_F(LinkPreviewServiceTest, KeepsThatAPageGaveNothing)
{
    ask(a);
    answer(a, LinkPreview());
    ask(a);
    EXPECT_THAT(fetched, ElementsAre(a));
    EXPECT_THAT(*found, ElementsAre(LinkPreview(), LinkPreview()));
}

TEST_F(LinkPreviewServiceTest, KeepsNothingWithoutRoom)
{
    service.emplace(0, fetcher());
    askAndAnswer(a);
    askAndAnswer(a);
    EXPECT_THAT(fetched, ElementsAre(a, a));
    EXPECT_THAT(*found, ElementsAre(titled(a), titled(a)));
}

TEST_F(LinkPreviewServiceTest, TellsLinksApartByTheirWholeText)
{
    askAndAnswer(QStringLiteral("page"));
    note(*service, QUrl(QStringLiteral("https://example.org/page?x=1")), found);
    EXPECT_EQ(fetched.size(), 2);
}

TEST_F(LinkPreviewServiceTest, AnswersWhoWaitsAlsoWhenItIsGone)
{
    ask(a);
    ask(a);
    service.reset();
    answer(a);
    EXPECT_THAT(*found, ElementsAre(titled(a), titled(a)));
}

TEST_F(LinkPreviewServiceTest, NobodyWaitsForAFetchThatWasDropped)
{
    ask(a);
    ask(a);
    running.clear();
    EXPECT_THAT(*found, ElementsAre(LinkPreview(), LinkPreview()));
}
} // namespace
