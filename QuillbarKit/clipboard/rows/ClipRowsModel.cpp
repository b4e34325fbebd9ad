#include "clipboard/rows/ClipRowsModel.h"

#include <QHash>

#include <utility>

static_assert(static_cast<int>(ClipRowsModel::Kind::File) == static_cast<int>(Clip::Kind::File));
static_assert(static_cast<int>(ClipRowsModel::Detected::Color) ==
              static_cast<int>(DetectedKind::Type::Color));

namespace {
/// The first row of that clip from `start` on, or -1.
qsizetype rowOf(const QUuid& uuid, const QList<Clip>& clips, qsizetype start)
{
    for (qsizetype row = start; row < clips.size(); ++row) {
        if (clips[row].uuid == uuid)
            return row;
    }
    return -1;
}
} // namespace

ClipRowsModel::ClipRowsModel(DisplayText displayText, QObject* parent)
    : QAbstractListModel(parent), m_displayText(std::move(displayText))
{}

int ClipRowsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QHash<int, QByteArray> ClipRowsModel::roleNames() const
{
    return {{UuidRole, "uuid"},
            {KindRole, "kind"},
            {TextRole, "text"},
            {DisplayTextRole, "displayText"},
            {DetectedRole, "detected"},
            {DetectedValueRole, "detectedValue"},
            {PinnedRole, "pinned"},
            {DateRole, "date"},
            {SourceBundleIDRole, "sourceBundleID"},
            {FileCountRole, "fileCount"}};
}

QVariant ClipRowsModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Clip& clip = m_clips[index.row()];
    switch (role) {
    case UuidRole:
        return clip.uuid.toString(QUuid::WithoutBraces);
    case KindRole:
        return QVariant::fromValue(static_cast<Kind>(clip.kind));
    case TextRole:
        return clip.text;
    case DisplayTextRole:
        return m_displayText(clip);
    case DetectedRole:
        return QVariant::fromValue(static_cast<Detected>(clip.detectedKind.type()));
    case DetectedValueRole:
        return clip.detectedKind.value();
    case PinnedRole:
        return clip.pinned;
    case DateRole:
        return clip.date;
    case SourceBundleIDRole:
        return clip.sourceBundleID.value_or(QString());
    case FileCountRole:
        return static_cast<int>(clip.filePaths.size());
    default:
        return {};
    }
}

void ClipRowsModel::setClips(const QList<Clip>& clips)
{
    const auto before = count();
    removeMissing(clips);
    moveAndInsert(clips);
    refresh(clips);
    if (count() != before)
        Q_EMIT countChanged();
}

void ClipRowsModel::removeMissing(const QList<Clip>& clips)
{
    QHash<QUuid, int> surplus;
    for (const Clip& clip : std::as_const(m_clips))
        ++surplus[clip.uuid];
    for (const Clip& clip : clips)
        --surplus[clip.uuid];
    for (qsizetype row = m_clips.size() - 1; row >= 0; --row) {
        int& left = surplus[m_clips[row].uuid];
        if (left <= 0)
            continue;
        --left;
        const auto at = static_cast<int>(row);
        beginRemoveRows({}, at, at);
        m_clips.removeAt(row);
        endRemoveRows();
    }
}

void ClipRowsModel::moveAndInsert(const QList<Clip>& clips)
{
    for (qsizetype row = 0; row < clips.size(); ++row) {
        const QUuid& wanted = clips[row].uuid;
        // Where one row went down, that one is moved, not all those that it passed.
        if (row + 1 < m_clips.size() && m_clips[row].uuid != wanted && m_clips[row + 1].uuid == wanted) {
            const auto target = rowOf(m_clips[row].uuid, clips, row + 1);
            if (target > row && target < m_clips.size())
                moveRow(row, target);
        }
        const auto found = rowOf(wanted, m_clips, row);
        if (found > row) {
            moveRow(found, row);
        } else if (found < 0) {
            const auto at = static_cast<int>(row);
            beginInsertRows({}, at, at);
            m_clips.insert(row, clips[row]);
            endInsertRows();
        }
    }
}

void ClipRowsModel::moveRow(qsizetype from, qsizetype to)
{
    // The framework counts the place to move to before the row is taken out.
    const auto target = static_cast<int>(to > from ? to + 1 : to);
    beginMoveRows({}, static_cast<int>(from), static_cast<int>(from), {}, target);
    m_clips.move(from, to);
    endMoveRows();
}

void ClipRowsModel::refresh(const QList<Clip>& clips)
{
    for (qsizetype row = 0; row < clips.size(); ++row) {
        if (m_clips[row] == clips[row])
            continue;
        m_clips[row] = clips[row];
        const auto changed = index(static_cast<int>(row));
        Q_EMIT dataChanged(changed, changed);
    }
}
