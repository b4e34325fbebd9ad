#include "platform/linux/applications/ProcessReader.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace {
/// The folder in which the system would show its processes, as it was seen on real machines.
class ProcessReaderTest : public testing::Test
{
protected:
    void write(const char* name, const QByteArray& bytes)
    {
        const auto path = process() + QString::fromLatin1(name);
        ASSERT_TRUE(QDir().mkpath(path.section(u'/', 0, -2)));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    void linkExecutable(const char* target)
    {
        ASSERT_TRUE(QDir().mkpath(process()));
        ASSERT_TRUE(QFile::link(QString::fromLatin1(target), process() + QStringLiteral("exe")));
    }

    QString process() const { return m_folder.path() + QStringLiteral("/4711/"); }
    ProcessFacts read() const { return ProcessReader::read(m_folder.path(), 4711); }

private:
    QTemporaryDir m_folder;
};

std::optional<Sandbox> sandbox(const char* groups)
{
    return ProcessReader::sandboxOfControlGroups(groups);
}

Sandbox flatpak(const char* id)
{
    return {Sandbox::Kind::Flatpak, QString::fromLatin1(id), {}};
}

Sandbox snap(const char* name, const char* command)
{
    return {Sandbox::Kind::Snap, QString::fromLatin1(name), QString::fromLatin1(command)};
}
} // namespace

TEST_F(ProcessReaderTest, ANativeProgram)
{
    linkExecutable("/usr/bin/mousepad");
    write("cmdline", QByteArray("mousepad\0/home/me/a\0", 20));
    write("cgroup", "0::/user.slice/user-1000.slice/user@1000.service/app.slice/app-xfce.scope\n");
    write("environ",
          QByteArray("HOME=/home/me\0SNAP_NAME=code\0BAMF_DESKTOP_FILE_HINT=/a/code_code.desktop\0", 73));
    ProcessFacts facts;
    facts.program = QStringLiteral("mousepad");
    facts.executable = QStringLiteral("mousepad");
    EXPECT_EQ(read(), facts) << "what it inherited from the Snap that started it says nothing";
}

TEST_F(ProcessReaderTest, AFlatpak)
{
    linkExecutable("/app/lib/firefox/firefox");
    write("root/.flatpak-info",
          "[Application]\nname=org.mozilla.firefox\nruntime=runtime/org.freedesktop.Platform\n"
          "\n[Instance]\nname=other\n");
    write("cgroup", "0::/user.slice/app-flatpak-org.other.One-99.scope\n");
    EXPECT_EQ(read().sandbox, flatpak("org.mozilla.firefox"));
    EXPECT_EQ(read().executable, QStringLiteral("firefox"));
}

TEST_F(ProcessReaderTest, AFlatpakWhoseFilesCannotBeRead)
{
    write("cgroup", "0::/user.slice/user-1000.slice/user@1000.service/app.slice/"
                    "app-flatpak-org.gnome.TextEditor-12345.scope\n");
    EXPECT_EQ(read().sandbox, flatpak("org.gnome.TextEditor"));
}

TEST_F(ProcessReaderTest, ASnap)
{
    linkExecutable("/snap/firefox/4173/usr/lib/firefox/firefox");
    write("cgroup", "0::/user.slice/user-1000.slice/user@1000.service/app.slice/"
                    "snap.firefox.firefox-1f2e3d4c-5b6a-7988-a7b6-c5d4e3f2a1b0.scope\n");
    write("environ", QByteArray("BAMF_DESKTOP_FILE_HINT=/var/lib/snapd/desktop/applications/"
                                "firefox_firefox.desktop\0",
                                84));
    EXPECT_EQ(read().sandbox, snap("firefox", "firefox"));
    EXPECT_EQ(read().launchedBy,
              QStringLiteral("/var/lib/snapd/desktop/applications/firefox_firefox.desktop"));
}

TEST_F(ProcessReaderTest, ASnapByWhereItLies)
{
    linkExecutable("/snap/code/159/usr/share/code/code");
    write("cgroup", "0::/user.slice/session.scope\n");
    EXPECT_EQ(read().sandbox, snap("code", ""));
}

