#include "clipboard/rows/ClipViewTexts.h"

#include "clipboard/detection/ColorParser.h"

QString ClipViewTexts::glyph(ClipRowsModel::Kind kind, const QString& text, int fileCount, bool marksLinks)
{
    switch (kind) {
    case ClipRowsModel::Kind::Image:
        return QStringLiteral("photo");
    case ClipRowsModel::Kind::File:
        return fileCount > 1 ? QStringLiteral("doc.on.doc") : QStringLiteral("doc");
    case ClipRowsModel::Kind::Text:
        break;
    }
    const auto trimmed = QStringView(text).trimmed();
    if (marksLinks && (trimmed.startsWith(u"http://", Qt::CaseInsensitive) ||
                       trimmed.startsWith(u"https://", Qt::CaseInsensitive)))
        return QStringLiteral("link");
    return text.contains(u'\n') ? QStringLiteral("text.alignleft") : QStringLiteral("text.quote");
}

QString ClipViewTexts::plainTextPreview(const QString& text)
{
    // Indentation of the first line with text is kept: it is part of how code looks.
    qsizetype start = 0;
    for (qsizetype at = 0; at < text.size() && text[at].isSpace(); ++at) {
        if (text[at] == u'\n')
            start = at + 1;
    }
    qsizetype length = std::min<qsizetype>(previewCharacters, text.size() - start);
    // Not between the halves of a character.
    if (start + length < text.size() && text[start + length - 1].isHighSurrogate())
        --length;
    auto preview = text.mid(start, length);
    while (!preview.isEmpty() && preview.back().isSpace())
        preview.chop(1);
    return preview;
}

QString ClipViewTexts::emptyListMessage(const QString& query, BoardFilterKinds::BoardFilterKind filter)
{
    if (!query.trimmed().isEmpty())
        return QStringLiteral("No matches for “") + query + QStringLiteral("”");
    switch (filter) {
    case BoardFilter::Kind::Board:
        return QStringLiteral("This board is empty.\nRight-click a clip to add it.");
    case BoardFilter::Kind::Pinned:
        return QStringLiteral("No pinned clips yet");
    case BoardFilter::Kind::Snippets:
        return QStringLiteral("No snippets yet");
    case BoardFilter::Kind::All:
        break;
    }
    return QStringLiteral("Nothing here yet");
}

QColor ClipViewTexts::swatch(const QString& hex)
{
    const auto parsed = ColorParser::parse(hex);
    if (!parsed)
        return Qt::transparent;
    return QColor::fromRgbF(static_cast<float>(parsed->color.red), static_cast<float>(parsed->color.green),
                            static_cast<float>(parsed->color.blue), static_cast<float>(parsed->color.alpha));
}
