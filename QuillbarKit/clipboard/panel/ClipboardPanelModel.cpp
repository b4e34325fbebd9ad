#include "clipboard/panel/ClipboardPanelModel.h"

#include "clipboard/history/ClipboardWatcher.h"
#include "clipboard/snippets/SnippetStore.h"
#include "settings/QuillbarSettings.h"
#include "support/MainQueue.h"

#include <QPointer>

#include <algorithm>
#include <utility>

ClipboardPanelModel::ClipboardPanelModel(const Services& services, Questions questions,
                                         LinkPreviewService::Fetcher fetcher, QObject* parent)
    : QObject(parent), m_watcher(services.watcher), m_snippets(services.snippets),
      m_settings(services.settings), m_thumbnails(services.thumbnails), m_mainQueue(services.mainQueue),
      m_questions(std::move(questions)), m_search(services.thumbnails),
      m_linkPreviews(linkPreviewsAtMost, std::move(fetcher)),
      m_rows([this](const Clip& clip) { return m_search.displayText(clip); }),
      m_stackRows([this](const Clip& clip) { return m_search.displayText(clip); })
{
    connect(&m_watcher, &ClipboardWatcher::clipsChanged, this, &ClipboardPanelModel::scheduleHistoryChange);
    connect(&m_watcher, &ClipboardWatcher::boardsChanged, this, &ClipboardPanelModel::scheduleHistoryChange);
    connect(&m_snippets, &SnippetStore::snippetsChanged, this, [this] {
        m_mainQueue.async([model = QPointer(this)] {
            if (model)
                Q_EMIT model->changed();
        });
    });
    updateRows();
}

ClipboardPanelModel::~ClipboardPanelModel() = default;

void ClipboardPanelModel::scheduleHistoryChange()
{
    m_filtered.reset();
    if (std::exchange(m_isHistoryChangeScheduled, true))
        return;
    m_mainQueue.async([model = QPointer(this)] {
        if (model)
            model->historyChanged();
    });
}

void ClipboardPanelModel::historyChanged()
{
    m_isHistoryChangeScheduled = false;
    m_search.keepOnly(m_watcher.clips());
    updateRows();
    Q_EMIT changed();
    validateBoardFilter();
    clampSelection();
}

void ClipboardPanelModel::setQuery(const QString& query)
{
    m_query = query;
    m_filtered.reset();
    updateRows();
    Q_EMIT queryChanged();
    clampSelection();
}

void ClipboardPanelModel::setSelection(int selection)
{
    m_selection = selection;
    Q_EMIT selectionChanged();
}

void ClipboardPanelModel::setBoardFilter(const BoardFilter& filter)
{
    m_boardFilter = filter;
    m_filtered.reset();
    updateRows();
    Q_EMIT boardFilterChanged();
    setSelection(0);
    if (m_boardFilter.kind() != BoardFilter::Kind::Snippets)
        setSnippetEditing(SnippetEdit::none());
}

void ClipboardPanelModel::setEditingClipUUID(const std::optional<QUuid>& uuid)
{
    m_editingClipUUID = uuid;
    Q_EMIT editingClipUUIDChanged();
}

void ClipboardPanelModel::setStackModeEnabled(bool enabled)
{
    m_stackModeEnabled = enabled;
    Q_EMIT stackModeEnabledChanged();
}

void ClipboardPanelModel::setStack(const PasteStack& stack)
{
    m_stack = stack;
    m_stackRows.setClips(stackClips());
    Q_EMIT stackChanged();
}

void ClipboardPanelModel::setSnippetEditing(const SnippetEdit& editing)
{
    m_snippetEditing = editing;
    Q_EMIT snippetEditingChanged();
}

void ClipboardPanelModel::updateRows()
{
    m_rows.setClips(filtered());
    m_stackRows.setClips(stackClips());
}

void ClipboardPanelModel::validateBoardFilter()
{
    if (m_boardFilter.kind() == BoardFilter::Kind::Board && !hasBoard(m_boardFilter.boardID()))
        setBoardFilter(BoardFilter::all());
}

