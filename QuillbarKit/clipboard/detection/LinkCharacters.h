#pragma once

#include <QStringView>

/// What the characters of a text are to a link.
namespace LinkCharacters {
/// Never part of a link: whitespace, controls, angle brackets, double quotes, CJK punctuation and the like,
/// and the invisible marks that steer layout.
bool isDelimiter(char16_t unit);

/// Without one of these there is no link: ".", ":" and "@".
bool isHint(char16_t unit);

/// Left off at the end of a link, where it belongs to the sentence.
bool isTrailingPunctuation(char16_t unit);

/// Can stand in front of "@" in the authority of a URL.
bool isUserInfo(char16_t unit);

/// Can stand in a scheme, after its first letter.
bool isScheme(char16_t unit);

bool isAsciiLetter(char16_t unit);
bool isAsciiDigit(char16_t unit);

/// Units of the character at `at` if it can stand in a label of a host name, else 0. Letters, digits and
/// marks of every script, "-", and "_" since many names in use have it.
qsizetype labelLength(QStringView text, qsizetype at);
} // namespace LinkCharacters
