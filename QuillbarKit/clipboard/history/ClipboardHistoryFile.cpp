#include "clipboard/history/ClipboardHistoryFile.h"

#include "clipboard/history/ClipJsonField.h"
#include "clipboard/history/ClipJsonWriter.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace {
using Value = ClipJsonReader::Value;
using RichData = std::map<QString, ClipData>;

constexpr int presentVersion = 2;

constexpr std::array<std::pair<Clip::Kind, QStringView>, 3> kindNames{{
    {Clip::Kind::Text, u"text"},
    {Clip::Kind::Image, u"image"},
    {Clip::Kind::File, u"file"},
}};

QStringView nameOf(DetectedKind::Type type)
{
    switch (type) {
    case DetectedKind::Type::Plain:
        return u"plain";
    case DetectedKind::Type::Code:
        return u"code";
    case DetectedKind::Type::Link:
        return u"link";
    case DetectedKind::Type::Color:
        return u"color";
    }
    Q_UNREACHABLE();
}

QStringView nameOf(Clip::Kind kind)
{
    const auto* const found = std::find_if(kindNames.begin(), kindNames.end(),
                                           [kind](const auto& named) { return named.first == kind; });
    return found->second;
}

std::optional<Clip::Kind> readKind(ClipJsonReader& reader, Value value)
{
    const auto name = reader.string(value);
    for (const auto& [kind, kindName] : kindNames) {
        if (name && *name == kindName)
            return kind;
    }
    return {};
}

std::optional<DetectedKind> readDetectedKind(ClipJsonReader& reader, Value value)
{
    ClipJsonField<QString> typeField(&ClipJsonReader::string);
    ClipJsonField<QString> valueField(&ClipJsonReader::string);
    QString type;
    QString text;
    if (!reader.object(value, {{"type", &typeField}, {"value", &valueField}}) || !typeField.assign(type))
        return {};
    if (type == nameOf(DetectedKind::Type::Code))
        return DetectedKind::code();
    const bool isLink = type == nameOf(DetectedKind::Type::Link);
    if (!isLink && type != nameOf(DetectedKind::Type::Color))
        return DetectedKind::plain(); // A later version may tell more kinds apart.
    if (!valueField.require(text))
        return {};
    return isLink ? DetectedKind::link(text) : DetectedKind::color(text);
}

std::optional<RichData> readRichData(ClipJsonReader& reader, Value value)
{
    std::map<QString, std::optional<ClipData>> members;
    if (!reader.eachMember(value, [&](std::string_view key, Value member) {
            members.insert_or_assign(QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size())),
                                     reader.base64(member));
        }))
        return {};
    RichData richData;
    for (const auto& [type, data] : members) {
        if (!data)
            return {};
        richData.emplace(type, *data);
    }
    return richData;
}

std::optional<QStringList> readStrings(ClipJsonReader& reader, Value value)
{
    return reader.list<QString>(value, &ClipJsonReader::string);
}

std::optional<QList<QUuid>> readUuids(ClipJsonReader& reader, Value value)
{
    return reader.list<QUuid>(value, &ClipJsonReader::uuid);
}

std::optional<Clip> readClip(ClipJsonReader& reader, Value value)
{
    ClipJsonField<QString> id(&ClipJsonReader::string);
    ClipJsonField<Clip::Kind> kind(readKind);
    ClipJsonField<QString> text(&ClipJsonReader::string);
    ClipJsonField<ClipData> imageData(&ClipJsonReader::base64);
    ClipJsonField<QStringList> filePaths(readStrings);
    ClipJsonField<QDateTime> date(&ClipJsonReader::date);
    ClipJsonField<bool> pinned(&ClipJsonReader::boolean);
    ClipJsonField<QUuid> uuid(&ClipJsonReader::uuid);
    ClipJsonField<RichData> richData(readRichData);
    ClipJsonField<QString> sourceBundleID(&ClipJsonReader::string);
    ClipJsonField<DetectedKind> detectedKind(readDetectedKind);
    if (!reader.object(value, {{"id", &id},
                               {"kind", &kind},
                               {"text", &text},
                               {"imageData", &imageData},
                               {"filePaths", &filePaths},
                               {"date", &date},
                               {"pinned", &pinned},
                               {"uuid", &uuid},
                               {"richData", &richData},
                               {"sourceBundleID", &sourceBundleID},
                               {"detectedKind", &detectedKind}}))
        return {};
    Clip clip;
    if (!uuid.isGiven())
        clip.uuid = QUuid::createUuid();
    const bool isComplete = id.require(clip.id) && kind.assign(clip.kind) && text.assign(clip.text) &&
                            imageData.assign(clip.imageData) && filePaths.assign(clip.filePaths) &&
                            date.require(clip.date) && pinned.assign(clip.pinned) && uuid.assign(clip.uuid) &&
                            richData.assign(clip.richData) && sourceBundleID.assign(clip.sourceBundleID) &&
                            detectedKind.assign(clip.detectedKind);
    return isComplete ? std::optional(clip) : std::nullopt;
}

std::optional<Pinboard> readBoard(ClipJsonReader& reader, Value value)
{
    ClipJsonField<QUuid> id(&ClipJsonReader::uuid);
    ClipJsonField<QString> name(&ClipJsonReader::string);
    ClipJsonField<QList<QUuid>> clipUUIDs(readUuids);
    ClipJsonField<QDateTime> createdAt(&ClipJsonReader::date);
    Pinboard board;
    const bool isComplete =
        reader.object(value,
                      {{"id", &id}, {"name", &name}, {"clipUUIDs", &clipUUIDs}, {"createdAt", &createdAt}}) &&
        id.require(board.id) && name.require(board.name) && clipUUIDs.require(board.clipUUIDs) &&
        createdAt.require(board.createdAt);
    return isComplete ? std::optional(board) : std::nullopt;
}

