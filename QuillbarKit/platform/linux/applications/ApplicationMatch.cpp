#include "platform/linux/applications/ApplicationMatch.h"

#include "platform/linux/applications/DesktopEntryParser.h"

#include <algorithm>

namespace {
/// Of an id or a path, with or without the suffix.
QString idOfHint(const QString& hint)
{
    constexpr QStringView folder = u"/applications/";
    const auto below = hint.lastIndexOf(folder);
    const auto relative = hint.sliced(below < 0 ? hint.lastIndexOf(u'/') + 1 : below + folder.size());
    const auto id = DesktopEntryParser::idOf(relative);
    return id.isEmpty() ? relative : id;
}

bool claimsClass(const DesktopEntry& entry, const WindowFacts& window)
{
    if (entry.startupWMClass.isEmpty())
        return false;
    return entry.startupWMClass.compare(window.resourceName, Qt::CaseInsensitive) == 0 ||
           entry.startupWMClass.compare(window.resourceClass, Qt::CaseInsensitive) == 0;
}

/// A sandboxed program may bring several desktop files, whose ids all begin with its own. It can't pass for a
/// program outside of them, whatever its windows say.
QString sandboxed(const Sandbox& sandbox, const WindowFacts& window, const DesktopIndex& installed)
{
    const bool isSnap = sandbox.kind == Sandbox::Kind::Snap;
    const auto own =
        isSnap ? sandbox.id + u'_' + (sandbox.command.isEmpty() ? sandbox.id : sandbox.command) : sandbox.id;
    auto candidates = installed.withIdPrefix(sandbox.id + (isSnap ? u'_' : u'.'));
    if (const auto* entry = installed.withId(own); entry && !candidates.contains(entry))
        candidates.prepend(entry);

    const auto windowNames = {window.gtkApplicationId, idOfHint(window.desktopFileHint),
                              idOfHint(window.process.launchedBy)};
    for (const auto& name : windowNames) {
        for (const auto* entry : candidates) {
            if (entry->id == name)
                return name;
        }
    }
    for (const auto* entry : candidates) {
        if (claimsClass(*entry, window))
            return entry->id;
    }
    const bool hasOwn = std::ranges::any_of(candidates, [&own](auto* entry) { return entry->id == own; });
    return candidates.size() == 1 && !hasOwn ? candidates.first()->id : own;
}

const DesktopEntry* native(const WindowFacts& window, const DesktopIndex& installed)
{
    for (const auto& id :
         {window.gtkApplicationId, idOfHint(window.desktopFileHint), idOfHint(window.process.launchedBy)}) {
        if (const auto* entry = installed.withId(id))
            return entry;
    }
    // A web page that was made a program of its own has the browser's class, but a name of its own.
    for (const auto& name : {window.resourceName, window.resourceClass}) {
        if (const auto* entry = installed.withWindowClass(name))
            return entry;
    }
    for (const auto& name : {window.resourceName, window.resourceClass}) {
        if (const auto* entry = installed.withIdLike(name))
            return entry;
    }
    for (const auto& name : {window.resourceClass, window.resourceName}) {
        if (const auto* entry = installed.withLastPart(name))
            return entry;
    }
    for (const auto& program : {window.process.program, window.process.executable, window.resourceName,
                                window.resourceClass.toLower()}) {
        if (const auto* entry = installed.withProgram(program))
            return entry;
    }
    return nullptr;
}
} // namespace

std::optional<QString> ApplicationMatch::bundleIdentifier(const WindowFacts& window,
                                                          const DesktopIndex& installed)
{
    if (window.process.sandbox)
        return sandboxed(*window.process.sandbox, window, installed);
    if (const auto* entry = native(window, installed))
        return entry->id;
    for (const auto& name : {window.resourceClass, window.resourceName, window.gtkApplicationId}) {
        if (!name.isEmpty())
            return name.toLower();
    }
    return std::nullopt;
}

std::optional<QString> ApplicationMatch::bundleIdentifier(const ProcessFacts& process,
                                                          const QString& desktopEntry,
                                                          const DesktopIndex& installed)
{
    WindowFacts facts;
    facts.desktopFileHint = desktopEntry;
    facts.process = process;
    if (process.sandbox)
        return sandboxed(*process.sandbox, facts, installed);
    if (const auto* entry = native(facts, installed))
        return entry->id;
    // Some leave out what stands before the last dot, or write it in other letters.
    for (const auto& name : {desktopEntry, process.executable, process.program}) {
        if (const auto* entry = installed.withIdLike(name))
            return entry->id;
        if (const auto* entry = installed.withLastPart(name))
            return entry->id;
    }
    for (const auto& name : {process.program, process.executable}) {
        if (!name.isEmpty())
            return name.toLower();
    }
    return std::nullopt;
}
