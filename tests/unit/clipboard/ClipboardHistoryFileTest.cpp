#include "clipboard/history/ClipboardHistoryFile.h"

#include "unit/clipboard/ClipboardFiles.h"

#include <gtest/gtest.h>

namespace {
using ClipboardFiles::handMade;

std::optional<ClipboardStore> readClip(const QByteArray& members)
{
    return ClipboardHistoryFile::read("[{\"id\":\"a\",\"date\":\"2024-01-01T00:00:00Z\"" + members + "}]");
}

std::optional<ClipboardStore> readBoard(const QByteArray& members)
{
    return ClipboardHistoryFile::read(R"({"schemaVersion":2,"clips":[],"boards":[{)" + members + "}]}");
}

QByteArray written(const ClipboardStore& store)
{
    return QByteArrayList(ClipboardHistoryFile::write(store.clips, store.boards)).join();
}

QDateTime utc(int year, int month, int day, int hour = 0, int minute = 0, int second = 0, int millisecond = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second, millisecond), Qt::UTC);
}
} // namespace

TEST(ClipboardHistoryFile, ReadsEveryMember)
{
    const auto store = ClipboardHistoryFile::read(handMade("present"));
    ASSERT_TRUE(store);
    ASSERT_EQ(store->clips.size(), 6);
    const Clip& text = store->clips[0];
    EXPECT_EQ(text.id, u"7-text-1");
    EXPECT_EQ(text.kind, Clip::Kind::Text);
    EXPECT_EQ(text.text, QStringLiteral("Grüße \"a\\b\"\n\t😀 ") + QChar(0));
    EXPECT_FALSE(text.imageData);
    EXPECT_EQ(text.date, utc(2024, 2, 29, 23, 59, 59));
    EXPECT_EQ(text.date.timeSpec(), Qt::UTC);
    EXPECT_TRUE(text.pinned);
    EXPECT_EQ(text.uuid, QUuid(QStringLiteral("{0b8f2a6e-5c0d-4e7b-9a59-7d1c2b3a4f50}")));
    ASSERT_EQ(text.richData.size(), 2U);
    EXPECT_EQ(text.richData.at(QStringLiteral("public.html")).bytes(), "<b>a</b>");
    EXPECT_EQ(text.richData.at(QStringLiteral("public.rtf")).bytes(), "{\\rtf1}");
    EXPECT_EQ(text.sourceBundleID, QStringLiteral("org.example.Editor"));
    EXPECT_EQ(store->clips[1].kind, Clip::Kind::Image);
    EXPECT_EQ(store->clips[1].imageData->bytes(), "\x89PNG\r\n\x1A\n");
    EXPECT_FALSE(store->clips[1].sourceBundleID);
    EXPECT_FALSE(store->clips[1].pinned);
    EXPECT_EQ(store->clips[2].kind, Clip::Kind::File);
    EXPECT_EQ(store->clips[2].filePaths,
              (QStringList{QStringLiteral("/home/a/b.txt"), QStringLiteral("/home/a/c d")}));
    EXPECT_EQ(store->clips[2].detectedKind, DetectedKind::plain());
    EXPECT_EQ(store->clips[3].detectedKind, DetectedKind::color(QStringLiteral("#FFFF00")));
    EXPECT_EQ(store->clips[4].detectedKind, DetectedKind::link(QStringLiteral("https://example.com/")));
    EXPECT_EQ(store->clips[5].detectedKind, DetectedKind::code());
    ASSERT_EQ(store->boards.size(), 2);
    EXPECT_EQ(store->boards[0].name, u"Work");
    EXPECT_EQ(store->boards[0].id, QUuid(QStringLiteral("{61ef80c4-b263-44c1-80bf-d372819aa5b6}")));
    EXPECT_EQ(store->boards[0].clipUUIDs.size(), 3);
    EXPECT_EQ(store->boards[0].clipUUIDs[1], text.uuid);
    EXPECT_EQ(store->boards[0].createdAt, utc(2023, 1, 1, 12));
}

TEST(ClipboardHistoryFile, WritesTheSameBytes)
{
    const QByteArray expected = handMade("present");
    EXPECT_EQ(written(*ClipboardHistoryFile::read(expected)), expected);
}

