// What the panel's model does with the stack, the boards and the snippets, and for the views.

#include "clipboard/history/ClipboardWatcher.h"
#include "clipboard/panel/ClipboardPanelModel.h"
#include "clipboard/snippets/SnippetStore.h"
#include "settings/QuillbarSettings.h"

#include <algorithm>

void ClipboardPanelModel::pasteAll()
{
    const auto clips = stackClips();
    if (clips.isEmpty())
        return;
    if (!m_settings.autoPasteEnabled() || !m_questions.isTrusted()) {
        pasteNext();
        return;
    }
    clearStack();
    if (onPasteAll)
        onPasteAll(clips);
}

void ClipboardPanelModel::pasteNext()
{
    PasteStack stack = m_stack;
    std::optional<Clip> next;
    while (!next) {
        const auto uuid = stack.popFront();
        if (!uuid)
            break;
        if (const Clip* clip = clipOf(*uuid))
            next = *clip;
    }
    if (stack != m_stack)
        setStack(stack);
    if (next && onPasteNext)
        onPasteNext(*next);
}

void ClipboardPanelModel::removeStackRow(int row)
{
    // The stack may hold clips that are gone and so have no row.
    const auto& items = m_stack.items();
    int rowOfItem = -1;
    for (qsizetype index = 0; index < items.size(); ++index) {
        if (!clipOf(items[index]) || ++rowOfItem != row)
            continue;
        PasteStack stack = m_stack;
        stack.remove(index);
        setStack(stack);
        return;
    }
}

std::optional<Pinboard> ClipboardPanelModel::createBoard(const QString& name)
{
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty())
        return {};
    const auto board = m_watcher.addBoard(trimmed);
    setBoardFilter(BoardFilter::board(board.id));
    return board;
}

void ClipboardPanelModel::renameBoard(const QUuid& id, const QString& name)
{
    const QString trimmed = name.trimmed();
    if (!trimmed.isEmpty())
        m_watcher.renameBoard(id, trimmed);
}

void ClipboardPanelModel::deleteBoard(const QUuid& id)
{
    if (m_boardFilter == BoardFilter::board(id))
        setBoardFilter(BoardFilter::all());
    m_watcher.deleteBoard(id);
}

void ClipboardPanelModel::addClip(const Clip& clip, const QString& toNewBoardNamed)
{
    const QString trimmed = toNewBoardNamed.trimmed();
    if (trimmed.isEmpty())
        return;
    const auto uuid = clip.uuid;
    m_watcher.addClip(uuid, m_watcher.addBoard(trimmed).id);
}

void ClipboardPanelModel::saveSnippet(const QString& title, const QString& text)
{
    QString trimmedTitle = title.trimmed();
    const bool isBlank = trimmedTitle.isEmpty() && text.trimmed().isEmpty();
    if (trimmedTitle.isEmpty())
        trimmedTitle = QStringLiteral("Untitled");
    if (!isBlank && m_snippetEditing.kind() == SnippetEdit::Kind::Existing) {
        const auto& snippets = m_snippets.snippets();
        const auto found = std::find_if(snippets.begin(), snippets.end(), [this](const Snippet& snippet) {
            return snippet.id == m_snippetEditing.snippetID();
        });
        if (found != snippets.end())
            m_snippets.update(Snippet(*found), trimmedTitle, text);
    } else if (!isBlank) {
        m_snippets.add(trimmedTitle, text);
    }
    setSnippetEditing(SnippetEdit::none());
}

void ClipboardPanelModel::deleteSnippet(const Snippet& snippet)
{
    const auto id = snippet.id;
    m_snippets.remove(snippet);
    if (m_snippetEditing == SnippetEdit::existing(id))
        setSnippetEditing(SnippetEdit::none());
}

void ClipboardPanelModel::show(BoardFilterKinds::BoardFilterKind kind)
{
    switch (kind) {
    case BoardFilter::Kind::All:
        setBoardFilter(BoardFilter::all());
        break;
    case BoardFilter::Kind::Pinned:
        setBoardFilter(BoardFilter::pinned());
        break;
    case BoardFilter::Kind::Snippets:
        setBoardFilter(BoardFilter::snippets());
        break;
    case BoardFilter::Kind::Board:
        break;
    }
}

void ClipboardPanelModel::showBoard(const QString& id)
{
    if (const QUuid board(id); hasBoard(board))
        setBoardFilter(BoardFilter::board(board));
}

std::optional<Clip> ClipboardPanelModel::clipInRow(int row) const
{
    const auto& clips = m_rows.clips();
    if (row < 0 || row >= clips.size())
        return {};
    return clips[row];
}

void ClipboardPanelModel::activateRow(int row)
{
    if (const auto clip = clipInRow(row))
        activate(*clip);
}

void ClipboardPanelModel::beginEditingRow(int row)
{
    if (const auto clip = clipInRow(row))
        beginEditing(*clip);
}
