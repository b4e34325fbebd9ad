#include "platform/linux/applications/ApplicationMatch.h"

#include <gtest/gtest.h>

namespace {
DesktopEntry entry(const char* id, const char* windowClass = "", const char* program = "",
                   bool noDisplay = false)
{
    return {QString::fromLatin1(id),
            QString::fromLatin1(id),
            {},
            QString::fromLatin1(windowClass),
            QString::fromLatin1(program),
            noDisplay,
            false};
}

WindowFacts window(const char* name, const char* windowClass)
{
    WindowFacts facts;
    facts.resourceName = QString::fromLatin1(name);
    facts.resourceClass = QString::fromLatin1(windowClass);
    return facts;
}

WindowFacts flatpak(WindowFacts facts, const char* id)
{
    facts.process.sandbox = Sandbox{Sandbox::Kind::Flatpak, QString::fromLatin1(id), {}};
    return facts;
}

WindowFacts snap(WindowFacts facts, const char* name, const char* command)
{
    facts.process.sandbox =
        Sandbox{Sandbox::Kind::Snap, QString::fromLatin1(name), QString::fromLatin1(command)};
    return facts;
}

/// "none" for none.
std::string match(const WindowFacts& facts, const QList<DesktopEntry>& installed)
{
    return ApplicationMatch::bundleIdentifier(facts, DesktopIndex(installed))
        .value_or(QStringLiteral("none"))
        .toStdString();
}
} // namespace

TEST(ApplicationMatch, TheWindowClassIsOftenTheFilesName)
{
    EXPECT_EQ(match(window("xterm", "XTerm"), {entry("debian-xterm"), entry("xterm")}), "xterm");
    EXPECT_EQ(match(window("gimp-2.10", "Gimp-2.10"), {entry("GIMP-2.10")}), "GIMP-2.10");
}

TEST(ApplicationMatch, TheFileMayNameAClassOfItsOwn)
{
    EXPECT_EQ(match(window("Navigator", "firefox-esr"), {entry("browser", "Firefox-ESR")}), "browser");
    EXPECT_EQ(match(window("code", "Code"),
                    {entry("code-url-handler", "Code", "", true), entry("com.example.code", "Code")}),
              "com.example.code")
        << "a file that no menu shows comes after one that menus show";
}

TEST(ApplicationMatch, AClaimedClassBeatsAFilesName)
{
    EXPECT_EQ(match(window("editor", "Editor"), {entry("editor"), entry("org.example.Editor", "editor")}),
              "org.example.Editor");
}

TEST(ApplicationMatch, AWebPageAsAProgramIsNotTheBrowser)
{
    const QList installed{entry("google-chrome", "Google-chrome"), entry("chrome-abc-Default", "crx_abc")};
    EXPECT_EQ(match(window("crx_abc", "Google-chrome"), installed), "chrome-abc-Default");
    EXPECT_EQ(match(window("google-chrome", "Google-chrome"), installed), "google-chrome");
}

TEST(ApplicationMatch, JavaProgramsAreKnownByTheirClassAlone)
{
    const QList installed{entry("jetbrains-idea-ce", "jetbrains-idea-ce", "idea.sh")};
    EXPECT_EQ(match(window("sun-awt-X11-XFramePeer", "jetbrains-idea-ce"), installed), "jetbrains-idea-ce");
}

TEST(ApplicationMatch, TheLastPartOfAReverseDomainNameIsEnough)
{
    EXPECT_EQ(match(window("nautilus", "Nautilus"), {entry("org.gnome.Nautilus")}), "org.gnome.Nautilus");
    EXPECT_EQ(match(window("org.gnome.Nautilus", "Org.gnome.Nautilus"), {entry("org.gnome.Nautilus")}),
              "org.gnome.Nautilus");
    EXPECT_EQ(match(window("desktop", "Desktop"), {entry("org.telegram.desktop")}), "desktop")
        << "that part tells nothing";
}

