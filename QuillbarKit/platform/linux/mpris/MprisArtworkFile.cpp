#include "platform/linux/mpris/MprisArtworkFile.h"

#include <QFile>
#include <QUrl>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
/// A file that closes itself.
class OpenFile
{
public:
    explicit OpenFile(const QString& path)
        // What stands at a place that another program names may be anything: a pipe must not hold us up.
        : m_descriptor(
              ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC))
    {}
    ~OpenFile()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    int descriptor() const { return m_descriptor; }

private:
    const int m_descriptor;
};

QByteArray contents(int descriptor, qint64 size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    qsizetype length = 0;
    while (length < bytes.size()) {
        const auto count =
            ::read(descriptor, bytes.data() + length, static_cast<size_t>(bytes.size() - length));
        if (count <= 0)
            break;
        length += count;
    }
    bytes.truncate(length);
    return bytes;
}
} // namespace

QStringList MprisArtworkFile::places(const QString& address, qint64 pid, const QString& processes)
{
    QString path;
    if (address.startsWith(u'/'))
        path = address;
    else if (address.startsWith(u"file:", Qt::CaseInsensitive))
        path = QUrl(address).path(QUrl::FullyDecoded);
    if (!path.startsWith(u'/') || path.contains(QChar::Null))
        return {};
    QStringList places;
    if (pid > 0)
        places.append(processes + u'/' + QString::number(pid) + QStringLiteral("/root") + path);
    places.append(path);
    // Some write a file's name into the address as it is.
    constexpr QStringView scheme = u"file://";
    const auto unquoted = address.mid(scheme.size());
    if (address.startsWith(scheme) && unquoted.startsWith(u'/') && unquoted != path)
        places.append(unquoted);
    return places;
}

std::optional<MprisArtworkFile::Contents> MprisArtworkFile::read(const QStringList& places,
                                                                 const Stamp& known)
{
    for (const auto& place : places) {
        const OpenFile file(place);
        struct stat status = {};
        if (file.descriptor() < 0 || ::fstat(file.descriptor(), &status) != 0 || !S_ISREG(status.st_mode))
            continue;
        const Stamp stamp{status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
                          status.st_mtim.tv_nsec};
        if (stamp == known || stamp.size <= 0 || stamp.size > largest)
            return std::nullopt;
        auto bytes = contents(file.descriptor(), stamp.size);
        return bytes.isEmpty() ? std::nullopt : std::optional(Contents{std::move(bytes), stamp});
    }
    return std::nullopt;
}

QByteArray MprisArtworkFile::dataOf(const QString& address)
{
    // Three bytes of base64 a four letters; of anything else at most one a letter.
    const auto comma = address.indexOf(u',');
    if (!address.startsWith(u"data:", Qt::CaseInsensitive) || comma < 0 || address.size() > largest * 3 / 2)
        return {};
    const auto body = QByteArray::fromPercentEncoding(address.sliced(comma + 1).toUtf8());
    const bool isBase64 = QStringView(address).first(comma).endsWith(u";base64", Qt::CaseInsensitive);
    const auto bytes = isBase64 ? QByteArray::fromBase64(body) : body;
    return bytes.size() > largest ? QByteArray() : bytes;
}

QByteArray MprisArtworkFile::at(const QString& address)
{
    const auto files = places(address, 0);
    if (files.isEmpty())
        return dataOf(address);
    const auto contents = read(files, {});
    return contents ? contents->bytes : QByteArray();
}
