#pragma once

#include "clipboard/history/SourceApp.h"
#include "clipboard/panel/ClipboardPanelModel.h"
#include "clipboard/panel/TitledRowsModel.h"
#include "clipboard/rows/ClipPictures.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariant>
#include <QVariantList>
#include <QtQmlIntegration>

#include <memory>
#include <optional>

/// What the panel's views show and do beside the model: the boards and the snippets as rows, the programs
/// and pictures of clips, and what a row does to its clip. Clips, boards and snippets are named by their ids
/// as texts; what is not there changes nothing. Belongs to one view. Main thread only.
class ClipboardPanelContent : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    /// Set once, at the creation.
    Q_PROPERTY(ClipboardPanelModel* model READ model WRITE setModel NOTIFY modelChanged REQUIRED)
    Q_PROPERTY(TitledRowsModel* boards READ boards CONSTANT)
    Q_PROPERTY(TitledRowsModel* snippets READ snippets CONSTANT)
    Q_PROPERTY(ClipPictures* pictures READ pictures NOTIFY modelChanged)
    /// Whether the history holds any clip, whatever the filter.
    Q_PROPERTY(bool hasClips READ hasClips NOTIFY clipsChanged)

public:
    explicit ClipboardPanelContent(QObject* parent = nullptr);
    ~ClipboardPanelContent() override;

    ClipboardPanelModel* model() const { return m_model; }
    void setModel(ClipboardPanelModel* model);
    TitledRowsModel* boards() { return &m_boards; }
    TitledRowsModel* snippets() { return &m_snippets; }
    ClipPictures* pictures() const { return m_pictures.get(); }
    bool hasClips() const;

    // What a row does to its clip.
    Q_INVOKABLE void activate(const QString& clip);
    Q_INVOKABLE void activatePlain(const QString& clip);
    Q_INVOKABLE void beginEditing(const QString& clip);
    /// Keeps the text and closes the editor.
    Q_INVOKABLE void commitEdit(const QString& clip, const QString& text);
    Q_INVOKABLE void togglePin(const QString& clip);
    Q_INVOKABLE void deleteClip(const QString& clip);
    Q_INVOKABLE void addToBoard(const QString& clip, const QString& board);
    Q_INVOKABLE void addToNewBoard(const QString& clip, const QString& name);
    Q_INVOKABLE void removeFromBoard(const QString& clip, const QString& board);

    Q_INVOKABLE void clearUnpinned();
    Q_INVOKABLE void clear();

    Q_INVOKABLE void createBoard(const QString& name);
    Q_INVOKABLE void renameBoard(const QString& board, const QString& name);
    Q_INVOKABLE void deleteBoard(const QString& board);

    Q_INVOKABLE void activateSnippet(const QString& snippet);
    Q_INVOKABLE void deleteSnippet(const QString& snippet);

    /// The boards as a menu lists them: "uuid" and "title" each.
    Q_INVOKABLE QVariantList boardList() const;

    /// Empty for a program that is not known.
    Q_INVOKABLE QString sourceName(const QString& bundleID) const;
    /// A QImage, null for none.
    Q_INVOKABLE QVariant sourceIcon(const QString& bundleID);

Q_SIGNALS:
    void modelChanged();
    void clipsChanged();

private:
    std::optional<Clip> clipOf(const QString& uuid) const;
    std::optional<Snippet> snippetOf(const QString& id) const;
    void updateBoards();
    void updateSnippets();

    QPointer<ClipboardPanelModel> m_model;
    TitledRowsModel m_boards;
    TitledRowsModel m_snippets;
    std::unique_ptr<ClipPictures> m_pictures;
    std::optional<SourceApp> m_sourceApp;
};
