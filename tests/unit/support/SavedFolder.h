#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <string>
#include <sys/stat.h>

/// A temporary folder for one file under test.
class SavedFolder
{
public:
    QString path(const QString& name) const { return m_folder.filePath(name); }
    QString file() const { return path(QStringLiteral("store.json")); }

    QByteArray read() const { return read(file()); }
    static QByteArray read(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }

    /// Made by other means than those under test.
    void put(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("SavedFolder: cannot write");
    }

    /// Everything in it, hidden entries too, sorted.
    QStringList entries() const
    {
        return QDir(m_folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }

    static unsigned mode(const QString& path)
    {
        struct stat status = {};
        return stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
    }

private:
    QTemporaryDir m_folder;
};
