#pragma once

#include "clipboard/boards/BoardFilter.h"
#include "clipboard/boards/Pinboard.h"
#include "clipboard/history/Clip.h"
#include "clipboard/panel/ClipSearch.h"
#include "clipboard/panel/PasteStack.h"
#include "clipboard/previews/LinkPreviewService.h"
#include "clipboard/rows/ClipRowsModel.h"
#include "clipboard/snippets/Snippet.h"
#include "clipboard/snippets/SnippetEdit.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QUuid>
#include <QtQmlIntegration>

#include <functional>
#include <optional>

class ClipThumbnailCache;
class ClipboardWatcher;
class MainQueue;
class QuillbarSettings;
class SnippetStore;

/// What one showing of the clipboard panel is about: the search, the filter, the selected row, the clips that
/// wait to be pasted, the open editors. Made when the panel opens and gone when it has closed. It never
/// touches the pasteboard: an action ends in one of the callbacks, which whoever shows the panel sets.
///
/// Every set publishes, also one of an equal value. Main thread only.
class ClipboardPanelModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the clipboard panel's controller")
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY queryChanged)
    /// A row of `rows`; may lie beyond them.
    Q_PROPERTY(int selection READ selection WRITE setSelection NOTIFY selectionChanged)
    Q_PROPERTY(BoardFilter boardFilter READ boardFilter NOTIFY boardFilterChanged)
    /// The clip whose text is open in its row; in lower case without braces, empty for none.
    Q_PROPERTY(QString editingClip READ editingClipText NOTIFY editingClipUUIDChanged)
    /// While it is on, activating a clip puts it into the stack.
    Q_PROPERTY(
        bool stackModeEnabled READ stackModeEnabled WRITE setStackModeEnabled NOTIFY stackModeEnabledChanged)
    /// How many entries the stack has, those whose clip is gone too.
    Q_PROPERTY(int stackCount READ stackCount NOTIFY stackChanged)
    Q_PROPERTY(SnippetEdit snippetEditing READ snippetEditing NOTIFY snippetEditingChanged)
    /// The clips of the filter that the query is found in.
    Q_PROPERTY(ClipRowsModel* rows READ rows CONSTANT)
    /// The clips of the stack in the order of pasting, without those that are no longer there.
    Q_PROPERTY(ClipRowsModel* stackRows READ stackRows CONSTANT)