TEST(ClipboardHistoryFile, ReadsTheFirstVersion)
{
    const auto store = ClipboardHistoryFile::read(handMade("first_version"));
    ASSERT_TRUE(store);
    EXPECT_TRUE(store->boards.isEmpty());
    ASSERT_EQ(store->clips.size(), 2);
    Clip expected;
    expected.id = QStringLiteral("only what is required");
    expected.date = utc(2020, 1, 2, 3, 4, 5);
    expected.uuid = store->clips[0].uuid;
    EXPECT_EQ(store->clips[0], expected);
    EXPECT_EQ(store->clips[1].text, u"in odd order");
    EXPECT_EQ(store->clips[1].date, utc(2021, 1, 2, 1, 34, 5));
    EXPECT_TRUE(written(*store).startsWith(R"({"schemaVersion":2,"clips":[{"id":)"));
}

TEST(ClipboardHistoryFile, ReadsWhatOthersMayWrite)
{
    const auto store = ClipboardHistoryFile::read(handMade("odd"));
    ASSERT_TRUE(store);
    ASSERT_EQ(store->clips.size(), 4);
    EXPECT_EQ(store->clips[0].id, u"last");
    EXPECT_EQ(store->clips[0].kind, Clip::Kind::Image);
    EXPECT_EQ(store->clips[0].imageData->base64(), "/+/+");
    EXPECT_EQ(store->clips[0].date, utc(2024, 1, 1));
    EXPECT_FALSE(store->clips[0].sourceBundleID);
    EXPECT_FALSE(store->clips[0].uuid.isNull());
    EXPECT_EQ(store->clips[1].id, u"escaped key");
    EXPECT_EQ(store->clips[1].detectedKind, DetectedKind::plain());
    EXPECT_EQ(store->clips[2].detectedKind, DetectedKind::plain());
    EXPECT_EQ(store->clips[3].detectedKind, DetectedKind::code());
    EXPECT_EQ(store->clips[3].richData.at(QStringLiteral("public.html")).bytes(), "AB");
    ASSERT_EQ(store->boards.size(), 1);
    EXPECT_EQ(store->boards[0].name, u"Board");
}

TEST(ClipboardHistoryFile, AnyNumberPassesAsTheVersion)
{
    for (const char* const version : {"7", "2.5", "-1", "0", "1e3", "123456789012345678901234567890"})
        EXPECT_TRUE(ClipboardHistoryFile::read(QByteArray(R"({"clips":[],"boards":[],"schemaVersion":)") +
                                               version + "}"))
            << version;
    for (const char* const version :
         {"\"2\"", "null", "true", "[]", "{}", "01", "1.", "+1", "0x2", "2x", "-"})
        EXPECT_FALSE(ClipboardHistoryFile::read(QByteArray(R"({"clips":[],"boards":[],"schemaVersion":)") +
                                                version + "}"))
            << version;
}

TEST(ClipboardHistoryFile, TheObjectNeedsItsThreeMembers)
{
    EXPECT_TRUE(ClipboardHistoryFile::read(R"({"schemaVersion":2,"clips":[],"boards":[]})"));
    EXPECT_FALSE(ClipboardHistoryFile::read(R"({"schemaVersion":2,"clips":[]})"));
    EXPECT_FALSE(ClipboardHistoryFile::read(R"({"schemaVersion":2,"boards":[]})"));
    EXPECT_FALSE(ClipboardHistoryFile::read(R"({"clips":[],"boards":[]})"));
    EXPECT_FALSE(ClipboardHistoryFile::read(R"({"schemaVersion":2,"clips":null,"boards":[]})"));
    EXPECT_FALSE(ClipboardHistoryFile::read(R"({"schemaVersion":2,"clips":[],"boards":{}})"));
}

TEST(ClipboardHistoryFile, AClipNeedsAnIdAndADate)
{
    EXPECT_TRUE(readClip(""));
    EXPECT_FALSE(ClipboardHistoryFile::read(R"([{"id":"a"}])"));
    EXPECT_FALSE(ClipboardHistoryFile::read(R"([{"date":"2024-01-01T00:00:00Z"}])"));
    EXPECT_FALSE(ClipboardHistoryFile::read(R"([{"id":null,"date":"2024-01-01T00:00:00Z"}])"));
    EXPECT_FALSE(ClipboardHistoryFile::read(R"([{"id":"a","date":null}])"));
    EXPECT_FALSE(ClipboardHistoryFile::read(R"([{"id":1,"date":"2024-01-01T00:00:00Z"}])"));
    EXPECT_FALSE(ClipboardHistoryFile::read("[1]"));
    EXPECT_FALSE(ClipboardHistoryFile::read("[null]"));
}