TEST(ApplicationMatch, AGtkProgramNamesItself)
{
    auto facts = window("gedit", "Gedit");
    facts.gtkApplicationId = QStringLiteral("org.gnome.gedit");
    EXPECT_EQ(match(facts, {entry("gedit"), entry("org.gnome.gedit")}), "org.gnome.gedit");
    EXPECT_EQ(match(facts, {entry("gedit")}), "gedit") << "a name that nothing is installed by is no use";
}

TEST(ApplicationMatch, AWindowMayNameItsDesktopFile)
{
    for (const char* hint :
         {"org.kde.kate", "org.kde.kate.desktop", "/usr/share/applications/org.kde.kate.desktop"}) {
        auto facts = window("x", "X");
        facts.desktopFileHint = QString::fromLatin1(hint);
        EXPECT_EQ(match(facts, {entry("x"), entry("org.kde.kate")}), "org.kde.kate") << hint;
    }
    auto facts = window("x", "X");
    facts.desktopFileHint = QStringLiteral("/usr/share/applications/kde/kate.desktop");
    EXPECT_EQ(match(facts, {entry("kate"), entry("kde-kate")}), "kde-kate");
}

TEST(ApplicationMatch, WhatTheDesktopStartedItByCounts)
{
    auto facts = window("electron", "Electron");
    facts.process.launchedBy = QStringLiteral("/usr/share/applications/notes.desktop");
    EXPECT_EQ(match(facts, {entry("electron"), entry("notes")}), "notes");
}

TEST(ApplicationMatch, TheProgramIsTheLastResort)
{
    auto facts = window("win0", "Toplevel");
    facts.process.program = QStringLiteral("oddtool");
    EXPECT_EQ(match(facts, {entry("org.example.odd", "", "oddtool")}), "org.example.odd");
    facts.process.program = QStringLiteral("wrapper");
    facts.process.executable = QStringLiteral("oddtool");
    EXPECT_EQ(match(facts, {entry("org.example.odd", "", "oddtool")}), "org.example.odd");
    EXPECT_EQ(match(window("win0", "OddTool"), {entry("org.example.odd", "", "oddtool")}), "org.example.odd");
}

TEST(ApplicationMatch, WithoutADesktopFileTheClassNamesTheProgram)
{
    EXPECT_EQ(match(window("one", "Two"), {entry("three")}), "two");
    EXPECT_EQ(match(window("One", ""), {}), "one");
    EXPECT_EQ(match(window("", ""), {entry("three", "", "")}), "none");
}

TEST(ApplicationMatch, AHiddenFileIsNotInstalledWhereverItStands)
{
    auto hidden = entry("xterm");
    hidden.hidden = true;
    EXPECT_EQ(match(window("xterm", "XTerm"), {hidden, entry("xterm", "", "xterm"), entry("other", "XTerm")}),
              "other");
}

TEST(ApplicationMatch, AFlatpakIsWhatTheSystemSays)
{
    EXPECT_EQ(match(flatpak(window("firefox", "firefox"), "org.mozilla.firefox"),
                    {entry("firefox", "firefox"), entry("org.mozilla.firefox")}),
              "org.mozilla.firefox");
    EXPECT_EQ(match(flatpak(window("x", "X"), "com.example.Gone"), {entry("x")}), "com.example.Gone");
}

TEST(ApplicationMatch, AFlatpakMayBringSeveralPrograms)
{
    const QList installed{entry("org.libreoffice.LibreOffice", "libreoffice-startcenter"),
                          entry("org.libreoffice.LibreOffice.calc", "libreoffice-calc"),
                          entry("org.libreoffice.LibreOffice.writer", "libreoffice-writer"),
                          entry("libreoffice-writer", "libreoffice-writer")};
    EXPECT_EQ(
        match(flatpak(window("libreoffice", "libreoffice-writer"), "org.libreoffice.LibreOffice"), installed),
        "org.libreoffice.LibreOffice.writer");
    EXPECT_EQ(match(flatpak(window("soffice", "Soffice"), "org.libreoffice.LibreOffice"), installed),
              "org.libreoffice.LibreOffice");
}

