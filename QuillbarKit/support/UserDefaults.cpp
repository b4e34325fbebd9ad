#include "support/UserDefaults.h"

#include "support/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <utility>

namespace {
/// Far beyond what preferences come to; a larger file is not one of ours.
constexpr qint64 mostBytes = qint64(8) * 1024 * 1024;

bool isTaken(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

/// Nothing when what stands there cannot be read as an object. The file must not be a pipe or a device, on
/// which a read could wait for ever.
std::optional<JsonObject::Values> readObject(const QString& path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.read(mostBytes + 1);
    if (file.error() != QFile::NoError || bytes.size() > mostBytes)
        return {};
    return JsonObject::parse(bytes);
}
} // namespace

UserDefaults::UserDefaults(QString path)
    : m_path(std::move(path)), m_values(readObject(m_path).value_or(JsonObject::Values()))
{}

std::optional<QByteArray> UserDefaults::object(const QString& key) const
{
    const auto found = m_values.find(key);
    return found == m_values.end() ? std::nullopt : std::optional(found->second);
}

void UserDefaults::store(const QString& key, const QByteArray& text)
{
    m_set[key] = text;
    m_values[key] = text;
    // A file that is gone takes nothing with it: all of it is written again.
    if (QFileInfo::exists(m_path)) {
        if (auto edited = readObject(m_path)) {
            m_values = m_set;
            m_values.merge(*edited);
        } else if (!setAside()) {
            return;
        }
    }
    // Its folder may have been removed to start afresh.
    QDir().mkdir(QFileInfo(m_path).path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    // A failure is made good by the next set.
    static_cast<void>(AtomicFile::write(m_path, JsonObject::print(m_values)));
}

bool UserDefaults::setAside() const
{
    const QString first = m_path + QStringLiteral(".damaged");
    QString name = first;
    for (int number = 2; isTaken(name); ++number)
        name = first + QStringLiteral("-%1").arg(number);
    return std::rename(QFile::encodeName(m_path).constData(), QFile::encodeName(name).constData()) == 0;
}
