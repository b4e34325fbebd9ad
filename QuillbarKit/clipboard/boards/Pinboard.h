#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

/// A named board of clips. A value; equal when every field is.
struct Pinboard
{
    QUuid id;
    QString name;
    /// The clips in the order in which they were added. Some may no longer be in the history.
    QList<QUuid> clipUUIDs;
    QDateTime createdAt;

    bool operator==(const Pinboard&) const = default;
};
