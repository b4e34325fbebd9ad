#include "platform/linux/PasteboardForms.h"

#include "platform/linux/UriList.h"

#include <array>

namespace {
enum class Kind {
    UriList,
    CopiedFiles,
    CutSelection,
    Html,
    Rtf,
    Png,
    Utf8,
    Latin1,
};

struct Entry
{
    QLatin1StringView target;
    Kind kind;
};

constexpr std::array table{
    Entry{QLatin1StringView("text/uri-list"), Kind::UriList},
    Entry{QLatin1StringView("x-special/gnome-copied-files"), Kind::CopiedFiles},
    Entry{QLatin1StringView("application/x-kde-cutselection"), Kind::CutSelection},
    Entry{QLatin1StringView("text/html"), Kind::Html},
    Entry{QLatin1StringView("text/rtf"), Kind::Rtf},
    Entry{QLatin1StringView("application/rtf"), Kind::Rtf},
    Entry{QLatin1StringView("image/png"), Kind::Png},
    Entry{QLatin1StringView("UTF8_STRING"), Kind::Utf8},
    Entry{QLatin1StringView("text/plain;charset=utf-8"), Kind::Utf8},
    Entry{QLatin1StringView("text/plain"), Kind::Utf8},
    Entry{QLatin1StringView("STRING"), Kind::Latin1},
    Entry{QLatin1StringView("TEXT"), Kind::Utf8},
};

bool hasText(const PasteboardContents& contents)
{
    return contents.string || !contents.filePaths.isEmpty();
}

/// Pasted into a text, files are their paths.
QString text(const PasteboardContents& contents)
{
    return contents.string ? *contents.string : contents.filePaths.join(u'\n');
}

bool has(const PasteboardContents& contents, Kind kind)
{
    switch (kind) {
    case Kind::UriList:
    case Kind::CopiedFiles:
    case Kind::CutSelection:
        return !contents.filePaths.isEmpty();
    case Kind::Html:
        return contents.data.contains(PasteboardType::html);
    case Kind::Rtf:
        return contents.data.contains(PasteboardType::rtf);
    case Kind::Png:
        return contents.png.has_value();
    case Kind::Utf8:
    case Kind::Latin1:
        return hasText(contents);
    }
    return false;
}

QByteArray bytes(const PasteboardContents& contents, Kind kind)
{
    switch (kind) {
    case Kind::UriList:
        return UriList::encode(contents.filePaths);
    case Kind::CopiedFiles:
        return UriList::encodeCopied(contents.filePaths);
    case Kind::CutSelection:
        return "0"; // Copied, not cut.
    case Kind::Html:
        return contents.data.at(PasteboardType::html);
    case Kind::Rtf:
        return contents.data.at(PasteboardType::rtf);
    case Kind::Png:
        return *contents.png;
    case Kind::Utf8:
        return text(contents).toUtf8();
    case Kind::Latin1:
        return text(contents).toLatin1(); // Question marks for what it lacks: better than no paste at all.
    }
    return {};
}
} // namespace

QStringList PasteboardForms::targets(const PasteboardContents& contents)
{
    QStringList found;
    for (const Entry& entry : table) {
        if (has(contents, entry.kind))
            found.append(entry.target);
    }
    return found;
}

std::optional<PasteboardForms::Answer> PasteboardForms::answer(const PasteboardContents& contents,
                                                               const QString& target)
{
    for (const Entry& entry : table) {
        if (target != entry.target || !has(contents, entry.kind))
            continue;
        // TEXT leaves the encoding to the owner, who then names it.
        const QString type = target == u"TEXT" ? QStringLiteral("UTF8_STRING") : target;
        return Answer{type, bytes(contents, entry.kind)};
    }
    return std::nullopt;
}
