#include "settings/QuillbarSettings.h"

#include "clipboard/detection/ColorParser.h"
#include "settings/HotKeyFormatting.h"
#include "support/AppPaths.h"

#include <algorithm>

namespace {
constexpr SrgbColor fallbackAccentColor = {0.45, 0.62, 0.99, 1.0};
constexpr int fewestClipboardItems = 5;
constexpr int mostClipboardItems = 100;
constexpr int defaultClipboardItems = 25;
/// With fewer modules than this the panel's icon bar makes no sense.
constexpr qsizetype fewestModules = 3;

int clamped(int clipboardItems)
{
    return std::clamp(clipboardItems, fewestClipboardItems, mostClipboardItems);
}
} // namespace

QuillbarSettings::QuillbarSettings(UserDefaults& defaults, QObject* parent)
    : QObject(parent), m_defaults(defaults)
{
    for (const auto half :
         {&QuillbarSettings::clipboardHotKeyCodeChanged, &QuillbarSettings::clipboardHotKeyModifiersChanged})
        connect(this, half, this, &QuillbarSettings::clipboardHotKeyDisplayChanged);
}

const QStringList& QuillbarSettings::allModuleIDs()
{
    static const QStringList ids = {
        QStringLiteral("media"),     QStringLiteral("vitals"),    QStringLiteral("calendar"),
        QStringLiteral("reminders"), QStringLiteral("timer"),     QStringLiteral("drop"),
        QStringLiteral("shelf"),     QStringLiteral("clipboard"), QStringLiteral("battery"),
        QStringLiteral("control"),   QStringLiteral("mirror"),
    };
    return ids;
}

SrgbColor QuillbarSettings::accentColor() const
{
    const auto parsed = ColorParser::parse(m_accentColorHex);
    return parsed ? parsed->color : fallbackAccentColor;
}

QColor QuillbarSettings::accentQColor() const
{
    const SrgbColor color = accentColor();
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue), static_cast<float>(color.alpha));
}

QUrl QuillbarSettings::selfieSaveFolderURL() const
{
    QString path = m_selfieSaveFolderPath.isEmpty() ? AppPaths::desktopDirectory() : m_selfieSaveFolderPath;
    if (!path.endsWith(u'/'))
        path += u'/';
    return QUrl::fromLocalFile(path);
}

QString QuillbarSettings::clipboardHotKeyDisplay() const
{
    return HotKeyFormatting::display(static_cast<quint32>(m_clipboardHotKeyCode),
                                     static_cast<quint32>(m_clipboardHotKeyModifiers));
}

void QuillbarSettings::resetClipboardHotKey()
{
    setClipboardHotKeyCode(defaultClipboardHotKeyCode);
    setClipboardHotKeyModifiers(defaultClipboardHotKeyModifiers);
}

bool QuillbarSettings::isModuleEnabled(const QString& id) const
{
    return m_enabledModuleIDs.contains(id);
}

void QuillbarSettings::moveModule(int from, int to)
{
    const qsizetype count = m_moduleOrder.size();
    if (from < 0 || from >= count || to < 0 || to > count || from == to)
        return;
    QStringList order = m_moduleOrder;
    const QString id = order.takeAt(from);
    setModuleOrder(order);
    // A subscriber may have changed the list again.
    order = m_moduleOrder;
    order.insert(std::clamp<qsizetype>(from < to ? to - 1 : to, 0, order.size()), id);
    setModuleOrder(order);
}

void QuillbarSettings::setClipboardMaxItems(const int& items)
{
    publish(m_clipboardMaxItems, items, &QuillbarSettings::clipboardMaxItemsChanged);
    const int allowed = clamped(m_clipboardMaxItems);
    if (allowed != m_clipboardMaxItems)
        setClipboardMaxItems(allowed);
    else
        Setting::store(m_defaults, QStringLiteral("clipboardMaxItems"), m_clipboardMaxItems);
}

QStringList QuillbarSettings::migrateModuleOrder(const std::optional<QStringList>& stored)
{
    QStringList order;
    for (const auto& id : stored.value_or(QStringList()) + allModuleIDs()) {
        if (allModuleIDs().contains(id) && !order.contains(id))
            order.append(id);
    }
    return order;
}

QList<int> QuillbarSettings::atLeastOnePreset(const std::optional<QList<int>>& stored)
{
    return stored && !stored->isEmpty() ? *stored : QList{1, 5, 10, 25};
}

QStringList QuillbarSettings::atLeastThreeModules(const std::optional<QStringList>& stored)
{
    return stored && stored->size() >= fewestModules ? *stored : allModuleIDs();
}

int QuillbarSettings::clampedMaxItems(const std::optional<int>& stored)
{
    return clamped(stored.value_or(defaultClipboardItems));
}
