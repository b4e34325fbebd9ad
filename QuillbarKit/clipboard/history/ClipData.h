#pragma once

#include <QByteArray>

#include <memory>

/// Bytes that belong to a clip, such as its image: immutable and shared by every copy of the clip. A value;
/// any thread.
///
/// Holds one form at a time, since an image in both would cost more than twice its size for as long as the
/// clip lives: the bytes until base64() is first asked for, and from then on the text, which every save
/// needs.
class ClipData
{
public:
    explicit ClipData(QByteArray bytes);

    /// From a text in standard base64, which the caller has found valid. Decoded when first needed.
    static ClipData fromBase64(QByteArray base64);

    /// Whether the text is in standard base64, with its padding and nothing else.
    static bool isBase64(QByteArrayView text);

    /// Decoded anew at each call once the text is what is held: about 4 ms for 3 MiB.
    QByteArray bytes() const;

    /// The first bytes, or all if there are not that many. For a look at a header, whatever the size behind.
    QByteArray first(qsizetype count) const;

    /// Standard base64. Encoded at the first call and kept, so that what has not changed is not encoded
    /// again; about 4 ms for 3 MiB, which a capture can spend on its own thread.
    QByteArray base64() const;

    /// The number of bytes, known without decoding.
    qsizetype size() const;

    /// The SHA-256 digest of the bytes, 32 bytes. Calculated once.
    QByteArray sha256() const;

    /// By the bytes.
    bool operator==(const ClipData& other) const;

private:
    struct Shared;
    explicit ClipData(std::shared_ptr<Shared> shared);
    std::shared_ptr<Shared> m_shared;
};
