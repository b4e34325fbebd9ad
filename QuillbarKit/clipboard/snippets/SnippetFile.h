#pragma once

#include "clipboard/snippets/Snippet.h"

#include <QByteArray>
#include <QList>

#include <optional>

/// The form of the snippets' file, an array of objects. Pure functions, for any thread.
namespace SnippetFile {
/// What the bytes hold; none when any snippet in them lacks a member or can't be read. Of a key that occurs
/// twice the last value counts; unknown keys are passed over.
std::optional<QList<Snippet>> read(QByteArray bytes);

/// The file, in pieces to be written one behind the other.
QList<QByteArray> write(const QList<Snippet>& snippets);
} // namespace SnippetFile