void ClipboardPanelModel::clampSelection()
{
    const auto last = static_cast<int>(filtered().size()) - 1;
    const int clamped = std::clamp(m_selection, 0, std::max(last, 0));
    // A view scrolls to the selection when it is published; where nothing moves, nothing should scroll.
    if (clamped != m_selection)
        setSelection(clamped);
}

const Clip* ClipboardPanelModel::clipOf(const QUuid& uuid) const
{
    const auto& clips = m_watcher.clips();
    const auto found =
        std::find_if(clips.begin(), clips.end(), [&](const Clip& clip) { return clip.uuid == uuid; });
    return found == clips.end() ? nullptr : &*found;
}

bool ClipboardPanelModel::hasBoard(const QUuid& id) const
{
    const auto& boards = m_watcher.boards();
    return std::any_of(boards.begin(), boards.end(), [&](const Pinboard& board) { return board.id == id; });
}

QList<Clip> ClipboardPanelModel::boardClips() const
{
    switch (m_boardFilter.kind()) {
    case BoardFilter::Kind::All:
        return m_watcher.clips();
    case BoardFilter::Kind::Pinned: {
        QList<Clip> pinned;
        for (const Clip& clip : m_watcher.clips()) {
            if (clip.pinned)
                pinned.append(clip);
        }
        return pinned;
    }
    case BoardFilter::Kind::Board:
        return hasBoard(m_boardFilter.boardID()) ? m_watcher.clips(m_boardFilter.boardID())
                                                 : m_watcher.clips();
    case BoardFilter::Kind::Snippets:
        return {};
    }
    Q_UNREACHABLE();
}

const QList<Clip>& ClipboardPanelModel::filtered() const
{
    if (!m_filtered)
        m_filtered = m_search.matches(boardClips(), m_query);
    return *m_filtered;
}

std::optional<QUuid> ClipboardPanelModel::selectedBoardID() const
{
    if (m_boardFilter.kind() != BoardFilter::Kind::Board)
        return {};
    return m_boardFilter.boardID();
}

std::optional<Clip> ClipboardPanelModel::selectedClip() const
{
    const auto& clips = filtered();
    if (m_selection < 0 || m_selection >= clips.size())
        return {};
    return clips[m_selection];
}

QList<Clip> ClipboardPanelModel::stackClips() const
{
    QList<Clip> clips;
    for (const QUuid& uuid : m_stack.items()) {
        if (const Clip* clip = clipOf(uuid))
            clips.append(*clip);
    }
    return clips;
}

QString ClipboardPanelModel::editingClipText() const
{
    return m_editingClipUUID ? m_editingClipUUID->toString(QUuid::WithoutBraces) : QString();
}

void ClipboardPanelModel::moveUp()
{
    if (!filtered().isEmpty())
        setSelection(std::max(m_selection - 1, 0));
}

void ClipboardPanelModel::moveDown()
{
    const auto count = static_cast<int>(filtered().size());
    if (count > 0)
        setSelection(std::min(m_selection + 1, count - 1));
}

void ClipboardPanelModel::activateSelected()
{
    if (const auto clip = selectedClip())
        activate(*clip);
}

void ClipboardPanelModel::activate(const Clip& clip)
{
    if (m_stackModeEnabled) {
        PasteStack stack = m_stack;
        stack.enqueue(clip.uuid);
        setStack(stack);
        return;
    }
    if (onActivate)
        onActivate(clip, m_settings.pasteAsPlainByDefault() != m_questions.isOptionHeld());
}

void ClipboardPanelModel::deleteSelected()
{
    if (const auto clip = selectedClip()) {
        m_watcher.deleteClip(*clip);
        clampSelection();
    }
}

void ClipboardPanelModel::togglePinSelected()
{
    if (const auto clip = selectedClip())
        m_watcher.togglePin(*clip);
}

void ClipboardPanelModel::beginEditing(const Clip& clip)
{
    if (clip.kind == Clip::Kind::Text)
        setEditingClipUUID(clip.uuid);
}