TEST(ClipboardHistoryFile, OneBadClipFailsThemAll)
{
    EXPECT_FALSE(ClipboardHistoryFile::read(
        R"([{"id":"a","date":"2024-01-01T00:00:00Z"},{"id":"b"},{"id":"c","date":"2024-01-01T00:00:00Z"}])"));
}

TEST(ClipboardHistoryFile, AWrongTypeFails)
{
    for (const char* const members :
         {R"("kind":"video")", R"("kind":"Text")", R"("kind":1)", R"("text":1)", R"("imageData":"*")",
          R"("imageData":[])", R"("filePaths":"/a")", R"("filePaths":["/a",1])", R"("filePaths":[null])",
          R"("pinned":1)", R"("pinned":"true")", R"("uuid":"x")", R"("uuid":7)", R"("richData":[])",
          R"("richData":{"a":"*"})", R"("richData":{"a":null})", R"("sourceBundleID":false)",
          R"("detectedKind":"plain")", R"("detectedKind":{"type":1})"})
        EXPECT_FALSE(readClip(QByteArray(",") + members)) << members;
}

TEST(ClipboardHistoryFile, TheLastOfEqualKeysCounts)
{
    EXPECT_EQ(readClip(R"(,"kind":"video","kind":"file")")->clips[0].kind, Clip::Kind::File);
    EXPECT_FALSE(readClip(R"(,"kind":"file","kind":"video")"));
    EXPECT_EQ(readClip(R"(,"text":"a","text":null)")->clips[0].text, u"");
    EXPECT_FALSE(readClip(R"(,"richData":{"a":"QQ==","a":"*"})"));
    EXPECT_TRUE(readClip(R"(,"richData":{"a":"*","a":"QQ=="})"));
}

TEST(ClipboardHistoryFile, ADetectedKindIsReadByItsType)
{
    const auto kind = [](const char* members) {
        const auto store = readClip(QByteArray(R"(,"detectedKind":{)") + members + "}");
        return store ? std::optional(store->clips[0].detectedKind) : std::nullopt;
    };
    EXPECT_EQ(kind(R"("type":"plain","value":3)"), DetectedKind::plain());
    EXPECT_EQ(kind(R"("type":"number")"), DetectedKind::plain());
    EXPECT_EQ(kind(R"("type":null)"), DetectedKind::plain());
    EXPECT_EQ(kind(R"("value":"x")"), DetectedKind::plain());
    EXPECT_EQ(kind(R"("type":"code","value":[])"), DetectedKind::code());
    EXPECT_EQ(kind(R"("type":"link","value":"")"), DetectedKind::link({}));
    EXPECT_FALSE(kind(R"("type":"link")"));
    EXPECT_FALSE(kind(R"("type":"color")"));
    EXPECT_FALSE(kind(R"("type":"color","value":null)"));
    EXPECT_FALSE(kind(R"("type":"link","value":7)"));
}

TEST(ClipboardHistoryFile, AClipWithoutAUuidGetsANewOneAtEachLoad)
{
    const QUuid first = readClip("")->clips[0].uuid;
    const QUuid second = readClip(R"(,"uuid":null)")->clips[0].uuid;
    EXPECT_FALSE(first.isNull());
    EXPECT_FALSE(second.isNull());
    EXPECT_NE(first, second);
}

