#include "clipboard/history/ClipData.h"

#include "support/Base64.h"

#include <algorithm>
#include <mutex>
#include <openssl/evp.h>
#include <utility>

namespace {
/// What is held at a moment.
struct Form
{
    QByteArray data;
    bool isEncoded = false;
};

QByteArray sha256Of(const QByteArray& bytes)
{
    QByteArray digest(EVP_MD_size(EVP_sha256()), Qt::Uninitialized);
    if (EVP_Digest(bytes.constData(), static_cast<std::size_t>(bytes.size()),
                   reinterpret_cast<unsigned char*>(digest.data()), nullptr, EVP_sha256(), nullptr) != 1)
        qFatal("ClipData: the crypto library has no SHA-256");
    return digest;
}
} // namespace

struct ClipData::Shared
{
    Shared(Form initialForm, qsizetype decodedSize) : size(decodedSize), m_form(std::move(initialForm)) {}

    Form form()
    {
        const std::scoped_lock locked(m_mutex);
        return m_form;
    }

    QByteArray encoded()
    {
        // Whoever comes in meanwhile waits rather than encodes the same once more.
        const std::scoped_lock locked(m_mutex);
        if (!m_form.isEncoded)
            m_form = {Base64::encode(m_form.data), true};
        return m_form.data;
    }

    const qsizetype size;
    std::once_flag hashed;
    QByteArray digest;

private:
    std::mutex m_mutex;
    Form m_form;
};

ClipData::ClipData(QByteArray bytes)
{
    const qsizetype size = bytes.size();
    m_shared = std::make_shared<Shared>(Form{std::move(bytes), false}, size);
}

ClipData::ClipData(std::shared_ptr<Shared> shared) : m_shared(std::move(shared)) {}

ClipData ClipData::fromBase64(QByteArray base64)
{
    const qsizetype size = Base64::decodedSize(base64);
    // The last digit may have bits set that belong to no byte. Cleared, texts are equal when the bytes are.
    if (size % 3 != 0)
        base64.replace(base64.size() - 4, 4, Base64::encode(Base64::decode(base64.last(4))));
    return ClipData(std::make_shared<Shared>(Form{std::move(base64), true}, size));
}

bool ClipData::isBase64(QByteArrayView text)
{
    return Base64::isValid(text);
}

QByteArray ClipData::bytes() const
{
    const Form form = m_shared->form();
    return form.isEncoded ? Base64::decode(form.data) : form.data;
}

QByteArray ClipData::first(qsizetype count) const
{
    count = std::min(count, size());
    const Form form = m_shared->form();
    if (!form.isEncoded)
        return form.data.first(count);
    return Base64::decode(QByteArrayView(form.data).first((count + 2) / 3 * 4)).first(count);
}

QByteArray ClipData::base64() const
{
    return m_shared->encoded();
}

qsizetype ClipData::size() const
{
    return m_shared->size;
}

QByteArray ClipData::sha256() const
{
    std::call_once(m_shared->hashed, [this] { m_shared->digest = sha256Of(bytes()); });
    return m_shared->digest;
}

bool ClipData::operator==(const ClipData& other) const
{
    if (m_shared == other.m_shared)
        return true;
    if (size() != other.size())
        return false;
    const Form mine = m_shared->form();
    const Form theirs = other.m_shared->form();
    return mine.isEncoded == theirs.isEncoded ? mine.data == theirs.data : bytes() == other.bytes();
}
