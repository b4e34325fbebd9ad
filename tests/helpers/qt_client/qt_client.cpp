// A Qt program at the clipboard. "copy text|rich|image|files" copies, says so and stays; "paste" writes what
// it can paste as a line of JSON and ends.

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMimeData>
#include <QUrl>

#include <iostream>

namespace {
QMimeData* contents(const QString& kind)
{
    auto* data = new QMimeData;
    if (kind == u"text") {
        data->setText(QStringLiteral("plain täxt"));
    } else if (kind == u"rich") {
        data->setText(QStringLiteral("rich text"));
        data->setHtml(QStringLiteral("<b>rich</b> text"));
    } else if (kind == u"image") {
        QImage image(128, 60, QImage::Format_RGB32);
        image.fill(Qt::red);
        data->setImageData(image);
    } else if (kind == u"files") {
        data->setUrls(
            {QUrl::fromLocalFile(QStringLiteral("/tmp/a b")), QUrl::fromLocalFile(QStringLiteral("/tmp/ä"))});
    }
    return data;
}

QJsonObject pasted(const QMimeData& data)
{
    QJsonObject found;
    if (data.hasText())
        found[QStringLiteral("text")] = data.text();
    if (data.hasHtml())
        found[QStringLiteral("html")] = data.html();
    if (data.hasImage()) {
        const auto image = data.imageData().value<QImage>();
        found[QStringLiteral("image")] = QJsonArray{image.width(), image.height()};
    }
    if (data.hasUrls()) {
        QJsonArray files;
        for (const QUrl& url : data.urls())
            files.append(url.toLocalFile());
        found[QStringLiteral("files")] = files;
    }
    return found;
}
} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    QClipboard& clipboard = *QGuiApplication::clipboard();
    if (application.arguments().value(1) == u"paste") {
        std::cout << QJsonDocument(pasted(*clipboard.mimeData())).toJson(QJsonDocument::Compact).constData()
                  << std::endl;
        return 0;
    }
    clipboard.setMimeData(contents(application.arguments().value(2)));
    std::cout << "owning" << std::endl;
    return QGuiApplication::exec();
}
