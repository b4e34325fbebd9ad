#include "platform/linux/TerminalPrograms.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace TerminalPrograms;

namespace {
class TerminalProgramsTest : public testing::Test
{
protected:
    void install(const QString& id, const QByteArray& categories)
    {
        QFile file(m_folder.filePath(id + QStringLiteral(".desktop")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Desktop Entry]\nType=Application\nCategories=" + categories + "\n");
    }
    bool isTerminalHere(const QString& instanceName, const QString& className) const
    {
        return isTerminal(instanceName, className, {QStringLiteral("/nonexistent"), m_folder.path()});
    }

    QTemporaryDir m_folder;
};
} // namespace

TEST_F(TerminalProgramsTest, KnownTerminalsGoByTheirClassInAnyCase)
{
    EXPECT_TRUE(isTerminalHere(u"xterm"_qs, u"XTerm"_qs));
    EXPECT_TRUE(isTerminalHere(u"gnome-terminal-server"_qs, u"Gnome-terminal"_qs));
    EXPECT_TRUE(isTerminalHere(u"custom-instance"_qs, u"Alacritty"_qs));
    EXPECT_FALSE(isTerminalHere(u"gedit"_qs, u"Gedit"_qs));
    EXPECT_FALSE(isTerminalHere(QString(), QString()));
}

TEST_F(TerminalProgramsTest, AnyOtherGoesByTheCategoriesOfItsDesktopFile)
{
    install(u"org.example.Shell"_qs, "GTK;System;TerminalEmulator;");
    install(u"org.example.Editor"_qs, "GTK;TextEditor;");
    EXPECT_TRUE(isTerminalHere(u"shell"_qs, u"org.example.Shell"_qs));
    EXPECT_FALSE(isTerminalHere(u"editor"_qs, u"org.example.Editor"_qs));
}

TEST_F(TerminalProgramsTest, ADesktopFileInLowerCaseIsFoundForACapitalisedClass)
{
    install(u"newterm"_qs, "TerminalEmulator");
    EXPECT_TRUE(isTerminalHere(u"main"_qs, u"NewTerm"_qs));
}

TEST_F(TerminalProgramsTest, AClassCannotPointElsewhere)
{
    install(u"newterm"_qs, "TerminalEmulator");
    const auto sideways = u"../"_qs + m_folder.path().section(u'/', -1) + u"/newterm"_qs;
    EXPECT_FALSE(isTerminalHere(sideways, sideways));
}

TEST(TerminalEntryTest, OnlyTheEntrysOwnCategoriesCount)
{
    EXPECT_TRUE(isTerminalEntry(u"[Desktop Entry]\nCategories = System; TerminalEmulator\n"_qs));
    EXPECT_FALSE(
        isTerminalEntry(u"[Desktop Entry]\nName=x\n[Desktop Action new]\nCategories=TerminalEmulator\n"_qs));
    EXPECT_FALSE(isTerminalEntry(u"[Desktop Entry]\n#Categories=TerminalEmulator;\n"_qs));
    EXPECT_FALSE(isTerminalEntry(u"[Desktop Entry]\nCategories=TerminalEmulators\n"_qs));
    EXPECT_FALSE(isTerminalEntry(QString()));
}
