#include "platform/linux/applications/ProcessReader.h"

#include <QByteArray>
#include <QFile>
#include <QRegularExpression>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
constexpr qsizetype bytesAtMost = qsizetype(128) * 1024;

/// The start of a regular file; empty when it can't be read. A sandbox shows us its own files here, so what
/// stands there may be anything: a pipe must not hold us up, nor a link lead us elsewhere.
QByteArray contents(const QString& path)
{
    const int file = ::open(QFile::encodeName(path).constData(),
                            O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC);
    if (file < 0)
        return {};
    QByteArray bytes;
    struct stat status = {};
    if (::fstat(file, &status) == 0 && S_ISREG(status.st_mode)) {
        bytes.resize(bytesAtMost);
        qsizetype length = 0;
        ssize_t read = 0;
        do {
            read = ::read(file, bytes.data() + length, static_cast<size_t>(bytesAtMost - length));
            length += read > 0 ? read : 0;
        } while (read > 0 && length < bytesAtMost);
        bytes.truncate(length);
    }
    ::close(file);
    return bytes;
}

QString fileName(const QString& path)
{
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

/// The service manager writes some characters of a unit's name as "\x2d".
QString withoutEscapes(const QString& unit)
{
    QString result;
    for (qsizetype i = 0; i < unit.size(); ++i) {
        bool isNumber = false;
        const auto code = unit.sliced(i).startsWith(u"\\x") ? unit.mid(i + 2, 2).toUShort(&isNumber, 16) : 0;
        result += isNumber ? QChar(code) : unit.at(i);
        i += isNumber ? 3 : 0;
    }
    return result;
}

QString valueOf(QByteArrayView environment, QByteArrayView name)
{
    const auto words = environment.toByteArray().split('\0');
    for (const auto& word : words) {
        if (word.startsWith(name) && word.size() > name.size() && word.at(name.size()) == '=')
            return QFile::decodeName(word.sliced(name.size() + 1));
    }
    return {};
}

/// Every program of a Snap lies in the Snap's own folder.
std::optional<Sandbox> sandboxOfExecutable(const QString& path)
{
    static const QRegularExpression snap(QStringLiteral("^(?:/var/lib/snapd)?/snap/([^/]+)/"));
    const auto match = snap.match(path);
    if (!match.hasMatch() || match.captured(1) == u"bin")
        return std::nullopt;
    return Sandbox{Sandbox::Kind::Snap, match.captured(1), {}};
}
} // namespace

ProcessFacts ProcessReader::read(const QString& folder, qint64 pid)
{
    const QString process = folder + u'/' + QString::number(pid) + u'/';
    ProcessFacts facts;
    QString executable = QFile(process + QStringLiteral("exe")).symLinkTarget();
    if (executable.endsWith(u" (deleted)"))
        executable.chop(10); // replaced by an update since
    facts.executable = fileName(executable);
    facts.program = programOfCommandLine(contents(process + QStringLiteral("cmdline")));

    const auto flatpak = flatpakId(contents(process + QStringLiteral("root/.flatpak-info")));
    if (!flatpak.isEmpty())
        facts.sandbox = Sandbox{Sandbox::Kind::Flatpak, flatpak, {}};
    if (!facts.sandbox)
        facts.sandbox = sandboxOfControlGroups(contents(process + QStringLiteral("cgroup")));
    if (!facts.sandbox)
        facts.sandbox = sandboxOfExecutable(executable);

    const auto environment = contents(process + QStringLiteral("environ"));
    // Every child inherits these; only the first one comes with the process that it is meant for.
    if (valueOf(environment, "GIO_LAUNCHED_DESKTOP_FILE_PID") == QString::number(pid))
        facts.launchedBy = valueOf(environment, "GIO_LAUNCHED_DESKTOP_FILE");
    else if (facts.sandbox && facts.sandbox->kind == Sandbox::Kind::Snap)
        facts.launchedBy = valueOf(environment, "BAMF_DESKTOP_FILE_HINT");
    return facts;
}

std::optional<Sandbox> ProcessReader::sandboxOfControlGroups(QByteArrayView groups)
{
    static const QRegularExpression flatpak(QStringLiteral(R"(^app-flatpak-(.+)-[0-9]+\.scope$)"));
    static const QRegularExpression snap(
        QStringLiteral(R"(^snap\.([^.]+)\.([^.]+?)(?:[.-][0-9a-f]{8}(?:-[0-9a-f]{4}){3}-[0-9a-f]{12})?)"
                       R"((?:\.[0-9]+)?\.(?:scope|service)$)"));
    const auto names = QString::fromUtf8(groups).split(QRegularExpression(QStringLiteral("[/\n]")));
    for (const auto& name : names) {
        if (const auto match = flatpak.match(name); match.hasMatch())
            return Sandbox{Sandbox::Kind::Flatpak, withoutEscapes(match.captured(1)), {}};
        if (const auto match = snap.match(withoutEscapes(name)); match.hasMatch())
            return Sandbox{Sandbox::Kind::Snap, match.captured(1), match.captured(2)};
    }
    return std::nullopt;
}

QString ProcessReader::flatpakId(QByteArrayView info)
{
    bool isApplication = false;
    const auto lines = info.toByteArray().split('\n');
    for (const auto& line : lines) {
        if (line.startsWith('['))
            isApplication = line.trimmed() == "[Application]";
        else if (isApplication && line.startsWith("name="))
            return QString::fromUtf8(line.sliced(5)).trimmed();
    }
    return {};
}

QString ProcessReader::programOfCommandLine(QByteArrayView words)
{
    static const QRegularExpression interpreter(
        QStringLiteral("^(?:sh|dash|bash|perl|ruby|python[0-9.]*|node|gjs|gjs-console)$"));
    const auto all = words.toByteArray().split('\0');
    auto name = fileName(QFile::decodeName(all.first()));
    if (!interpreter.match(name).hasMatch() || all.size() < 2 || all.at(1).startsWith('-'))
        return name;
    return fileName(QFile::decodeName(all.at(1)));
}
