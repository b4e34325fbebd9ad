#include "support/AppPaths.h"

#include "unit/support/SavedFolder.h"

#include <gtest/gtest.h>

#include <optional>
#include <sys/stat.h>

namespace {
/// Sets an environment variable for one test.
class Variable
{
public:
    Variable(const char* name, const std::optional<QByteArray>& value)
        : m_name(name), m_wasSet(qEnvironmentVariableIsSet(name)), m_before(qgetenv(name))
    {
        if (value)
            qputenv(name, *value);
        else
            qunsetenv(name);
    }
    ~Variable()
    {
        if (m_wasSet)
            qputenv(m_name, m_before);
        else
            qunsetenv(m_name);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* const m_name;
    const bool m_wasSet;
    const QByteArray m_before;
};

class AppPathsTest : public testing::Test
{
protected:
    QByteArray in(const char* name) const { return QFile::encodeName(folder.path(QString::fromUtf8(name))); }

    SavedFolder folder;
    Variable home{"HOME", in("home")};
    Variable data{"XDG_DATA_HOME", std::nullopt};
    Variable config{"XDG_CONFIG_HOME", std::nullopt};
};
} // namespace

TEST_F(AppPathsTest, DefaultsLieInTheHomeFolder)
{
    EXPECT_EQ(AppPaths::supportDirectory(), folder.path(QStringLiteral("home/.local/share/Quillbar")));
    EXPECT_EQ(AppPaths::configDirectory(), folder.path(QStringLiteral("home/.config/Quillbar")));
    EXPECT_TRUE(QFileInfo(AppPaths::supportDirectory()).isDir());
}

TEST_F(AppPathsTest, AbsoluteVariablesWin)
{
    const Variable dataSet("XDG_DATA_HOME", in("d a//t/../ä/"));
    const Variable configSet("XDG_CONFIG_HOME", in("config"));
    EXPECT_EQ(AppPaths::supportDirectory(), folder.path(QStringLiteral("d a/ä/Quillbar")));
    EXPECT_EQ(AppPaths::configDirectory(), folder.path(QStringLiteral("config/Quillbar")));
}

TEST_F(AppPathsTest, RelativeEmptyAndUnreadableVariablesAreIgnored)
{
    for (const QByteArray value : {"", "share", "./share", "~/share", "/\xff\xfe"}) {
        const Variable dataSet("XDG_DATA_HOME", value);
        EXPECT_EQ(AppPaths::supportDirectory(), folder.path(QStringLiteral("home/.local/share/Quillbar")));
    }
}

TEST_F(AppPathsTest, AnAbsoluteVariableNeedsNoHome)
{
    const Variable dataSet("XDG_DATA_HOME", in("data"));
    const Variable noHome("HOME", std::nullopt);
    EXPECT_EQ(AppPaths::supportDirectory(), folder.path(QStringLiteral("data/Quillbar")));
}

TEST_F(AppPathsTest, EveryFolderMadeIsPrivateWhateverTheUmask)
{
    for (const mode_t mask : {0u, 0277u}) {
        const auto before = umask(mask);
        const Variable dataSet("XDG_DATA_HOME", in(mask == 0 ? "a/b" : "c/d"));
        const QString path = AppPaths::supportDirectory();
        umask(before);
        EXPECT_EQ(SavedFolder::mode(path), 0700u);
        EXPECT_EQ(SavedFolder::mode(path + QStringLiteral("/..")), 0700u);
        EXPECT_EQ(SavedFolder::mode(path + QStringLiteral("/../..")), 0700u);
    }
}

TEST_F(AppPathsTest, AnOlderWiderFolderIsNarrowedAndItsParentLeftAlone)
{
    const Variable dataSet("XDG_DATA_HOME", in("data"));
    const QString path = AppPaths::supportDirectory();
    const QString parent = folder.path(QStringLiteral("data"));
    for (const mode_t wider : {0755u, 0701u, 0770u, 02777u}) {
        chmod(QFile::encodeName(path).constData(), wider);
        chmod(QFile::encodeName(parent).constData(), 0755);
        EXPECT_EQ(AppPaths::supportDirectory(), path);
        EXPECT_EQ(SavedFolder::mode(path), 0700u);
        EXPECT_EQ(SavedFolder::mode(parent), 0755u);
    }
}

TEST_F(AppPathsTest, AFailureToMakeItIsSwallowed)
{
    folder.put(QStringLiteral("data"), "a file, not a folder");
    const Variable dataSet("XDG_DATA_HOME", in("data"));
    EXPECT_EQ(AppPaths::supportDirectory(), folder.path(QStringLiteral("data/Quillbar")));
    EXPECT_EQ(folder.read(folder.path(QStringLiteral("data"))), "a file, not a folder");
}
