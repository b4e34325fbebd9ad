#pragma once

#include "clipboard/history/Clip.h"

#include <QAbstractListModel>
#include <QList>
#include <QtQmlIntegration>

#include <functional>

/// A list of clips as the rows of a view. A new list is told as the rows that went, moved, came and changed,
/// so that a view keeps the delegates of the rows that stay. One clip may stand in several rows.
class ClipRowsModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the clipboard panel's model")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    /// As Clip::Kind and DetectedKind::Type, for views.
    enum class Kind { Text, Image, File };
    Q_ENUM(Kind)
    enum class Detected { Plain, Code, Link, Color };
    Q_ENUM(Detected)

    enum Role {
        /// In lower case without braces.
        UuidRole = Qt::UserRole,
        KindRole,
        TextRole,
        DisplayTextRole,
        DetectedRole,
        /// The URL of a link, the hex text of a colour.
        DetectedValueRole,
        PinnedRole,
        DateRole,
        /// Empty where the program is not known.
        SourceBundleIDRole,
        FileCountRole,
    };

    using DisplayText = std::function<QString(const Clip&)>;

    /// `displayText` gives a clip's label.
    explicit ClipRowsModel(DisplayText displayText, QObject* parent = nullptr);

    const QList<Clip>& clips() const { return m_clips; }
    void setClips(const QList<Clip>& clips);

    int count() const { return static_cast<int>(m_clips.size()); }
    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();

private:
    void removeMissing(const QList<Clip>& clips);
    void moveAndInsert(const QList<Clip>& clips);
    void moveRow(qsizetype from, qsizetype to);
    void refresh(const QList<Clip>& clips);

    DisplayText m_displayText;
    QList<Clip> m_clips;
};
