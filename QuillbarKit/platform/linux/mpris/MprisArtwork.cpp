#include "platform/linux/mpris/MprisArtwork.h"

#include "platform/HttpSession.h"
#include "support/MainQueue.h"
#include "support/SerialQueue.h"

#include <QPointer>

#include <array>
#include <utility>

namespace {
/// When a track's file is looked at again, in seconds after the look before: some players announce a cover
/// before they have written it.
constexpr std::array nextLooks{0.5, 2.0, 5.0};

bool isOnTheWeb(const QString& address)
{
    return address.startsWith(u"https:", Qt::CaseInsensitive) ||
           address.startsWith(u"http:", Qt::CaseInsensitive);
}

/// The tracks of one album share what a web address holds. A file is often written anew for each.
bool sharesCover(const MprisMetadata& a, const MprisMetadata& b)
{
    return isOnTheWeb(a.artUrl) && a.artUrl == b.artUrl && !a.album.isEmpty() && a.album == b.album;
}
} // namespace

MprisArtwork::MprisArtwork(MainQueue& mainQueue, SerialQueue& background, HttpSession& session,
                           QObject* parent)
    : QObject(parent), m_mainQueue(mainQueue), m_background(background), m_session(session)
{}

MprisArtwork::~MprisArtwork()
{
    if (m_nextLook)
        m_nextLook->cancel();
}

bool MprisArtwork::follow(const std::optional<MprisMetadata>& track, const QString& owner, qint64 pid)
{
    auto wanted = track;
    if (wanted)
        wanted->length = 0; // becomes known later, and is nothing to tell tracks apart by
    if (wanted == m_track && owner == m_owner)
        return false;
    const bool keeps = wanted && m_track && owner == m_owner && sharesCover(*wanted, *m_track);
    m_track = wanted;
    m_owner = owner;
    if (keeps)
        return false;
    ++m_generation;
    m_bytes.clear();
    if (m_nextLook)
        m_nextLook->cancel();
    const auto address = m_track ? m_track->artUrl : QString();
    m_isReading = !address.isEmpty();
    if (!m_isReading)
        return false;
    m_places = MprisArtworkFile::places(address, pid);
    m_stamp = {};
    m_looks = 0;
    if (!m_places.isEmpty())
        readFile();
    else if (isOnTheWeb(address))
        fetch(QUrl(address));
    else
        readData(address);
    return true;
}

void MprisArtwork::readFile()
{
    m_background.async([&mainQueue = m_mainQueue, target = QPointer(this), generation = m_generation,
                        places = m_places, stamp = m_stamp] {
        const auto contents = MprisArtworkFile::read(places, stamp);
        mainQueue.async([target, generation, contents] {
            if (!target || generation != target->m_generation)
                return;
            if (contents)
                target->m_stamp = contents->stamp;
            target->finish(generation, contents ? std::optional(contents->bytes) : std::nullopt);
            target->readFileLater();
        });
    });
}

void MprisArtwork::readFileLater()
{
    if (m_looks >= static_cast<int>(nextLooks.size()))
        return;
    m_nextLook = WorkItem::make([this] { readFile(); });
    m_mainQueue.asyncAfter(nextLooks.at(static_cast<size_t>(m_looks++)), m_nextLook);
}

void MprisArtwork::readData(const QString& address)
{
    m_background.async(
        [&mainQueue = m_mainQueue, target = QPointer(this), generation = m_generation, address] {
            mainQueue.async([target, generation, bytes = MprisArtworkFile::dataOf(address)] {
                if (target)
                    target->finish(generation, bytes);
            });
        });
}

QCoro::Task<> MprisArtwork::fetch(QUrl address)
{
    const QPointer target(this);
    const int generation = m_generation;
    HttpRequest request;
    request.url = std::move(address);
    request.requestTimeout = 10;
    request.resourceTimeout = 30;
    request.bodyLimit = MprisArtworkFile::largest;
    const auto response = co_await m_session.get(request);
    if (!target)
        co_return;
    const bool isWhole = response && response->status == 200 && !response->isCut;
    finish(generation, isWhole ? std::optional(response->body) : std::nullopt);
}

void MprisArtwork::finish(int generation, const std::optional<QByteArray>& bytes)
{
    if (generation != m_generation)
        return;
    const bool wasReading = std::exchange(m_isReading, false);
    if (bytes && *bytes != m_bytes) {
        m_bytes = *bytes;
        Q_EMIT changed();
    }
    if (wasReading)
        Q_EMIT readingEnded();
}
