#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QString>
#include <QUuid>
#include <QtQmlIntegration>

/// Things with an id and a title, such as boards or snippets, as the rows of a view. A new list is told as
/// the rows that went, moved, came and changed, so that a view keeps what is open in the rows that stay. No
/// id stands in two rows.
class TitledRowsModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the clipboard panel's content")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    struct Row
    {
        QUuid id;
        QString title;
        /// Empty where there is no more to show than a title.
        QString text;

        bool operator==(const Row&) const = default;
    };

    enum Role {
        /// The id in lower case without braces.
        UuidRole = Qt::UserRole,
        TitleRole,
        TextRole,
    };

    using QAbstractListModel::QAbstractListModel;

    /// Of several with one id the first counts.
    void setRows(const QList<Row>& rows);

    int count() const { return static_cast<int>(m_rows.size()); }
    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();

private:
    void removeMissing(const QList<Row>& rows);
    qsizetype rowOf(const QUuid& id) const;

    QList<Row> m_rows;
};
