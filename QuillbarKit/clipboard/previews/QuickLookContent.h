#pragma once

#include <QDateTime>
#include <QImage>
#include <QSize>
#include <QString>

#include <optional>

/// What a preview shows of one file. A value.
struct QuickLookContent
{
    enum class Kind { Picture, Text, Facts };

    Kind kind = Kind::Facts;
    /// What the file is, as the desktop's list of types calls it: "PNG image".
    QString typeName;
    /// The symbol that stands for it.
    QString symbol = QStringLiteral("doc");
    /// In bytes; none for what has no such size.
    std::optional<qint64> byteCount;
    /// Not valid for a file that is not there.
    QDateTime modified;

    /// Of a picture: upright and no larger than was asked for.
    QImage picture;
    /// Of a picture, upright, in pixels, as the file has it.
    QSize pixelSize;

    /// Of a text: its beginning, with "\n" between the lines.
    QString text;
    bool isCode = false;
    /// Whether the file goes on behind the text.
    bool isCut = false;
};