TEST(ApplicationMatch, ASandboxedProgramCannotPassForAnother)
{
    auto facts = flatpak(window("keepassxc", "KeePassXC"), "com.example.Game");
    facts.gtkApplicationId = QStringLiteral("org.keepassxc.KeePassXC");
    facts.desktopFileHint = QStringLiteral("org.keepassxc.KeePassXC");
    EXPECT_EQ(match(facts, {entry("org.keepassxc.KeePassXC", "keepassxc"), entry("com.example.Game")}),
              "com.example.Game");
}

TEST(ApplicationMatch, ASnapIsNamedWithItsCommand)
{
    const QList installed{entry("firefox_firefox"), entry("firefox_other"), entry("firefox", "firefox")};
    EXPECT_EQ(match(snap(window("Navigator", "firefox"), "firefox", "firefox"), installed),
              "firefox_firefox");
    EXPECT_EQ(match(snap(window("Navigator", "firefox"), "firefox", ""), installed), "firefox_firefox");
    EXPECT_EQ(match(snap(window("a", "B"), "gone", "tool"), installed), "gone_tool");
}

TEST(ApplicationMatch, ASnapsOnlyFileNeedNotBeNamedAfterItsCommand)
{
    EXPECT_EQ(match(snap(window("a", "B"), "tools", "launch"), {entry("tools_tool")}), "tools_tool");
}

TEST(ApplicationMatch, ASnapsFileIsToldByClassOrByWhatStartedIt)
{
    const QList installed{entry("suite_draw", "Suite-Draw"), entry("suite_write", "Suite-Write")};
    EXPECT_EQ(match(snap(window("suite", "suite-write"), "suite", "suite"), installed), "suite_write");
    auto facts = snap(window("suite", "suite"), "suite", "suite");
    facts.process.launchedBy = QStringLiteral("/var/lib/snapd/desktop/applications/suite_draw.desktop");
    EXPECT_EQ(match(facts, installed), "suite_draw");
}

namespace {
std::string match(const ProcessFacts& process, const char* desktopEntry, const QList<DesktopEntry>& installed)
{
    return ApplicationMatch::bundleIdentifier(process, QString::fromLatin1(desktopEntry),
                                              DesktopIndex(installed))
        .value_or(QStringLiteral("none"))
        .toStdString();
}

ProcessFacts process(const char* program)
{
    ProcessFacts facts;
    facts.program = QString::fromLatin1(program);
    facts.executable = facts.program;
    return facts;
}
} // namespace

TEST(ApplicationMatch, AProcessIsKnownByItsProgram)
{
    EXPECT_EQ(match(process("vlc"), "", {entry("org.videolan.VLC", "", "vlc")}), "org.videolan.VLC");
    EXPECT_EQ(match(process("Totem"), "", {entry("org.gnome.Totem", "", "launcher")}), "org.gnome.Totem");
    EXPECT_EQ(match(process("MPD"), "", {entry("vlc", "", "vlc")}), "mpd") << "that no file describes";
    EXPECT_EQ(match(process(""), "", {entry("vlc", "", "vlc")}), "none");
}

TEST(ApplicationMatch, AProcessIsKnownByTheDesktopFileThatItNames)
{
    const auto installed = {entry("spotify-launcher", "", "start"), entry("org.mozilla.firefox", "", "ff")};
    EXPECT_EQ(match(process("client"), "spotify-launcher", installed), "spotify-launcher");
    EXPECT_EQ(match(process("geckomain"), "firefox", installed), "org.mozilla.firefox");
    EXPECT_EQ(match(process("start"), "nonsense", installed), "spotify-launcher") << "where there is no such";
    auto sandboxed = process("client");
    sandboxed.sandbox = Sandbox{Sandbox::Kind::Flatpak, QStringLiteral("org.example.Player"), {}};
    EXPECT_EQ(match(sandboxed, "spotify-launcher", installed), "org.example.Player");
}