public:
    /// All of them outlive the model.
    struct Services
    {
        ClipboardWatcher& watcher;
        SnippetStore& snippets;
        QuillbarSettings& settings;
        ClipThumbnailCache& thumbnails;
        MainQueue& mainQueue;
    };
    /// What the desktop is asked at the moment of an action.
    struct Questions
    {
        /// Whether the Option key is held.
        std::function<bool()> isOptionHeld;
        /// Whether keystrokes may be sent to other programs.
        std::function<bool()> isTrusted;
    };

    static constexpr int linkPreviewsAtMost = 200;

    ClipboardPanelModel(const Services& services, Questions questions, LinkPreviewService::Fetcher fetcher,
                        QObject* parent = nullptr);
    ~ClipboardPanelModel() override;

    std::function<void(const Clip&, bool plain)> onActivate;
    std::function<void(const Snippet&)> onActivateSnippet;
    std::function<void(const Clip&)> onActivatePlain;
    std::function<void(const QList<Clip>&)> onPasteAll;
    std::function<void(const Clip&)> onPasteNext;

    const QString& query() const { return m_query; }
    /// Leaves the selection where it is, as far as there are rows.
    void setQuery(const QString& query);
    int selection() const { return m_selection; }
    void setSelection(int selection);
    const BoardFilter& boardFilter() const { return m_boardFilter; }
    /// Selects the first row, and closes the snippet editor unless the snippets are shown.
    void setBoardFilter(const BoardFilter& filter);
    const std::optional<QUuid>& editingClipUUID() const { return m_editingClipUUID; }
    void setEditingClipUUID(const std::optional<QUuid>& uuid);
    bool stackModeEnabled() const { return m_stackModeEnabled; }
    void setStackModeEnabled(bool enabled);
    const PasteStack& stack() const { return m_stack; }
    void setStack(const PasteStack& stack);
    int stackCount() const { return static_cast<int>(m_stack.count()); }
    const SnippetEdit& snippetEditing() const { return m_snippetEditing; }
    void setSnippetEditing(const SnippetEdit& editing);

    /// The clips of the filter: of a board in the board's order, of one that is not there all of them.
    QList<Clip> boardClips() const;
    /// Those that the query, without the whitespace around it, is found in: in their label, whatever the case
    /// of the letters.
    const QList<Clip>& filtered() const;
    std::optional<QUuid> selectedBoardID() const;
    std::optional<Clip> selectedClip() const;
    bool isEditingAnyClip() const { return m_editingClipUUID.has_value(); }
    QList<Clip> stackClips() const;
    LinkPreviewService& linkPreviews() { return m_linkPreviews; }
    ClipboardWatcher& watcher() { return m_watcher; }
    SnippetStore& snippets() { return m_snippets; }
    ClipThumbnailCache& thumbnails() { return m_thumbnails; }

    ClipRowsModel* rows() { return &m_rows; }
    ClipRowsModel* stackRows() { return &m_stackRows; }

    Q_INVOKABLE void moveUp();
    Q_INVOKABLE void moveDown();
    Q_INVOKABLE void activateSelected();
    void activate(const Clip& clip);
    Q_INVOKABLE void deleteSelected();
    Q_INVOKABLE void togglePinSelected();

    /// For a clip of text; others stay as they are.
    void beginEditing(const Clip& clip);
    bool isEditing(const Clip& clip) const { return m_editingClipUUID == clip.uuid; }
    Q_INVOKABLE void endEditing() { setEditingClipUUID({}); }

    /// Hands over the whole stack where keystrokes can and may be sent, else does as pasteNext().
    Q_INVOKABLE void pasteAll();
    /// Hands over the first clip of the stack that is still there.
    Q_INVOKABLE void pasteNext();
    /// Takes out what stands in that row of `stackRows`.
    Q_INVOKABLE void removeStackRow(int row);
    Q_INVOKABLE void clearStack() { setStack({}); }

    /// Shows the new board. None, and no board, for a name of blanks.
    std::optional<Pinboard> createBoard(const QString& name);
    /// Keeps the old name where the new one is all blanks.
    void renameBoard(const QUuid& id, const QString& name);
    void deleteBoard(const QUuid& id);
    void addClip(const Clip& clip, const QString& toNewBoardNamed);

    /// Writes the snippet that is being edited, or a new one, and closes the editor. One with neither title
    /// nor text is not written; one without a title becomes "Untitled".
    Q_INVOKABLE void saveSnippet(const QString& title, const QString& text);
    void deleteSnippet(const Snippet& snippet);

    // The same for views, which know clips by their row of `rows` and the rest by ids as texts. What is not
    // there changes nothing.
    /// Of every kind but a board.
    Q_INVOKABLE void show(BoardFilterKinds::BoardFilterKind kind);
    Q_INVOKABLE void showBoard(const QString& id);
    Q_INVOKABLE void activateRow(int row);
    Q_INVOKABLE void beginEditingRow(int row);
    Q_INVOKABLE void beginSnippet() { setSnippetEditing(SnippetEdit::newSnippet()); }
    Q_INVOKABLE void editSnippet(const QString& id) { setSnippetEditing(SnippetEdit::existing(QUuid(id))); }
    Q_INVOKABLE void closeSnippetEditor() { setSnippetEditing(SnippetEdit::none()); }

Q_SIGNALS:
    void queryChanged();
    void selectionChanged();
    void boardFilterChanged();
    void editingClipUUIDChanged();
    void stackModeEnabledChanged();
    void stackChanged();
    void snippetEditingChanged();
    /// The history, the boards or the snippets are others now.
    void changed();

private:
    void scheduleHistoryChange();
    void historyChanged();
    void validateBoardFilter();
    void clampSelection();
    void updateRows();
    const Clip* clipOf(const QUuid& uuid) const;
    bool hasBoard(const QUuid& id) const;
    /// What the view shows in that row, which may be a turn behind the history.
    std::optional<Clip> clipInRow(int row) const;
    QString editingClipText() const;

    ClipboardWatcher& m_watcher;
    SnippetStore& m_snippets;
    QuillbarSettings& m_settings;
    ClipThumbnailCache& m_thumbnails;
    MainQueue& m_mainQueue;
    const Questions m_questions;
    QString m_query;
    int m_selection = 0;
    BoardFilter m_boardFilter;
    std::optional<QUuid> m_editingClipUUID;
    bool m_stackModeEnabled = false;
    PasteStack m_stack;
    SnippetEdit m_snippetEditing;
    mutable ClipSearch m_search;
    /// None when something that it is made of has changed.
    mutable std::optional<QList<Clip>> m_filtered;
    LinkPreviewService m_linkPreviews;
    ClipRowsModel m_rows;
    ClipRowsModel m_stackRows;
    bool m_isHistoryChangeScheduled = false;
};
