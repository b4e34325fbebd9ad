#include "platform/linux/applications/DesktopEntryParser.h"

#include <gtest/gtest.h>

namespace {
const auto id = QStringLiteral("org.example.Editor");

std::optional<DesktopEntry> parse(const char* file, const QStringList& locales = {})
{
    return DesktopEntryParser::parse(file, id, locales);
}

QString programOf(const QByteArray& commandLine)
{
    const QByteArray file = "[Desktop Entry]\nType=Application\nName=A\nExec=" + commandLine;
    return DesktopEntryParser::parse(file, id, {})->program;
}
} // namespace

TEST(DesktopEntryParser, ReadsWhatIsUsed)
{
    const auto entry = parse("# a remark\n"
                             "[Desktop Entry]\n"
                             "Type=Application\n"
                             "Name = Text Editor\r\n"
                             "Icon=org.example.Editor\n"
                             "Exec=/usr/bin/editor --new %U\n"
                             "StartupWMClass=Editor\n"
                             "NoDisplay=true\n"
                             "[Desktop Action new]\n"
                             "Name=New window\n"
                             "Exec=other\n");
    ASSERT_TRUE(entry);
    EXPECT_EQ(*entry, (DesktopEntry{id, QStringLiteral("Text Editor"), QStringLiteral("org.example.Editor"),
                                    QStringLiteral("Editor"), QStringLiteral("editor"), true, false}));
}

TEST(DesktopEntryParser, TheNameIsInTheMostWantedLanguageThatThereIs)
{
    const char* file = "[Desktop Entry]\nType=Application\nName=Editor\n"
                       "Name[de]=Bearbeiter\nName[pt_BR]=Editor de texto\nName[sr@latin]=Uređivač\n";
    const auto nameIn = [file](const char* locale) {
        return parse(file, DesktopEntryParser::localeNames(QString::fromLatin1(locale), {}))->name;
    };
    EXPECT_EQ(nameIn("de_AT.UTF-8"), QStringLiteral("Bearbeiter"));
    EXPECT_EQ(nameIn("pt_BR.UTF-8"), QStringLiteral("Editor de texto"));
    EXPECT_EQ(nameIn("pt_PT.UTF-8"), QStringLiteral("Editor"));
    EXPECT_EQ(nameIn("sr_RS.UTF-8@latin"), QStringLiteral("Uređivač"));
    EXPECT_EQ(nameIn("sr_RS.UTF-8"), QStringLiteral("Editor"));
    EXPECT_EQ(nameIn("C.UTF-8"), QStringLiteral("Editor"));
}

TEST(DesktopEntryParser, ALocaleIsLookedForFromTheParticularToTheGeneral)
{
    EXPECT_EQ(DesktopEntryParser::localeNames(QStringLiteral("sr_RS.UTF-8@latin"), {}),
              (QStringList{QStringLiteral("sr_RS@latin"), QStringLiteral("sr_RS"), QStringLiteral("sr@latin"),
                           QStringLiteral("sr")}));
    EXPECT_EQ(DesktopEntryParser::localeNames(QStringLiteral("de_DE.UTF-8"), QStringLiteral("fr:de")),
              (QStringList{QStringLiteral("fr"), QStringLiteral("de"), QStringLiteral("de_DE")}));
    EXPECT_EQ(DesktopEntryParser::localeNames(QStringLiteral("C"), QStringLiteral("fr")), QStringList());
    EXPECT_EQ(DesktopEntryParser::localeNames({}, {}), QStringList());
}

TEST(DesktopEntryParser, EscapesAreUndone)
{
    EXPECT_EQ(parse("[Desktop Entry]\nType=Application\nName=\\sA\\tB\\\\n\\q\\")->name,
              QStringLiteral(" A\tB\\n\\q\\"));
}

TEST(DesktopEntryParser, TheProgramIsTheFirstWordOfTheCommandLine)
{
    EXPECT_EQ(programOf("editor"), QStringLiteral("editor"));
    EXPECT_EQ(programOf("/opt/a/bin/editor %F"), QStringLiteral("editor"));
    EXPECT_EQ(programOf("\"/opt/My Editor/my editor\" %F"), QStringLiteral("my editor"));
    EXPECT_EQ(programOf("env A=1 B=2 /usr/bin/editor"), QStringLiteral("editor"));
    EXPECT_EQ(programOf("env -u A editor -x"), QStringLiteral("A"));
    EXPECT_EQ(programOf(""), QString());
}

TEST(DesktopEntryParser, ALauncherOfOthersIsNoProgram)
{
    EXPECT_EQ(programOf("/usr/bin/flatpak run --branch=stable org.example.Editor"), QString());
    EXPECT_EQ(programOf("sh -c 'editor'"), QString());
    EXPECT_EQ(programOf("env sh"), QString());
    EXPECT_EQ(programOf("java -jar a.jar"), QString());
}

TEST(DesktopEntryParser, WhatIsNoProgramGivesNothing)
{
    EXPECT_FALSE(parse(""));
    EXPECT_FALSE(parse("Type=Application\nName=A"));
    EXPECT_FALSE(parse("[Desktop Entry]\nType=Link\nName=A"));
    EXPECT_FALSE(parse("[Desktop Entry]\nType=Application"));
    EXPECT_FALSE(parse("[Other]\nType=Application\nName=A"));
    EXPECT_FALSE(parse("\xff\xfe\n=\n[\n]"));
}

TEST(DesktopEntryParser, AHiddenFileNeedsNothingElse)
{
    EXPECT_TRUE(parse("[Desktop Entry]\nHidden=true")->hidden);
}

TEST(DesktopEntryParser, FoldersArePartOfTheId)
{
    EXPECT_EQ(DesktopEntryParser::idOf(QStringLiteral("a.desktop")), QStringLiteral("a"));
    EXPECT_EQ(DesktopEntryParser::idOf(QStringLiteral("kde/sub/a.b.desktop")), QStringLiteral("kde-sub-a.b"));
    EXPECT_EQ(DesktopEntryParser::idOf(QStringLiteral("mimeinfo.cache")), QString());
}
