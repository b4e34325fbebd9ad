#include "clipboard/panel/TitledRowsModel.h"

#include <algorithm>

int TitledRowsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QHash<int, QByteArray> TitledRowsModel::roleNames() const
{
    return {{UuidRole, "uuid"}, {TitleRole, "title"}, {TextRole, "text"}};
}

QVariant TitledRowsModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row& row = m_rows[index.row()];
    switch (role) {
    case UuidRole:
        return row.id.toString(QUuid::WithoutBraces);
    case TitleRole:
        return row.title;
    case TextRole:
        return row.text;
    default:
        return {};
    }
}

void TitledRowsModel::setRows(const QList<Row>& rows)
{
    QList<Row> wanted;
    for (const Row& row : rows) {
        if (std::ranges::find(wanted, row.id, &Row::id) == wanted.end())
            wanted.append(row);
    }
    const int before = count();
    removeMissing(wanted);
    for (qsizetype at = 0; at < wanted.size(); ++at) {
        const auto row = static_cast<int>(at);
        const auto found = rowOf(wanted[at].id);
        if (found < 0) {
            beginInsertRows({}, row, row);
            m_rows.insert(at, wanted[at]);
            endInsertRows();
            continue;
        }
        if (found > at) {
            const auto from = static_cast<int>(found);
            beginMoveRows({}, from, from, {}, row);
            m_rows.move(found, at);
            endMoveRows();
        }
        if (m_rows[at] != wanted[at]) {
            m_rows[at] = wanted[at];
            Q_EMIT dataChanged(index(row), index(row));
        }
    }
    if (count() != before)
        Q_EMIT countChanged();
}

void TitledRowsModel::removeMissing(const QList<Row>& rows)
{
    for (int row = count() - 1; row >= 0; --row) {
        if (std::ranges::find(rows, m_rows[row].id, &Row::id) != rows.end())
            continue;
        beginRemoveRows({}, row, row);
        m_rows.removeAt(row);
        endRemoveRows();
    }
}

qsizetype TitledRowsModel::rowOf(const QUuid& id) const
{
    const auto found = std::ranges::find(m_rows, id, &Row::id);
    return found == m_rows.end() ? -1 : found - m_rows.begin();
}
