#pragma once

#include "platform/Pasteboard.h"

#include <QByteArray>
#include <QStringList>

#include <optional>

/// What we offer to other programs: the contents in every form that Linux programs ask for. Pure.
namespace PasteboardForms {
struct Answer
{
    /// The type that the bytes are said to be of.
    QString type;
    QByteArray bytes;
};

/// The targets that answer() serves, richest first. Files come with the companions that file managers look
/// for, and as text with their paths.
QStringList targets(const PasteboardContents& contents);

/// The contents as that target; none when they have no such form.
std::optional<Answer> answer(const PasteboardContents& contents, const QString& target);
} // namespace PasteboardForms
