#pragma once

#include <QObject>
#include <QUuid>
#include <QtQmlIntegration>

namespace BoardFilterKinds {
Q_NAMESPACE
QML_NAMED_ELEMENT(BoardFilterKind)

enum class BoardFilterKind { All, Pinned, Board, Snippets };
Q_ENUM_NS(BoardFilterKind)
} // namespace BoardFilterKinds

/// Which clips the clipboard panel lists, or that it lists the snippets. A value.
class BoardFilter
{
    Q_GADGET
    QML_VALUE_TYPE(boardFilter)
    QML_UNCREATABLE("made by the clipboard panel's model")
    Q_PROPERTY(BoardFilterKinds::BoardFilterKind kind READ kind)
    /// The board's id in lower case without braces; empty for the other kinds.
    Q_PROPERTY(QString boardID READ boardIDText)

public:
    using Kind = BoardFilterKinds::BoardFilterKind;

    /// All clips.
    BoardFilter() = default;

    static BoardFilter all() { return {}; }
    static BoardFilter pinned() { return {Kind::Pinned, {}}; }
    static BoardFilter board(const QUuid& id) { return {Kind::Board, id}; }
    static BoardFilter snippets() { return {Kind::Snippets, {}}; }

    Kind kind() const { return m_kind; }
    /// Null unless the kind is Board.
    const QUuid& boardID() const { return m_boardID; }

    bool operator==(const BoardFilter&) const = default;

private:
    BoardFilter(Kind kind, const QUuid& boardID) : m_kind(kind), m_boardID(boardID) {}
    QString boardIDText() const
    {
        return m_kind == Kind::Board ? m_boardID.toString(QUuid::WithoutBraces) : QString();
    }

    Kind m_kind = Kind::All;
    QUuid m_boardID;
};
