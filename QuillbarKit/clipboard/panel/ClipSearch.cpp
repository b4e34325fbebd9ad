#include "clipboard/panel/ClipSearch.h"

#include "clipboard/history/ClipText.h"
#include "clipboard/history/ClipThumbnailCache.h"
#include "clipboard/panel/SearchText.h"

#include <QSet>

QString ClipSearch::displayText(const Clip& clip) const
{
    return ClipText::displayText(clip, clip.kind == Clip::Kind::Image
                                           ? m_thumbnails.pixelSize(clip.uuid, clip.imageData)
                                           : std::nullopt);
}

const QByteArray& ClipSearch::folded(const Clip& clip)
{
    const QString text = displayText(clip);
    Folded& entry = m_folded[clip.uuid];
    // A text that was edited is another one; the same one shares its characters.
    const bool isSame = entry.text.constData() == text.constData() || entry.text == text;
    if (!isSame || entry.folded.isNull())
        entry = {text, SearchText::folded(text)};
    return entry.folded;
}

QList<Clip> ClipSearch::matches(const QList<Clip>& clips, const QString& query)
{
    const QString wanted = query.trimmed();
    if (wanted.isEmpty())
        return clips;
    const QByteArray needle = SearchText::folded(wanted);
    QList<Clip> found;
    for (const Clip& clip : clips) {
        if (SearchText::contains(folded(clip), needle))
            found.append(clip);
    }
    return found;
}

void ClipSearch::keepOnly(const QList<Clip>& clips)
{
    QSet<QUuid> wanted;
    for (const Clip& clip : clips)
        wanted.insert(clip.uuid);
    m_folded.removeIf([&](const auto& entry) { return !wanted.contains(entry.key()); });
}
