#pragma once

#include <QObject>
#include <QUuid>
#include <QtQmlIntegration>

namespace SnippetEditKinds {
Q_NAMESPACE
QML_NAMED_ELEMENT(SnippetEditKind)

enum class SnippetEditKind { None, New, Existing };
Q_ENUM_NS(SnippetEditKind)
} // namespace SnippetEditKinds

/// Which snippet stands open in the editor: one of the list, a new one or none. A value.
class SnippetEdit
{
    Q_GADGET
    QML_VALUE_TYPE(snippetEdit)
    QML_UNCREATABLE("made by the clipboard panel's model")
    Q_PROPERTY(SnippetEditKinds::SnippetEditKind kind READ kind)
    /// The snippet's id in lower case without braces; empty for the other kinds.
    Q_PROPERTY(QString snippetID READ snippetIDText)

public:
    using Kind = SnippetEditKinds::SnippetEditKind;

    /// None.
    SnippetEdit() = default;

    static SnippetEdit none() { return {}; }
    static SnippetEdit newSnippet() { return {Kind::New, {}}; }
    static SnippetEdit existing(const QUuid& id) { return {Kind::Existing, id}; }

    Kind kind() const { return m_kind; }
    /// Null unless the kind is Existing.
    const QUuid& snippetID() const { return m_snippetID; }

    bool operator==(const SnippetEdit&) const = default;

private:
    SnippetEdit(Kind kind, const QUuid& snippetID) : m_kind(kind), m_snippetID(snippetID) {}
    QString snippetIDText() const
    {
        return m_kind == Kind::Existing ? m_snippetID.toString(QUuid::WithoutBraces) : QString();
    }

    Kind m_kind = Kind::None;
    QUuid m_snippetID;
};
