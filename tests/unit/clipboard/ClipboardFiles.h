#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>

/// The files written by hand that the fuzz targets begin with, too.
namespace ClipboardFiles {
inline QByteArray handMade(const char* name, const char* folder = "fuzz_clipboard_history")
{
    QFile file(QStringLiteral(QUILLBAR_TEST_DATA "/%1/%2").arg(QLatin1String(folder), QLatin1String(name)));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("ClipboardFiles: no file %s", name);
    return file.readAll();
}
} // namespace ClipboardFiles
