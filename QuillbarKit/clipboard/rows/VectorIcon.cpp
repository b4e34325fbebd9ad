#include "clipboard/rows/VectorIcon.h"

#include <QPainter>
#include <QSvgRenderer>
#include <QXmlStreamReader>

#include <algorithm>
#include <array>

namespace {
constexpr int sideLimit = 1024;

constexpr std::array<QStringView, 16> harmlessElements{
    u"svg",      u"g",       u"defs",           u"path",           u"rect", u"circle", u"ellipse", u"line",
    u"polyline", u"polygon", u"linearGradient", u"radialGradient", u"stop", u"title",  u"desc",    u"style"};

/// What a style may not say. A backslash may stand for any letter.
bool isHarmlessStyle(QStringView style)
{
    return !style.contains(u"dasharray", Qt::CaseInsensitive) &&
           !style.contains(u"@import", Qt::CaseInsensitive) && !style.contains(u'\\');
}

bool isHarmless(const QXmlStreamAttributes& attributes)
{
    return std::ranges::all_of(attributes, [](const QXmlStreamAttribute& attribute) {
        // Gradients build upon each other by it, and so may go in circles.
        return attribute.name() != u"href" && isHarmlessStyle(attribute.name()) &&
               isHarmlessStyle(attribute.value());
    });
}

bool isHarmless(const QByteArray& file)
{
    QXmlStreamReader reader(file);
    int elements = 0;
    int depth = 0;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::DTD:
            if (!reader.entityDeclarations().isEmpty())
                return false;
            break;
        case QXmlStreamReader::ProcessingInstruction:
            // A style sheet of another file.
            return false;
        case QXmlStreamReader::StartElement:
            if (++elements > VectorIcon::elementLimit || ++depth > VectorIcon::depthLimit ||
                std::ranges::find(harmlessElements, reader.name()) == harmlessElements.end() ||
                !isHarmless(reader.attributes()))
                return false;
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        case QXmlStreamReader::Characters:
            if (!isHarmlessStyle(reader.text()))
                return false;
            break;
        default:
            break;
        }
    }
    return !reader.hasError() && elements > 0;
}
} // namespace

std::optional<QImage> VectorIcon::draw(const QByteArray& file, int side)
{
    if (side < 1 || side > sideLimit || file.size() > fileLimit || !isHarmless(file))
        return std::nullopt;
    QSvgRenderer renderer;
    if (!renderer.load(file) || renderer.viewBoxF().isEmpty())
        return std::nullopt;
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}
