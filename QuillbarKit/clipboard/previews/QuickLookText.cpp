#include "clipboard/previews/QuickLookText.h"

#include <QStringDecoder>

#include <algorithm>

namespace {
/// One character in so many may be none of a text.
constexpr qsizetype strangersOneIn = 20;

bool isStrange(QChar character)
{
    return character.category() == QChar::Other_Control && character != u'\n' && character != u'\t';
}

/// The place behind the last line that fits; -1 where all of them do.
qsizetype endOfLastLine(const QString& text)
{
    qsizetype end = -1;
    for (qsizetype line = 0; line < QuickLookText::linesAtMost; ++line) {
        end = text.indexOf(u'\n', end + 1);
        if (end < 0)
            return -1;
    }
    return end + 1 < text.size() ? end : -1;
}
} // namespace

std::optional<QuickLookText::Beginning> QuickLookText::read(QByteArrayView file, bool isWhole)
{
    Beginning beginning{{}, !isWhole || file.size() > bytesAtMost};
    const auto bytes = file.first(std::min(file.size(), bytesAtMost));
    const auto marked = QStringConverter::encodingForData(bytes);
    if (!marked && bytes.contains('\0'))
        return {};
    QStringDecoder decoder(marked.value_or(QStringConverter::Utf8));
    beginning.text = decoder(bytes);
    // The decoder keeps half a character to itself, which is wrong at the end of the file and right at a cut.
    bool isBroken = decoder.hasError();
    if (!marked && !beginning.isCut)
        isBroken = isBroken || !bytes.isValidUtf8();
    if (isBroken && marked)
        return {};
    if (isBroken)
        beginning.text = QString::fromLatin1(bytes);
    auto& text = beginning.text;
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(u'\r', u'\n');
    const auto strangers = std::ranges::count_if(text, isStrange);
    if (strangers * strangersOneIn > text.size())
        return {};
    std::ranges::replace_if(text, isStrange, QChar(QChar::ReplacementCharacter));
    if (const auto end = endOfLastLine(text); end >= 0) {
        text.truncate(end);
        beginning.isCut = true;
    }
    return beginning;
}
