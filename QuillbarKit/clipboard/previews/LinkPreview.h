#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// What the row of a link shows of the page behind it. A value.
struct LinkPreview
{
    std::optional<QString> title;
    /// A picture file: PNG, or, where it could not be made one, as the server sent it.
    std::optional<QByteArray> faviconPNG;

    bool operator==(const LinkPreview&) const = default;
};
