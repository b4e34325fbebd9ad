#include "clipboard/panel/ClipboardPanelContent.h"

#include "clipboard/history/ClipboardWatcher.h"
#include "clipboard/snippets/SnippetStore.h"

#include <algorithm>

namespace {
std::optional<QString> present(const QString& text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}
} // namespace

ClipboardPanelContent::ClipboardPanelContent(QObject* parent) : QObject(parent) {}

ClipboardPanelContent::~ClipboardPanelContent() = default;

void ClipboardPanelContent::setModel(ClipboardPanelModel* model)
{
    if (m_model || !model)
        qFatal("ClipboardPanelContent: the model is set once");
    m_model = model;
    auto& watcher = model->watcher();
    m_pictures = std::make_unique<ClipPictures>(watcher, model->thumbnails());
    m_sourceApp.emplace(watcher.workspace());
    connect(&watcher, &ClipboardWatcher::clipsChanged, this, &ClipboardPanelContent::clipsChanged);
    connect(&watcher, &ClipboardWatcher::boardsChanged, this, &ClipboardPanelContent::updateBoards);
    connect(&model->snippets(), &SnippetStore::snippetsChanged, this, &ClipboardPanelContent::updateSnippets);
    updateBoards();
    updateSnippets();
    Q_EMIT modelChanged();
    Q_EMIT clipsChanged();
}

bool ClipboardPanelContent::hasClips() const
{
    return m_model && !m_model->watcher().clips().isEmpty();
}

void ClipboardPanelContent::activate(const QString& clip)
{
    if (const auto found = clipOf(clip))
        m_model->activate(*found);
}

void ClipboardPanelContent::activatePlain(const QString& clip)
{
    if (const auto found = clipOf(clip); found && m_model->onActivatePlain)
        m_model->onActivatePlain(*found);
}

void ClipboardPanelContent::beginEditing(const QString& clip)
{
    if (const auto found = clipOf(clip))
        m_model->beginEditing(*found);
}

void ClipboardPanelContent::commitEdit(const QString& clip, const QString& text)
{
    if (const auto found = clipOf(clip))
        m_model->watcher().updateText(*found, text);
    if (m_model)
        m_model->endEditing();
}

void ClipboardPanelContent::togglePin(const QString& clip)
{
    if (const auto found = clipOf(clip))
        m_model->watcher().togglePin(*found);
}

void ClipboardPanelContent::deleteClip(const QString& clip)
{
    if (const auto found = clipOf(clip))
        m_model->watcher().deleteClip(*found);
}

void ClipboardPanelContent::addToBoard(const QString& clip, const QString& board)
{
    if (const auto found = clipOf(clip))
        m_model->watcher().addClip(found->uuid, QUuid(board));
}

void ClipboardPanelContent::addToNewBoard(const QString& clip, const QString& name)
{
    if (const auto found = clipOf(clip))
        m_model->addClip(*found, name);
}

void ClipboardPanelContent::removeFromBoard(const QString& clip, const QString& board)
{
    if (const auto found = clipOf(clip))
        m_model->watcher().removeClip(found->uuid, QUuid(board));
}

void ClipboardPanelContent::clearUnpinned()
{
    if (m_model)
        m_model->watcher().clearUnpinned();
}

void ClipboardPanelContent::clear()
{
    if (m_model)
        m_model->watcher().clear();
}

void ClipboardPanelContent::createBoard(const QString& name)
{
    if (m_model)
        m_model->createBoard(name);
}

void ClipboardPanelContent::renameBoard(const QString& board, const QString& name)
{
    if (m_model)
        m_model->renameBoard(QUuid(board), name);
}

void ClipboardPanelContent::deleteBoard(const QString& board)
{
    if (m_model)
        m_model->deleteBoard(QUuid(board));
}

void ClipboardPanelContent::activateSnippet(const QString& snippet)
{
    if (const auto found = snippetOf(snippet); found && m_model->onActivateSnippet)
        m_model->onActivateSnippet(*found);
}

void ClipboardPanelContent::deleteSnippet(const QString& snippet)
{
    if (const auto found = snippetOf(snippet))
        m_model->deleteSnippet(*found);
}

QVariantList ClipboardPanelContent::boardList() const
{
    QVariantList list;
    if (!m_model)
        return list;
    for (const auto& board : m_model->watcher().boards())
        list.append(QVariantMap{{QStringLiteral("uuid"), board.id.toString(QUuid::WithoutBraces)},
                                {QStringLiteral("title"), board.name}});
    return list;
}

QString ClipboardPanelContent::sourceName(const QString& bundleID) const
{
    return m_sourceApp ? m_sourceApp->name(present(bundleID)).value_or(QString()) : QString();
}

QVariant ClipboardPanelContent::sourceIcon(const QString& bundleID)
{
    return m_sourceApp ? m_sourceApp->icon(present(bundleID)).value_or(QImage()) : QImage();
}

std::optional<Clip> ClipboardPanelContent::clipOf(const QString& uuid) const
{
    if (!m_model)
        return {};
    const auto& clips = m_model->watcher().clips();
    const auto found = std::ranges::find(clips, QUuid(uuid), &Clip::uuid);
    return found == clips.end() ? std::nullopt : std::optional(*found);
}

std::optional<Snippet> ClipboardPanelContent::snippetOf(const QString& id) const
{
    if (!m_model)
        return {};
    const auto& snippets = m_model->snippets().snippets();
    const auto found = std::ranges::find(snippets, QUuid(id), &Snippet::id);
    return found == snippets.end() ? std::nullopt : std::optional(*found);
}

void ClipboardPanelContent::updateBoards()
{
    QList<TitledRowsModel::Row> rows;
    for (const auto& board : m_model->watcher().boards())
        rows.append({board.id, board.name, {}});
    m_boards.setRows(rows);
}

void ClipboardPanelContent::updateSnippets()
{
    QList<TitledRowsModel::Row> rows;
    for (const auto& snippet : m_model->snippets().snippets())
        rows.append({snippet.id, snippet.title, snippet.text});
    m_snippets.setRows(rows);
}
