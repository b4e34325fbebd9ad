#include "Require.h"
#include "platform/linux/applications/ApplicationMatch.h"
#include "platform/linux/applications/DesktopEntryParser.h"
#include "platform/linux/applications/ProcessReader.h"

#include <cstddef>
#include <cstdint>

// What a desktop file, a process and a window say of themselves; here all three say the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto text = QString::fromUtf8(bytes);
    const auto id = DesktopEntryParser::idOf(text);
    require(!id.contains(u'/'));

    const auto locales = DesktopEntryParser::localeNames(text, text.section(u'\n', 0, 0));
    const auto entry = DesktopEntryParser::parse(bytes, QStringLiteral("a"), locales);
    const DesktopIndex installed(entry ? QList{*entry} : QList<DesktopEntry>());
    require(installed.size() <= 1);

    WindowFacts window;
    window.resourceName = text.section(u'\n', 0, 0);
    window.resourceClass = text.section(u'\n', -1);
    window.desktopFileHint = text;
    window.process.launchedBy = text;
    window.process.program = ProcessReader::programOfCommandLine(bytes);
    require(!window.process.program.contains(u'/'));
    const auto flatpak = ProcessReader::flatpakId(bytes);
    window.process.sandbox = flatpak.isEmpty() ? ProcessReader::sandboxOfControlGroups(bytes)
                                               : Sandbox{Sandbox::Kind::Flatpak, flatpak, {}};
    const auto identifier = ApplicationMatch::bundleIdentifier(window, installed);
    require(!identifier || !identifier->isEmpty());
    return 0;
}
