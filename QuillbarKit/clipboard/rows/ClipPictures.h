#pragma once

#include <QByteArray>
#include <QImage>
#include <QObject>
#include <QPointer>
#include <QUuid>
#include <QtQmlIntegration>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

class ClipThumbnailCache;
class ClipboardWatcher;
class SerialQueue;

/// Has the small pictures of the clipboard's views made on a thread of its own, so that no row waits for a
/// picture to be decoded. Main thread only.
class ClipPictures : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by whoever shows clips")

public:
    using Found = std::function<void(const QImage&)>;

    /// Both outlive this.
    ClipPictures(const ClipboardWatcher& watcher, ClipThumbnailCache& thumbnails, QObject* parent = nullptr);
    /// Waits for the picture that is being decoded; what still waits is dropped.
    ~ClipPictures() override;

    /// Calls `found` on the main thread, on a later turn and only while `receiver` is there, with the clip's
    /// picture, `maxPixel` points at most. Not at all where there is no such clip or no picture.
    void findThumbnail(const QUuid& clip, int maxPixel, QObject* receiver, Found found);
    /// The same for the icon of a page, which may be a vector graphic too.
    void findIcon(const QByteArray& file, int maxPixel, QObject* receiver, Found found);

private:
    using Look = std::function<std::optional<QImage>()>;
    struct Made
    {
        QImage image;
        QPointer<QObject> receiver;
        Found found;
    };

    void find(Look look, QObject* receiver, Found found);
    Q_INVOKABLE void handOut();

    const ClipboardWatcher& m_watcher;
    ClipThumbnailCache& m_thumbnails;
    std::mutex m_lock;
    /// What is still to be handed out; under m_lock.
    std::vector<Made> m_made;
    /// None until the first picture is asked for: most histories hold only texts.
    std::unique_ptr<SerialQueue> m_queue;
};
