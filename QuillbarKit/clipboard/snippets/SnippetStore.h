#pragma once

#include "clipboard/snippets/Snippet.h"

#include <QList>
#include <QObject>
#include <QtQmlIntegration>

class Clock;

/// The user's reusable texts, in a file of their own: apart from the history, never trimmed, never synced.
///
/// Every operation that finds what it is to change publishes the list, also when it comes out equal, and then
/// writes the file. A failed write is swallowed: the list lives on in memory, and the next write has it all.
/// Main thread only.
class SnippetStore : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application controller")
    /// In the user's own order; a new or edited one comes first.
    Q_PROPERTY(QList<Snippet> snippets READ snippets NOTIFY snippetsChanged)

public:
    /// Begins with an empty list and reads nothing. The clock must outlive the store.
    SnippetStore(QString path, const Clock& clock, QObject* parent = nullptr);

    const QList<Snippet>& snippets() const { return m_snippets; }

    /// Takes the list from the file. One that can't be read changes nothing.
    void load();

    /// A new snippet at the front.
    Snippet add(const QString& title, const QString& text);
    /// Sets the two texts of the snippet with this one's id and moves it to the front. Nothing if there is
    /// none.
    void update(const Snippet& snippet, const QString& title, const QString& text);
    /// Removes what has this snippet's id.
    void remove(const Snippet& snippet);
    /// Takes the snippet at index `from` out and puts it back in at index `to` of the rest. Nothing if either
    /// lies outside the list.
    void move(qsizetype from, qsizetype to);

    /// Writes the file, and makes its folder where that is missing.
    void save() const;

Q_SIGNALS:
    void snippetsChanged();

private:
    void set(QList<Snippet> snippets);
    void setAndSave(QList<Snippet> snippets);

    const QString m_path;
    const Clock& m_clock;
    QList<Snippet> m_snippets;
};
