#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>

/// A text that the user keeps for reuse. A value; equal when every field is.
struct Snippet
{
    QUuid id;
    QString title;
    QString text;
    /// Of the creation or the last update. In UTC.
    QDateTime date;

    bool operator==(const Snippet&) const = default;
};
