#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringDecoder>

namespace Utf8 {
/// The text in these bytes, a byte order mark in front with it, which QString::fromUtf8() would drop. What is
/// no UTF-8 becomes U+FFFD. Any thread.
inline QString decoded(QByteArrayView bytes)
{
    using Flag = QStringDecoder::Flag;
    QStringDecoder decoder(QStringDecoder::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
    return decoder.decode(bytes);
}
} // namespace Utf8
