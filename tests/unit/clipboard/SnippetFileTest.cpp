#include "clipboard/snippets/SnippetFile.h"

#include "unit/clipboard/ClipboardFiles.h"

#include <gtest/gtest.h>

namespace {
QByteArray handMade(const char* name)
{
    return ClipboardFiles::handMade(name, "fuzz_snippets");
}

QByteArray written(const QList<Snippet>& snippets)
{
    return QByteArrayList(SnippetFile::write(snippets)).join();
}
} // namespace

TEST(SnippetFile, ReadsAndWritesTheSameBytes)
{
    const auto snippets = SnippetFile::read(handMade("snippets"));
    ASSERT_TRUE(snippets);
    ASSERT_EQ(snippets->size(), 2);
    EXPECT_EQ(snippets->front().id, QUuid(QStringLiteral("{0b8f2a6e-5c0d-4e7b-9a59-7d1c2b3a4f50}")));
    EXPECT_EQ(snippets->front().title, u"Greeting");
    EXPECT_EQ(snippets->front().text, QStringLiteral("Grüße,\nA."));
    EXPECT_EQ(snippets->front().date, QDateTime(QDate(2024, 2, 29), QTime(23, 59, 59), Qt::UTC));
    EXPECT_EQ(written(*snippets), handMade("snippets"));
}

TEST(SnippetFile, ASnippetWithEmptyTextsSurvives)
{
    const QList<Snippet> snippets{
        {QUuid::createUuid(), {}, {}, QDateTime(QDate(2024, 1, 1), QTime(0, 0), Qt::UTC)}};
    EXPECT_EQ(SnippetFile::read(written(snippets)), snippets);
}

TEST(SnippetFile, NoSnippetsAreAnEmptyArray)
{
    EXPECT_EQ(written({}), "[]");
    EXPECT_EQ(SnippetFile::read("[]"), QList<Snippet>());
}

TEST(SnippetFile, ReadsWhatOthersMayWrite)
{
    const auto snippets = SnippetFile::read(handMade("odd"));
    ASSERT_TRUE(snippets);
    ASSERT_EQ(snippets->size(), 1);
    EXPECT_EQ(snippets->front().title, u"\"/");
    EXPECT_EQ(snippets->front().date, QDateTime(QDate(2024, 3, 1), QTime(7, 59, 59), Qt::UTC));
}

TEST(SnippetFile, EveryMemberIsNeeded)
{
    const QByteArrayList members{R"("id":"0B8F2A6E-5C0D-4E7B-9A59-7D1C2B3A4F50")", R"("title":"a")",
                                 R"("text":"b")", R"("date":"2024-02-29T23:59:59Z")"};
    const auto isRead = [](const QByteArrayList& some) {
        return SnippetFile::read("[{" + some.join(',') + "}]").has_value();
    };
    EXPECT_TRUE(isRead(members));
    for (qsizetype missing = 0; missing < members.size(); ++missing) {
        QByteArrayList some = members;
        some.removeAt(missing);
        EXPECT_FALSE(isRead(some)) << members[missing].constData();
        some.append(members[missing].left(members[missing].indexOf(':')) + ":null");
        EXPECT_FALSE(isRead(some)) << some.last().constData();
    }
}

TEST(SnippetFile, RefusesEverythingElse)
{
    for (const char* const name : {"object", "no_title", "truncated", "junk"})
        EXPECT_FALSE(SnippetFile::read(handMade(name))) << name;
    const QByteArray whole = handMade("snippets");
    for (qsizetype length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(SnippetFile::read(whole.first(length))) << length;
}
