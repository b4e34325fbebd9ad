#pragma once

#include <QByteArray>

#include <memory>

/// Bytes that belong to a clip, such as its image: immutable, shared by every copy of the clip, and never
/// encoded, decoded or hashed twice. A value; any thread.
class ClipData
{
public:
    explicit ClipData(QByteArray bytes);

    /// From a text in standard base64 (RFC 4648 with padding); throws nothing, but see isBase64().
    /// Decoded when first needed.
    static ClipData fromBase64(QByteArray base64);

    /// Whether the text is in standard base64, with its padding and nothing else.
    static bool isBase64(QByteArrayView text);

    const QByteArray& bytes() const;

    /// Standard base64. Kept, so that what has not changed is not encoded again.
    const QByteArray& base64() const;

    /// The number of bytes, known without decoding.
    qint64 size() const;

    /// The SHA-256 digest of the bytes, 32 bytes.
    const QByteArray& sha256() const;

    /// By the bytes.
    bool operator==(const ClipData& other) const;

private:
    struct Shared;
    explicit ClipData(std::shared_ptr<Shared> shared);
    std::shared_ptr<Shared> m_shared;
};
