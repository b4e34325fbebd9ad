#include "platform/linux/applications/DesktopEntryParser.h"

#include <QHash>

#include <algorithm>
#include <array>

namespace {
/// Programs that start others: whose window it will be stands further along the line.
constexpr std::array<QStringView, 13> launchers{
    u"bash", u"dbus-launch", u"electron", u"env", u"flatpak", u"gapplication", u"java",
    u"perl", u"pkexec",      u"python3",  u"sh",  u"snap",    u"wine"};

constexpr std::array<QByteArrayView, 7> keys{"Type",   "Name",           "Icon",     "Exec",
                                             "Hidden", "StartupWMClass", "NoDisplay"};

/// The values of the group "Desktop Entry" that are used, by their keys with the locale in brackets. Most of
/// a file are translations of others.
QHash<QByteArrayView, QByteArrayView> mainGroup(QByteArrayView file)
{
    QHash<QByteArrayView, QByteArrayView> values;
    bool isMain = false;
    while (!file.isEmpty()) {
        const auto end = file.indexOf('\n');
        const auto line = (end < 0 ? file : file.first(end)).trimmed();
        file = end < 0 ? QByteArrayView() : file.sliced(end + 1);
        if (line.startsWith('[')) {
            if (isMain)
                break;
            isMain = line == "[Desktop Entry]";
            continue;
        }
        const auto equals = isMain ? line.indexOf('=') : -1;
        if (equals < 1)
            continue;
        const auto key = line.first(equals).trimmed();
        const auto bracket = key.indexOf('[');
        if (std::ranges::find(keys, bracket < 0 ? key : key.first(bracket)) != keys.end())
            values.insert(key, line.sliced(equals + 1).trimmed());
    }
    return values;
}

QString unescaped(QByteArrayView value)
{
    QByteArray bytes;
    bytes.reserve(value.size());
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            bytes += value[i];
            continue;
        }
        switch (value[++i]) {
        case 's':
            bytes += ' ';
            break;
        case 'n':
            bytes += '\n';
            break;
        case 't':
            bytes += '\t';
            break;
        case 'r':
            bytes += '\r';
            break;
        case '\\':
            bytes += '\\';
            break;
        default:
            bytes += '\\';
            bytes += value[i];
        }
    }
    return QString::fromUtf8(bytes);
}

QString localized(const QHash<QByteArrayView, QByteArrayView>& values, const char* key,
                  const QStringList& locales)
{
    for (const auto& locale : locales) {
        const QByteArray localKey = key + ('[' + locale.toUtf8()) + ']';
        if (const auto found = values.constFind(localKey); found != values.constEnd())
            return unescaped(*found);
    }
    return unescaped(values.value(key));
}

/// The first word of a command line, and what is left of it.
QString takeWord(QStringView& line)
{
    line = line.trimmed();
    QString word;
    bool isQuoted = false;
    qsizetype i = 0;
    for (; i < line.size() && (isQuoted || !line[i].isSpace()); ++i) {
        if (line[i] == u'"')
            isQuoted = !isQuoted;
        else if (line[i] == u'\\' && i + 1 < line.size())
            word += line[++i];
        else
            word += line[i];
    }
    line = line.sliced(i);
    return word;
}

QString programOf(const QString& commandLine)
{
    QStringView line(commandLine);
    QString word = takeWord(line);
    QString name = word.sliced(word.lastIndexOf(u'/') + 1);
    if (name == u"env") {
        do
            word = takeWord(line);
        while (word.contains(u'=') || word.startsWith(u'-'));
        name = word.sliced(word.lastIndexOf(u'/') + 1);
    }
    return std::ranges::find(launchers, QStringView(name)) == launchers.end() ? name : QString();
}

/// Of "lang_COUNTRY.ENCODING@MODIFIER" all that a text may be marked with.
QStringList variants(QString locale)
{
    QString modifier;
    if (const auto at = locale.indexOf(u'@'); at >= 0) {
        modifier = locale.sliced(at);
        locale.truncate(at);
    }
    if (const auto dot = locale.indexOf(u'.'); dot >= 0)
        locale.truncate(dot);
    if (locale.isEmpty() || locale == u"C" || locale == u"POSIX")
        return {};
    const QString language = locale.section(u'_', 0, 0);
    QStringList names;
    for (const auto& name : {locale + modifier, locale, language + modifier, language}) {
        if (!names.contains(name))
            names.append(name);
    }
    return names;
}
} // namespace

std::optional<DesktopEntry> DesktopEntryParser::parse(QByteArrayView file, const QString& id,
                                                      const QStringList& locales)
{
    const auto values = mainGroup(file);
    const bool isHidden = values.value("Hidden") == "true";
    if (!isHidden && (values.value("Type") != "Application" || values.value("Name").isEmpty()))
        return std::nullopt;
    return DesktopEntry{id,
                        localized(values, "Name", locales),
                        localized(values, "Icon", locales),
                        unescaped(values.value("StartupWMClass")),
                        programOf(unescaped(values.value("Exec"))),
                        values.value("NoDisplay") == "true",
                        isHidden};
}

QStringList DesktopEntryParser::localeNames(const QString& locale, const QString& languages)
{
    const auto own = variants(locale);
    if (own.isEmpty())
        return {}; // of the C locale, which no list of languages overrules
    QStringList names;
    const auto wanted = languages.split(u':', Qt::SkipEmptyParts);
    for (const auto& language : wanted)
        names += variants(language);
    names += own;
    names.removeDuplicates();
    return names;
}

QString DesktopEntryParser::idOf(const QString& relativePath)
{
    constexpr QStringView suffix = u".desktop";
    if (!relativePath.endsWith(suffix))
        return {};
    return relativePath.chopped(suffix.size()).replace(u'/', u'-');
}
