#pragma once

#include "platform/linux/applications/DesktopEntry.h"

#include <QByteArrayView>
#include <QStringList>

#include <optional>

/// Reads desktop files in freedesktop.org's desktop entry format, version 1.5. Pure.
namespace DesktopEntryParser {
/// The program that a desktop file describes; none when it describes something else or has no name.
/// `locales`: the names of the user's languages, most wanted first, as localeNames() gives them.
std::optional<DesktopEntry> parse(QByteArrayView file, const QString& id, const QStringList& locales);

/// The names under which a text in the user's language is looked for, most wanted first: "de_AT.UTF-8" gives
/// "de_AT" and "de". `languages` is as $LANGUAGE holds it, with colons, and comes first; both may be empty.
QStringList localeNames(const QString& locale, const QString& languages);

/// The id of a desktop file from its path below an applications folder: "kde/okular.desktop" gives
/// "kde-okular". Empty for another kind of file.
QString idOf(const QString& relativePath);
} // namespace DesktopEntryParser
