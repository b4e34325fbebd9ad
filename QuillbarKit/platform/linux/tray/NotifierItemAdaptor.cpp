#include "platform/linux/tray/NotifierItemAdaptor.h"

#include "platform/linux/tray/TrayIcon.h"

#include <QtEndian>

#include <utility>

namespace {
/// The usual height of a bar's icons, on plain and on dense displays.
constexpr int sides[] = {22, 44, 64};

TrayPixmap onTheBus(const QImage& image)
{
    const auto plain = image.convertToFormat(QImage::Format_ARGB32);
    TrayPixmap pixmap{plain.width(), plain.height(), {}};
    pixmap.bytes.resize(qsizetype(plain.width()) * plain.height() * 4);
    auto* out = pixmap.bytes.data();
    for (int y = 0; y < plain.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(plain.constScanLine(y));
        for (int x = 0; x < plain.width(); ++x, out += 4)
            qToBigEndian(row[x], out);
    }
    return pixmap;
}
} // namespace

NotifierItemAdaptor::NotifierItemAdaptor(QObject* exported, QDBusObjectPath menu, Handlers handlers)
    : QDBusAbstractAdaptor(exported), m_handlers(std::move(handlers)), m_menu(std::move(menu))
{
    TrayTypes::registerAll();
}

void NotifierItemAdaptor::setImage(const QImage& image)
{
    m_pixmaps.clear();
    for (const int side : sides)
        m_pixmaps.append(onTheBus(TrayIcon::onAnyBar(image, side)));
}

void NotifierItemAdaptor::Activate(int x, int y)
{
    m_handlers.clicked(QPoint(x, y));
}

void NotifierItemAdaptor::ContextMenu(int x, int y)
{
    m_handlers.menuWanted(QPoint(x, y));
}

// The middle button and the wheel mean nothing here, but a bar that calls must not get an error.
void NotifierItemAdaptor::SecondaryActivate(int, int) {}

void NotifierItemAdaptor::Scroll(int, const QString&) {}
