#pragma once

#include "clipboard/rows/ClipPictures.h"
#include "clipboard/rows/ClipRowsModel.h"

#include <QObject>
#include <QString>
#include <QtQmlIntegration>

class ClipThumbnailCache;
class ClipboardWatcher;
class MainQueue;

/// The history as the drawer lists it, and which of its clips was copied a moment ago. Main thread only.
class ClipboardList : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the clipboard module")
    Q_PROPERTY(ClipRowsModel* rows READ rows CONSTANT)
    Q_PROPERTY(ClipPictures* pictures READ pictures CONSTANT)
    /// The clip's uuid in lower case without braces; empty for none.
    Q_PROPERTY(QString copied READ copied NOTIFY copiedChanged)

public:
    static constexpr double copiedSeconds = 1.0;

    /// All of them outlive the list.
    ClipboardList(ClipboardWatcher& watcher, ClipThumbnailCache& thumbnails, MainQueue& mainQueue,
                  QObject* parent = nullptr);

    ClipRowsModel* rows() { return &m_rows; }
    ClipPictures* pictures() { return &m_pictures; }
    const QString& copied() const { return m_copied; }

    /// Puts the clip on the pasteboard and marks it for a second.
    Q_INVOKABLE void copy(const QString& uuid);
    Q_INVOKABLE void clear();

Q_SIGNALS:
    void copiedChanged();

private:
    void setCopied(const QString& uuid);

    ClipboardWatcher& m_watcher;
    MainQueue& m_mainQueue;
    ClipRowsModel m_rows;
    ClipPictures m_pictures;
    QString m_copied;
};
