#pragma once

#include "media/CoverPictures.h"

#include <functional>
#include <memory>
#include <optional>

class ImageCodec;
class MainQueue;
class SerialQueue;

/// Has covers decoded away from the main thread, where alone it is used itself. It holds one cover: the same
/// bytes are never decoded twice in a row.
class CoverLoader
{
public:
    /// All outlive the loader.
    CoverLoader(const ImageCodec& codec, MainQueue& mainQueue, SerialQueue& queue)
        : m_codec(codec), m_mainQueue(mainQueue), m_queue(queue)
    {}

    /// Called when a cover is there that load() did not have at once; with nothing when it can't be read.
    std::function<void()> onLoaded;

    /// True when `pictures` shows that cover already, or there is none. A cover still on its way that is no
    /// longer asked for is dropped.
    bool load(const std::optional<QByteArray>& bytes, double scale);

    const std::optional<CoverPictures>& pictures() const { return m_pictures; }

private:
    struct Task
    {};

    const ImageCodec& m_codec;
    MainQueue& m_mainQueue;
    SerialQueue& m_queue;
    std::optional<QByteArray> m_bytes;
    double m_scale = 0;
    std::optional<CoverPictures> m_pictures;
    /// Whoever holds it wants the cover still.
    std::shared_ptr<Task> m_task;
};
