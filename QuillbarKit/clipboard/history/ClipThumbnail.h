#pragma once

#include "clipboard/rows/ClipPicture.h"
#include "clipboard/rows/ClipPictures.h"

/// The picture of an image clip. Empty until it is decoded, and for good where it can't be.
class ClipThumbnail : public ClipPicture
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(ClipPictures* pictures MEMBER m_pictures NOTIFY inputsChanged REQUIRED)
    /// The clip's uuid as a text; empty for none.
    Q_PROPERTY(QString clip MEMBER m_clip NOTIFY inputsChanged REQUIRED)
    /// The longer side at most, in points.
    Q_PROPERTY(int maxPixel MEMBER m_maxPixel NOTIFY inputsChanged)

public:
    explicit ClipThumbnail(QQuickItem* parent = nullptr);

    void componentComplete() override;

Q_SIGNALS:
    void inputsChanged();

private:
    void load();

    ClipPictures* m_pictures = nullptr;
    QString m_clip;
    int m_maxPixel = 72;
};
