#pragma once

#include "clipboard/history/ClipData.h"
#include "clipboard/history/DetectedKind.h"

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <map>
#include <optional>

/// One copied thing in the history. A value; equal when every field is.
struct Clip
{
    enum class Kind { Text, Image, File };

    /// Identity inside the history.
    QString id;
    Kind kind = Kind::Text;
    /// Empty for images and files.
    QString text;
    /// A PNG file; of images only.
    std::optional<ClipData> imageData;
    /// Absolute paths, in the order in which they were copied; of files only.
    QStringList filePaths;
    /// Of the last capture, paste or edit. In UTC.
    QDateTime date;
    /// A pinned clip comes first and is never trimmed.
    bool pinned = false;
    /// What boards, caches and other devices know the clip by; it outlives a repeated copy.
    QUuid uuid;
    /// Rich forms of a text: "public.rtf" and "public.html" at most.
    std::map<QString, ClipData> richData;
    /// The program that was in front at the capture.
    std::optional<QString> sourceBundleID;
    DetectedKind detectedKind;

    bool operator==(const Clip&) const = default;

    /// What a copy is compared by to find that it repeats an earlier one. Costs the SHA-256 of an image,
    /// once.
    QString contentKey() const;

    /// Whether the content keys are equal. Hashes no image unless the other has the same size.
    bool hasSameContentAs(const Clip& other) const;
};
