#pragma once

#include <QString>
#include <QStringView>
#include <QUrl>

#include <optional>

/// What a web page says of itself. Pure functions, for any thread and for whatever a server sends: linear in
/// the page.
namespace LinkPreviewPage {
/// The text of the first title element, without the whitespace around it; none without one or for an empty
/// one.
std::optional<QString> parseTitle(QStringView html);

/// The reference in the first link element whose relation holds the word "icon"; none where either lacks.
std::optional<QString> parseFaviconHref(QStringView html);

/// The text with the common named entities and the numeric ones replaced; what names no character stays as it
/// stands.
QString decodeHTMLEntities(QStringView text);

/// Where the icon of the page is: what the page refers to, else "favicon.ico" of its host at the scheme's own
/// port; empty where there can be none.
QUrl faviconURL(QStringView html, const QUrl& pageURL);
} // namespace LinkPreviewPage