TEST_F(ProcessReaderTest, WhatTheDesktopStartedCountsForThatProcessAlone)
{
    write("environ", QByteArray("GIO_LAUNCHED_DESKTOP_FILE=/usr/share/applications/a.desktop\0"
                                "GIO_LAUNCHED_DESKTOP_FILE_PID=4711\0",
                                95));
    EXPECT_EQ(read().launchedBy, QStringLiteral("/usr/share/applications/a.desktop"));
    write("environ", QByteArray("GIO_LAUNCHED_DESKTOP_FILE=/usr/share/applications/a.desktop\0"
                                "GIO_LAUNCHED_DESKTOP_FILE_PID=4710\0",
                                95));
    EXPECT_EQ(read().launchedBy, QString());
}

TEST_F(ProcessReaderTest, AProgramThatWasReplacedByAnUpdate)
{
    linkExecutable("/usr/bin/mousepad (deleted)");
    EXPECT_EQ(read().executable, QStringLiteral("mousepad"));
}

TEST_F(ProcessReaderTest, AProcessThatIsGoneIsUnknown)
{
    EXPECT_EQ(read(), ProcessFacts());
}

TEST_F(ProcessReaderTest, APipeInASandboxHoldsNobodyUp)
{
    ASSERT_TRUE(QDir().mkpath(process() + QStringLiteral("root")));
    ASSERT_EQ(::mkfifo(QFile::encodeName(process() + QStringLiteral("root/.flatpak-info")).constData(), 0600),
              0);
    EXPECT_EQ(read(), ProcessFacts());
}

TEST_F(ProcessReaderTest, ALinkInASandboxIsNotFollowed)
{
    write("elsewhere", "[Application]\nname=org.example.Other\n");
    ASSERT_TRUE(QDir().mkpath(process() + QStringLiteral("root")));
    ASSERT_TRUE(QFile::link(process() + QStringLiteral("elsewhere"),
                            process() + QStringLiteral("root/.flatpak-info")));
    EXPECT_EQ(read(), ProcessFacts());
}

TEST(ProcessReader, ControlGroupsNameSandboxes)
{
    EXPECT_EQ(sandbox("0::/a/app-flatpak-com.example.With\\x2ddash-7.scope\n"),
              flatpak("com.example.With-dash"));
    EXPECT_EQ(sandbox("0::/a/snap.hello.hello.1f2e3d4c-5b6a-7988-a7b6-c5d4e3f2a1b0.scope"),
              snap("hello", "hello"));
    EXPECT_EQ(
        sandbox("0::/a/snap.gnome-calculator.gnome-calculator-1f2e3d4c-5b6a-7988-a7b6-c5d4e3f2a1b0.scope"),
        snap("gnome-calculator", "gnome-calculator"));
    EXPECT_EQ(sandbox("0::/a/snap.my\\x2dtools.run\\x2dit.55.scope"), snap("my-tools", "run-it"));
    EXPECT_EQ(sandbox("5:freezer:/snap.spotify\n1:name=systemd:/a/snap.spotify.spotify-x.scope\n"),
              snap("spotify", "spotify-x"));
    EXPECT_EQ(sandbox("0::/user.slice/app-gnome-org.gnome.Terminal-1234.scope"), std::nullopt);
    EXPECT_EQ(sandbox("0::/init.scope"), std::nullopt);
    EXPECT_EQ(sandbox(""), std::nullopt);
    EXPECT_EQ(sandbox("\xff\\x\\xz\\x2"), std::nullopt);
}

TEST(ProcessReader, TheApplicationNamesAFlatpak)
{
    EXPECT_EQ(ProcessReader::flatpakId("[Runtime]\nname=a\n[Application]\nname=b\n"), QStringLiteral("b"));
    EXPECT_EQ(ProcessReader::flatpakId("[Runtime]\nname=a\n"), QString());
    EXPECT_EQ(ProcessReader::flatpakId(""), QString());
}

TEST(ProcessReader, AnInterpretersProgramIsItsScript)
{
    const auto program = [](QByteArray line) {
        return ProcessReader::programOfCommandLine(line.replace(' ', '\0')).toStdString();
    };
    EXPECT_EQ(program("/usr/bin/xterm -e vim"), "xterm");
    EXPECT_EQ(program("/usr/bin/python3.11 /usr/bin/terminator --x"), "terminator");
    EXPECT_EQ(program("/bin/sh /opt/idea/bin/idea.sh"), "idea.sh");
    EXPECT_EQ(program("python3 -m thing"), "python3");
    EXPECT_EQ(program("bash"), "bash");
    EXPECT_EQ(program(""), "");
}