std::optional<QList<Clip>> readClips(ClipJsonReader& reader, Value value)
{
    return reader.list<Clip>(value, readClip);
}

std::optional<QList<Pinboard>> readBoards(ClipJsonReader& reader, Value value)
{
    return reader.list<Pinboard>(value, readBoard);
}

/// The form of today.
std::optional<ClipboardStore> readObject(ClipJsonReader& reader, Value value)
{
    ClipJsonField<double> schemaVersion(&ClipJsonReader::number);
    ClipJsonField<QList<Clip>> clips(readClips);
    ClipJsonField<QList<Pinboard>> boards(readBoards);
    ClipboardStore store;
    double version = 0; // Any will do: the versions so far differ in their form.
    const bool isComplete =
        reader.object(value, {{"schemaVersion", &schemaVersion}, {"clips", &clips}, {"boards", &boards}}) &&
        schemaVersion.require(version) && clips.require(store.clips) && boards.require(store.boards);
    return isComplete ? std::optional(store) : std::nullopt;
}

/// The form of the first version, which had no boards.
std::optional<ClipboardStore> readArray(ClipJsonReader& reader, Value value)
{
    auto clips = readClips(reader, value);
    return clips ? std::optional(ClipboardStore{std::move(*clips), {}}) : std::nullopt;
}

void put(ClipJsonWriter& writer, const DetectedKind& kind)
{
    writer.beginObject();
    writer.key(u"type");
    writer.string(nameOf(kind.type()));
    if (kind.type() == DetectedKind::Type::Link || kind.type() == DetectedKind::Type::Color) {
        writer.key(u"value");
        writer.string(kind.value());
    }
    writer.endObject();
}

void put(ClipJsonWriter& writer, const RichData& richData)
{
    writer.beginObject();
    for (const auto& [type, data] : richData) {
        writer.key(type);
        writer.base64(data);
    }
    writer.endObject();
}

void put(ClipJsonWriter& writer, const Clip& clip)
{
    writer.beginObject();
    writer.key(u"id");
    writer.string(clip.id);
    writer.key(u"kind");
    writer.string(nameOf(clip.kind));
    writer.key(u"text");
    writer.string(clip.text);
    if (clip.imageData) {
        writer.key(u"imageData");
        writer.base64(*clip.imageData);
    }
    writer.key(u"filePaths");
    writer.beginArray();
    for (const QString& path : clip.filePaths)
        writer.string(path);
    writer.endArray();
    writer.key(u"date");
    writer.date(clip.date);
    writer.key(u"pinned");
    writer.boolean(clip.pinned);
    writer.key(u"uuid");
    writer.uuid(clip.uuid);
    writer.key(u"richData");
    put(writer, clip.richData);
    if (clip.sourceBundleID) {
        writer.key(u"sourceBundleID");
        writer.string(*clip.sourceBundleID);
    }
    writer.key(u"detectedKind");
    put(writer, clip.detectedKind);
    writer.endObject();
}

void put(ClipJsonWriter& writer, const Pinboard& board)
{
    writer.beginObject();
    writer.key(u"id");
    writer.uuid(board.id);
    writer.key(u"name");
    writer.string(board.name);
    writer.key(u"clipUUIDs");
    writer.beginArray();
    for (const QUuid& uuid : board.clipUUIDs)
        writer.uuid(uuid);
    writer.endArray();
    writer.key(u"createdAt");
    writer.date(board.createdAt);
    writer.endObject();
}

template <typename Record>
void put(ClipJsonWriter& writer, const QList<Record>& records)
{
    writer.beginArray();
    for (const Record& record : records)
        put(writer, record);
    writer.endArray();
}
} // namespace

std::optional<ClipboardStore> ClipboardHistoryFile::read(QByteArray bytes)
{
    return ClipJsonReader::read(std::move(bytes), [](ClipJsonReader& reader, Value root) {
        return ClipJsonReader::isArray(root) ? readArray(reader, root) : readObject(reader, root);
    });
}

QList<QByteArray> ClipboardHistoryFile::write(const QList<Clip>& clips, const QList<Pinboard>& boards)
{
    return ClipboardHistoryWriter().write(clips, boards);
}

QList<QByteArray> ClipboardHistoryWriter::write(const QList<Clip>& clips, const QList<Pinboard>& boards)
{
    QHash<QUuid, Encoded> encoded;
    ClipJsonWriter writer;
    writer.beginObject();
    writer.key(u"schemaVersion");
    writer.number(presentVersion);
    writer.key(u"clips");
    writer.beginArray();
    for (const Clip& clip : clips) {
        auto known = m_encoded.take(clip.uuid);
        if (known.pieces.isEmpty() || known.clip != clip) {
            ClipJsonWriter object;
            put(object, clip);
            known = {clip, object.takePieces()};
        }
        writer.value(known.pieces);
        encoded.emplace(clip.uuid, std::move(known));
    }
    writer.endArray();
    writer.key(u"boards");
    put(writer, boards);
    writer.endObject();
    m_encoded = std::move(encoded);
    return writer.takePieces();
}
