#pragma once

#include "settings/Enumerations.h"

#include <QObject>
#include <QtQmlIntegration>

#include <optional>

/// The sizes of the media view in points.
class MediaLayout : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// Side of the cover beside the texts.
    Q_INVOKABLE static double artPoints(int size)
    {
        return Settings::points(static_cast<Settings::MediaArtSize>(size));
    }

    /// Height of the drawer; none for the usual one.
    static std::optional<double> drawerHeight(Settings::MediaArtPosition position,
                                              Settings::MediaArtSize size);
};
