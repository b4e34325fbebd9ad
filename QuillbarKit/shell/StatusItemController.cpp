#include "shell/StatusItemController.h"

#include "platform/StatusItem.h"

#include <QPainter>
#include <QSvgRenderer>

#include <utility>

namespace {
/// Bars scale it down to their height, on dense displays to twice that.
constexpr int iconPixels = 64;

QImage icon()
{
    QImage image(iconPixels, iconPixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QSvgRenderer(QStringLiteral(":/symbols/rectangle.topthird.inset.filled")).render(&painter);
    return image;
}

StatusMenuEntry entry(const QString& title, const QString& keyEquivalent, const std::function<void()>& action)
{
    return {title, keyEquivalent, std::nullopt, static_cast<bool>(action), action};
}
} // namespace

StatusItemController::StatusItemController(StatusItem& statusItem) : m_statusItem(statusItem) {}

StatusItemController::~StatusItemController()
{
    m_statusItem.setClickHandler({});
    m_statusItem.setMenu({});
}

void StatusItemController::install()
{
    m_statusItem.setClickHandler([this] { buttonClicked(); });
    rebuildMenu();
    m_statusItem.install(icon(), QStringLiteral("Quillbar"));
}

void StatusItemController::rebuildMenu()
{
    const StatusMenuEntry separator{};
    m_statusItem.setMenu({
        {u"Pin Open"_qs, {}, m_isPinned, static_cast<bool>(onTogglePin), [this] { togglePin(); }},
        entry(u"Settings…"_qs, u","_qs, onOpenSettings),
        separator,
        entry(u"Check for Updates…"_qs, {}, onCheckForUpdates),
        separator,
        entry(u"About Quillbar"_qs, {}, onAbout),
        separator,
        entry(u"Quit Quillbar"_qs, u"q"_qs, onQuit),
    });
}

std::optional<ScreenRect> StatusItemController::buttonFrameOnScreen() const
{
    return m_statusItem.frameOnScreen();
}

void StatusItemController::buttonClicked()
{
    if (onClipboard)
        onClipboard();
}

void StatusItemController::togglePin()
{
    m_isPinned = !m_isPinned;
    rebuildMenu();
    onTogglePin(m_isPinned);
}
