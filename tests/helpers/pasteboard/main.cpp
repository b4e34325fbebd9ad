// On the clipboard as the program is: for each growth of the change count it writes a line of JSON that tells
// what the contents are. Options come as arguments, "deadline=300" and so on: deadline, patience, handover
// and empty in milliseconds, bytes and text in bytes. For each line on standard input:
//
//   write {"text": ..., "html": ..., "rtf": ..., "files": [...], "png": <size>}   takes the clipboard
//   front vault   that program is in front from now on, by what the clipboard is told; answered with the name
//   gap      tells, in milliseconds, how long the main thread was held up at most since it was last asked,
//   and
//            for how long it was at work itself at most, which a busy machine does not change; the first
//            time, whose answer means nothing, begins the measuring
//
// Ends with the input.

#include "platform/ImageCodec.h"
#include "platform/linux/x11/X11Pasteboard.h"
#include "support/QtMainQueue.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <utility>

#include <time.h>
#include <unistd.h>

namespace {
QByteArray encodedPng(const QImage& image)
{
    QByteArray file;
    QBuffer buffer(&file);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return file;
}

/// The toolkit's own formats.
class PlainCodec final : public ImageCodec
{
public:
    std::optional<QSize> pixelSize(const QByteArray& file) const override
    {
        const QImage image = QImage::fromData(file);
        return image.isNull() ? std::nullopt : std::optional(image.size());
    }
    std::optional<QImage> thumbnail(const QByteArray& file, int maxPixels) const override
    {
        return QImage::fromData(file).scaled(maxPixels, maxPixels, Qt::KeepAspectRatio);
    }
    std::optional<QByteArray> png(const QByteArray& file) const override
    {
        if (file.startsWith("\x89PNG"))
            return file;
        const QImage image = QImage::fromData(file);
        return image.isNull() ? std::nullopt : std::optional(encodedPng(image));
    }
};

double milliseconds(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// Measures the time from one beat of a timer of one millisecond to the next.
class Heartbeat : public QObject
{
public:
    Heartbeat()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, this, [this] { beat(); });
    }
    QJsonObject takeLongest()
    {
        if (!m_timer.isActive()) {
            beat();
            m_timer.start(1);
        }
        return {{QStringLiteral("gap"), std::exchange(m_longestGap, 0)},
                {QStringLiteral("work"), std::exchange(m_longestWork, 0)}};
    }

private:
    void beat()
    {
        const double time = milliseconds(CLOCK_MONOTONIC);
        const double work = milliseconds(CLOCK_THREAD_CPUTIME_ID);
        m_longestGap = std::max(m_longestGap, time - std::exchange(m_lastTime, time));
        m_longestWork = std::max(m_longestWork, work - std::exchange(m_lastWork, work));
    }

    QTimer m_timer;
    double m_lastTime = 0;
    double m_lastWork = 0;
    double m_longestGap = 0;
    double m_longestWork = 0;
};

void print(const QJsonObject& object)
{
    std::cout << QJsonDocument(object).toJson(QJsonDocument::Compact).constData() << std::endl;
}

/// A picture without regularity, so that its file has about 4 bytes a pixel.
QByteArray noisyPng(int size)
{
    QImage image(size, size, QImage::Format_RGB32);
    quint32 state = 1;
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            state = state * 1664525 + 1013904223;
            image.setPixel(x, y, state >> 8);
        }
    }
    return encodedPng(image);
}

/// `count` tells the changes since the start.
void printContents(const Pasteboard& pasteboard, qint64 count)
{
    // Long ones by their size, since the main thread is being watched.
    constexpr qsizetype shortText = 4096;
    const PasteboardContents& contents = pasteboard.contents();
    QJsonObject object{{QStringLiteral("count"), count},
                       {QStringLiteral("types"), QJsonArray::fromStringList(contents.types)},
                       {QStringLiteral("files"), QJsonArray::fromStringList(contents.filePaths)}};
    if (contents.copiedIn)
        object[QStringLiteral("copiedIn")] = *contents.copiedIn;
    if (contents.string) {
        object[QStringLiteral("length")] = contents.string->size();
        object[QStringLiteral("text")] = contents.string->left(shortText);
    }
    for (const auto& [type, bytes] : contents.data)
        object[type] = QString::fromLatin1(bytes.left(shortText));
    if (contents.png) {
        const QImage image = contents.png->size() < (1 << 20) ? QImage::fromData(*contents.png) : QImage();
        object[QStringLiteral("png")] = contents.png->size();
        object[QStringLiteral("width")] = image.width();
        object[QStringLiteral("height")] = image.height();
    }
    print(object);
}

PasteboardContents contentsOf(const QJsonObject& object)
{
    PasteboardContents contents;
    if (const auto text = object[QStringLiteral("text")]; text.isString())
        contents.string = text.toString();
    if (const auto html = object[QStringLiteral("html")]; html.isString())
        contents.data[PasteboardType::html] = html.toString().toUtf8();
    if (const auto rtf = object[QStringLiteral("rtf")]; rtf.isString())
        contents.data[PasteboardType::rtf] = rtf.toString().toUtf8();
    for (const auto& path : object[QStringLiteral("files")].toArray())
        contents.filePaths.append(path.toString());
    if (const int size = object[QStringLiteral("png")].toInt())
        contents.png = noisyPng(size);
    return contents;
}

X11PasteboardOptions optionsOf(const QStringList& arguments)
{
    X11PasteboardOptions options;
    for (const QString& argument : arguments) {
        const QString name = argument.section(u'=', 0, 0);
        const qint64 value = argument.section(u'=', 1).toLongLong();
        if (name == u"deadline")
            options.offerDeadline = std::chrono::milliseconds(value);
        else if (name == u"patience")
            options.requestorPatience = std::chrono::milliseconds(value);
        else if (name == u"handover")
            options.handOver = std::chrono::milliseconds(value);
        else if (name == u"empty")
            options.emptyAfter = std::chrono::milliseconds(value);
        else if (name == u"bytes")
            options.maxOfferBytes = value;
        else if (name == u"text")
            options.largestText = value;
    }
    return options;
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QtMainQueue queue;
    const PlainCodec codec;
    std::optional<QString> front;
    X11Pasteboard pasteboard(
        codec, queue, [&] { return front; }, optionsOf(application.arguments()));
    const qint64 firstCount = pasteboard.changeCount();
    pasteboard.setChangeHandler([&] { printContents(pasteboard, pasteboard.changeCount() - firstCount); });
    Heartbeat heartbeat;

    QByteArray input;
    QSocketNotifier notifier(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &application, [&] {
        char bytes[65536];
        const ssize_t size = read(STDIN_FILENO, bytes, sizeof bytes);
        if (size <= 0) {
            application.quit();
            return;
        }
        input.append(bytes, size);
        for (qsizetype end; (end = input.indexOf('\n')) >= 0; input.remove(0, end + 1)) {
            const QByteArray line = input.left(end);
            if (line == "gap") {
                print(heartbeat.takeLongest());
            } else if (line.startsWith("front ")) {
                front = QString::fromUtf8(line.mid(6));
                print({{QStringLiteral("front"), *front}});
            } else if (line.startsWith("write ")) {
                pasteboard.write(contentsOf(QJsonDocument::fromJson(line.mid(6)).object()));
            }
        }
    });
    return application.exec();
}
