#pragma once

#include "support/SrgbColor.h"

#include <QString>
#include <QStringView>

#include <optional>

/// Reads the colour notations people copy: "#abc", "#aabbcc", "#aabbccdd", "rgb(r, g, b)" and
/// "rgba(r, g, b, a)" with channels from 0 to 255 and alpha from 0 to 1. Pure functions, for any thread.
namespace ColorParser {
struct ParsedColor
{
    /// Canonical form: "#" and six or, where the notation names an alpha, eight upper-case digits.
    QString hex;
    SrgbColor color;

    bool operator==(const ParsedColor&) const = default;
};

/// The colour that the whole text writes, whitespace and newlines around it aside; nothing if it writes none.
/// Never fails otherwise. Linear in the text.
std::optional<ParsedColor> parse(QStringView text);
} // namespace ColorParser
