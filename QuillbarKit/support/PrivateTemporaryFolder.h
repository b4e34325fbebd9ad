#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// A folder of mode 0700 below the system's temporary directory, which other users can write to as well. What
/// stands at its name already is used only by being replaced: what a process of this user left there when it
/// died is removed first, and beside anything else (somebody else's folder, a link, a file) the folder gets
/// an unpredictable name. For one thread.
class PrivateTemporaryFolder
{
public:
    PrivateTemporaryFolder(QString parent, QString name);
    /// Removes it.
    ~PrivateTemporaryFolder();
    PrivateTemporaryFolder(const PrivateTemporaryFolder&) = delete;
    PrivateTemporaryFolder& operator=(const PrivateTemporaryFolder&) = delete;

    /// The path of the file of that name, of mode 0600, with these bytes; one that was written before stays
    /// as it is. The folder is made at the first call. None when it or the file can't be made.
    std::optional<QString> write(const QString& fileName, const QByteArray& bytes);

    /// Removes the folder with all that is in it; the next write makes it anew. A failure is swallowed.
    void remove();

    /// Empty while there is none.
    const QString& path() const { return m_path; }

private:
    bool make();

    const QString m_parent;
    const QString m_name;
    QString m_path;
};
