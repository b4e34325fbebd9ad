#include "platform/linux/TerminalPrograms.h"

#include <QFile>

#include <algorithm>
#include <array>

namespace {
/// A desktop file is a page or two of text.
constexpr qint64 longestEntry = qint64(256) * 1024;

/// In lower case. Terminals whose windows are not of the class that their desktop file is named after, or
/// that may have been installed without one.
constexpr std::array knownClasses{
    QLatin1String("alacritty"),
    QLatin1String("blackbox"),
    QLatin1String("contour"),
    QLatin1String("cool-retro-term"),
    QLatin1String("deepin-terminal"),
    QLatin1String("gnome-terminal"),
    QLatin1String("gnome-terminal-server"),
    QLatin1String("guake"),
    QLatin1String("io.elementary.terminal"),
    QLatin1String("kgx"),
    QLatin1String("kitty"),
    QLatin1String("konsole"),
    QLatin1String("lxterminal"),
    QLatin1String("mate-terminal"),
    QLatin1String("org.gnome.console"),
    QLatin1String("org.gnome.terminal"),
    QLatin1String("org.kde.konsole"),
    QLatin1String("org.wezfurlong.wezterm"),
    QLatin1String("ptyxis"),
    QLatin1String("qterminal"),
    QLatin1String("roxterm"),
    QLatin1String("sakura"),
    QLatin1String("st"),
    QLatin1String("st-256color"),
    QLatin1String("stterm"),
    QLatin1String("terminator"),
    QLatin1String("terminology"),
    QLatin1String("termit"),
    QLatin1String("tilda"),
    QLatin1String("tilix"),
    QLatin1String("urxvt"),
    QLatin1String("uxterm"),
    QLatin1String("xfce4-terminal"),
    QLatin1String("xterm"),
    QLatin1String("yakuake"),
};
} // namespace

bool TerminalPrograms::isTerminal(const QString& instanceName, const QString& className,
                                  const QStringList& applicationFolders)
{
    for (const auto& name : {instanceName, className}) {
        const auto lower = name.toLower();
        if (std::ranges::count(knownClasses, lower) > 0)
            return true;
        // The name comes from another program and becomes part of a path.
        if (name.isEmpty() || name.contains(u'/'))
            continue;
        for (const auto& folder : applicationFolders) {
            for (const auto& id : {name, lower}) {
                QFile file(folder + u'/' + id + QStringLiteral(".desktop"));
                if (file.open(QIODevice::ReadOnly) &&
                    isTerminalEntry(QString::fromUtf8(file.read(longestEntry))))
                    return true;
            }
        }
    }
    return false;
}

bool TerminalPrograms::isTerminalEntry(const QString& desktopFile)
{
    // Other groups, those of actions, may have keys of the same name.
    bool isInEntry = false;
    const auto lines = QStringView(desktopFile).split(u'\n');
    for (const auto line : lines) {
        const auto trimmed = line.trimmed();
        if (trimmed.startsWith(u'['))
            isInEntry = trimmed == QLatin1String("[Desktop Entry]");
        const auto equals = trimmed.indexOf(u'=');
        if (!isInEntry || equals < 0 || trimmed.first(equals).trimmed() != QLatin1String("Categories"))
            continue;
        const auto categories = trimmed.sliced(equals + 1).split(u';');
        return std::ranges::any_of(categories, [](QStringView category) {
            return category.trimmed() == QLatin1String("TerminalEmulator");
        });
    }
    return false;
}
