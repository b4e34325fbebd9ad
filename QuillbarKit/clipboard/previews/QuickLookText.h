#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// Reads bytes that may be a text. Pure.
namespace QuickLookText {
/// More is too much to lay out while somebody waits.
inline constexpr qsizetype bytesAtMost = qsizetype{32} << 10;
inline constexpr qsizetype linesAtMost = 1000;

struct Beginning
{
    QString text;
    bool isCut = false;
};

/// The text with "\n" between the lines and without characters that only a terminal obeys: UTF-8, UTF-16 and
/// UTF-32 by their mark, and Latin-1 for what is none of them. None for bytes that are no text. Of `file`
/// there may be more than its bytes here; only the first ones are looked at.
std::optional<Beginning> read(QByteArrayView file, bool isWhole);
} // namespace QuickLookText
