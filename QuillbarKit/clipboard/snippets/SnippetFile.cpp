#include "clipboard/snippets/SnippetFile.h"

#include "clipboard/history/ClipJsonField.h"
#include "clipboard/history/ClipJsonWriter.h"

namespace {
using Value = ClipJsonReader::Value;

std::optional<Snippet> readSnippet(ClipJsonReader& reader, Value value)
{
    ClipJsonField<QUuid> id(&ClipJsonReader::uuid);
    ClipJsonField<QString> title(&ClipJsonReader::string);
    ClipJsonField<QString> text(&ClipJsonReader::string);
    ClipJsonField<QDateTime> date(&ClipJsonReader::date);
    Snippet snippet;
    const bool isComplete =
        reader.object(value, {{"id", &id}, {"title", &title}, {"text", &text}, {"date", &date}}) &&
        id.require(snippet.id) && title.require(snippet.title) && text.require(snippet.text) &&
        date.require(snippet.date);
    return isComplete ? std::optional(snippet) : std::nullopt;
}
} // namespace

std::optional<QList<Snippet>> SnippetFile::read(QByteArray bytes)
{
    return ClipJsonReader::read(std::move(bytes), [](ClipJsonReader& reader, Value root) {
        return reader.list<Snippet>(root, readSnippet);
    });
}

QList<QByteArray> SnippetFile::write(const QList<Snippet>& snippets)
{
    ClipJsonWriter writer;
    writer.beginArray();
    for (const Snippet& snippet : snippets) {
        writer.beginObject();
        writer.key(u"id");
        writer.uuid(snippet.id);
        writer.key(u"title");
        writer.string(snippet.title);
        writer.key(u"text");
        writer.string(snippet.text);
        writer.key(u"date");
        writer.date(snippet.date);
        writer.endObject();
    }
    writer.endArray();
    return writer.takePieces();
}
