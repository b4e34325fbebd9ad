#pragma once

#include <QByteArray>
#include <QByteArrayView>

/// Standard base64 (RFC 4648) with padding and without line breaks, for megabytes at a time: several times as
/// fast as Qt's own. Pure functions, for any thread.
namespace Base64 {
QByteArray encode(QByteArrayView bytes);

/// Whether the text is standard base64 and nothing else. Unused bits in the last digit may be set.
bool isValid(QByteArrayView text);

/// The bytes behind a valid text; of any other, something of decodedSize() bytes or fewer.
QByteArray decode(QByteArrayView text);

/// The number of bytes behind a valid text.
qsizetype decodedSize(QByteArrayView text);
} // namespace Base64
