#pragma once

#include <QByteArray>

/// A file of mode 0600 under a name that nobody can guess, in a folder that stays open for as long: the first
/// half of a save. It is removed with this object unless it has been renamed.
///
/// It stays locked while this object lives. So a lock that is free tells that the process which wrote the
/// file is dead, and the file can go.
class TemporaryFile
{
public:
    /// `folder` is the descriptor of the folder.
    explicit TemporaryFile(int folder);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    /// Below 0 when the file could not be made.
    int descriptor() const { return m_descriptor; }

    /// Puts the file in the place of `name` in its folder. On failure nothing has changed.
    bool renameTo(const QByteArray& name);

    /// Removes from `folder` the temporary files of this user that dead processes left there.
    static void removeStale(int folder);

private:
    bool create();

    const int m_folder;
    QByteArray m_name;
    int m_descriptor = -1;
};
