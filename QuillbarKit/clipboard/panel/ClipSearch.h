#pragma once

#include "clipboard/history/Clip.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QUuid>

class ClipThumbnailCache;

/// Finds the clips whose label holds a text, whatever the case of the letters. It keeps each clip's label in
/// the form in which it is searched, so that each further letter typed costs a pass over bytes and no more.
/// Main thread only.
class ClipSearch
{
public:
    /// `thumbnails` outlives this; it knows the pixel sizes that images are labelled with.
    explicit ClipSearch(ClipThumbnailCache& thumbnails) : m_thumbnails(thumbnails) {}

    /// Those of the clips that `query` is found in, in their order; whitespace around the query doesn't
    /// count, and all of them where nothing else is in it.
    QList<Clip> matches(const QList<Clip>& clips, const QString& query);

    /// The label of a clip.
    QString displayText(const Clip& clip) const;

    /// Forgets what is kept of clips that are not among these.
    void keepOnly(const QList<Clip>& clips);

private:
    struct Folded
    {
        QString text;
        QByteArray folded;
    };
    const QByteArray& folded(const Clip& clip);

    ClipThumbnailCache& m_thumbnails;
    QHash<QUuid, Folded> m_folded;
};
