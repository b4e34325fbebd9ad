#include "clipboard/snippets/SnippetStore.h"

#include "clipboard/snippets/SnippetFile.h"
#include "support/Clock.h"
#include "support/PrivateFile.h"

#include <algorithm>
#include <utility>

SnippetStore::SnippetStore(QString path, const Clock& clock, QObject* parent)
    : QObject(parent), m_path(std::move(path)), m_clock(clock)
{}

void SnippetStore::load()
{
    const auto bytes = PrivateFile::read(m_path);
    if (!bytes)
        return;
    if (auto snippets = SnippetFile::read(*bytes))
        set(std::move(*snippets));
}

Snippet SnippetStore::add(const QString& title, const QString& text)
{
    Snippet snippet{QUuid::createUuid(), title, text, m_clock.now()};
    QList<Snippet> snippets = m_snippets;
    snippets.prepend(snippet);
    setAndSave(std::move(snippets));
    return snippet;
}

void SnippetStore::update(const Snippet& snippet, const QString& title, const QString& text)
{
    QList<Snippet> snippets = m_snippets;
    const auto found = std::find_if(snippets.begin(), snippets.end(),
                                    [&](const Snippet& candidate) { return candidate.id == snippet.id; });
    if (found == snippets.end())
        return;
    *found = {snippet.id, title, text, m_clock.now()};
    std::rotate(snippets.begin(), found, found + 1);
    setAndSave(std::move(snippets));
}

void SnippetStore::remove(const Snippet& snippet)
{
    QList<Snippet> snippets = m_snippets;
    snippets.removeIf([id = snippet.id](const Snippet& candidate) { return candidate.id == id; });
    setAndSave(std::move(snippets));
}

void SnippetStore::move(qsizetype from, qsizetype to)
{
    const auto isInside = [this](qsizetype index) { return index >= 0 && index < m_snippets.size(); };
    if (!isInside(from) || !isInside(to))
        return;
    QList<Snippet> snippets = m_snippets;
    snippets.move(from, to);
    setAndSave(std::move(snippets));
}

void SnippetStore::save() const
{
    // Nobody waits for the outcome: the next save writes everything again.
    static_cast<void>(PrivateFile::write(m_path, {SnippetFile::write(m_snippets)}));
}

void SnippetStore::set(QList<Snippet> snippets)
{
    m_snippets = std::move(snippets);
    Q_EMIT snippetsChanged();
}

void SnippetStore::setAndSave(QList<Snippet> snippets)
{
    set(std::move(snippets));
    save();
}