TEST(ClipboardHistoryFile, AUuidHasThirtySixCharacters)
{
    const auto uuid = [](const char* text) { return readClip(QByteArray(R"(,"uuid":")") + text + '"'); };
    EXPECT_TRUE(uuid("0B8F2A6E-5C0D-4E7B-9A59-7D1C2B3A4F50"));
    EXPECT_TRUE(uuid("0b8f2a6e-5c0d-4e7b-9a59-7d1c2b3a4f50"));
    EXPECT_TRUE(uuid("00000000-0000-0000-0000-000000000000"));
    for (const char* const text :
         {"", "{0B8F2A6E-5C0D-4E7B-9A59-7D1C2B3A4F50}", "0B8F2A6E-5C0D-4E7B-9A59-7D1C2B3A4F5",
          "0B8F2A6E-5C0D-4E7B-9A59-7D1C2B3A4F500", "0B8F2A6E5C0D4E7B9A597D1C2B3A4F50",
          "GB8F2A6E-5C0D-4E7B-9A59-7D1C2B3A4F50", "{B8F2A6E-5C0D-4E7B-9A59-7D1C2B3A4F5}",
          "0B8F2A6E-5C0D-4E7B-9A59-7D1C2B3A4F5 ", "0B8F2A6E-5C0D-4E7B-9A597-D1C2B3A4F50"})
        EXPECT_FALSE(uuid(text)) << text;
}

TEST(ClipboardHistoryFile, ABoardNeedsEveryMember)
{
    const QByteArray id = R"("id":"61EF80C4-B263-44C1-80BF-D372819AA5B6")";
    const QByteArray name = R"("name":"Work")";
    const QByteArray clips = R"("clipUUIDs":[])";
    const QByteArray date = R"("createdAt":"2023-01-01T12:00:00Z")";
    const auto read = [](const QByteArrayList& members) { return readBoard(members.join(',')).has_value(); };
    EXPECT_TRUE(read({id, name, clips, date}));
    EXPECT_TRUE(read({date, clips, R"("x":[{}])", name, id}));
    EXPECT_FALSE(read({name, clips, date}));
    EXPECT_FALSE(read({id, clips, date}));
    EXPECT_FALSE(read({id, name, date}));
    EXPECT_FALSE(read({id, name, clips}));
    EXPECT_FALSE(read({id, name, R"("clipUUIDs":["x"])", date}));
    EXPECT_FALSE(read({id, name, R"("clipUUIDs":{})", date}));
    EXPECT_FALSE(read({id, R"("name":null)", clips, date}));
}

TEST(ClipboardHistoryFile, WritesNothingForWhatIsAbsent)
{
    Clip clip;
    clip.id = QStringLiteral("1");
    clip.uuid = QUuid(QStringLiteral("{0b8f2a6e-5c0d-4e7b-9a59-7d1c2b3a4f50}"));
    clip.date = utc(2024, 1, 1);
    EXPECT_EQ(written({{clip}, {}}),
              R"({"schemaVersion":2,"clips":[{"id":"1","kind":"text","text":"","filePaths":[],)"
              R"("date":"2024-01-01T00:00:00Z","pinned":false,"uuid":"0B8F2A6E-5C0D-4E7B-9A59-7D1C2B3A4F50",)"
              R"("richData":{},"detectedKind":{"type":"plain"}}],"boards":[]})");
}

TEST(ClipboardHistoryFile, LosesFractionsOfSecondsAndNothingElse)
{
    ClipboardStore store = *ClipboardHistoryFile::read(handMade("present"));
    const ClipboardStore whole = store;
    store.clips[0].date = store.clips[0].date.addMSecs(999);
    store.boards[0].createdAt = store.boards[0].createdAt.addMSecs(1);
    EXPECT_NE(store, whole);
    EXPECT_EQ(ClipboardHistoryFile::read(written(store)), whole);
}

TEST(ClipboardHistoryFile, LargeImagesAreNotCopied)
{
    Clip clip;
    clip.kind = Clip::Kind::Image;
    clip.imageData = ClipData(QByteArray(1'000'000, 'x'));
    clip.date = utc(2024, 1, 1);
    const auto pieces = ClipboardHistoryFile::write({clip}, {});
    ASSERT_EQ(pieces.size(), 3);
    EXPECT_EQ(pieces[1].constData(), clip.imageData->base64().constData());
    EXPECT_EQ(ClipboardHistoryFile::read(QByteArrayList(pieces).join())->clips, QList<Clip>{clip});
}

TEST(ClipboardHistoryWriterTest, WritesWhatOneThatKeepsNothingWrites)
{
    ClipboardHistoryWriter writer;
    QList<Clip> clips;
    for (int i = 0; i < 4; ++i) {
        Clip clip;
        clip.id = QString::number(i);
        clip.uuid = QUuid::createUuid();
        clip.date = QDateTime::fromSecsSinceEpoch(1'700'000'000 + i, Qt::UTC);
        clip.text = QString(i * 40'000, u'x');
        clips.append(clip);
    }
    const auto expectSame = [&] {
        EXPECT_EQ(QByteArrayList(writer.write(clips, {})).join(),
                  QByteArrayList(ClipboardHistoryFile::write(clips, {})).join());
    };
    expectSame();
    expectSame();
    clips[1].text = QStringLiteral("edited");
    clips.move(3, 0);
    expectSame();
    clips.removeFirst();
    clips[2].pinned = true;
    expectSame();
    clips[0].uuid = clips[1].uuid; // Two of one identity, as a hand-made file may hold them.
    expectSame();
}
