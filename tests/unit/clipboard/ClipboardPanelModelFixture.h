#pragma once

#include "clipboard/history/ClipThumbnailCache.h"
#include "clipboard/panel/ClipboardPanelModel.h"
#include "clipboard/snippets/SnippetStore.h"
#include "settings/QuillbarSettings.h"
#include "support/UserDefaults.h"
#include "unit/clipboard/ClipboardWatcherFixture.h"

#include <QHash>
#include <QUrl>

#include <utility>

/// A panel's model over a history that holds what a test copied.
class ClipboardPanelModelFixture : public ClipboardWatcherFixture
{
protected:
    ClipboardPanelModelFixture()
    {
        watcher->start();
        model.onActivate = [this](const Clip& clip, bool plain) { activated.append({clip.text, plain}); };
        model.onPasteAll = [this](const QList<Clip>& clips) {
            for (const auto& clip : clips)
                pastedAll.append(clip.text);
        };
        model.onPasteNext = [this](const Clip& clip) { pastedNext.append(clip.text); };
    }

    /// Each a clip, the last one copied on top.
    void copiedAll(const QStringList& texts)
    {
        for (const auto& each : texts)
            copied(each);
        queue.runUntilIdle();
    }

    QStringList shown() const
    {
        QStringList texts;
        for (const auto& each : model.filtered())
            texts.append(each.text);
        return texts;
    }
    QStringList rowsShown()
    {
        QStringList texts;
        for (const auto& each : model.rows()->clips())
            texts.append(each.text);
        return texts;
    }
    QStringList queued() const
    {
        QStringList texts;
        for (const auto& each : model.stackClips())
            texts.append(each.text);
        return texts;
    }
    void enqueue(const QStringList& texts)
    {
        model.setStackModeEnabled(true);
        for (const auto& each : texts)
            model.activate(clip(each));
    }
    QUuid boardOf(const QString& name, const QStringList& texts)
    {
        const auto board = watcher->addBoard(name);
        for (const auto& each : texts)
            watcher->addClip(clip(each).uuid, board.id);
        queue.runUntilIdle();
        return board.id;
    }

    bool isOptionHeld = false;
    bool isTrusted = false;
    QList<std::pair<QString, bool>> activated;
    QStringList pastedAll;
    QStringList pastedNext;
    /// What is found behind links.
    QHash<QUrl, LinkPreview> pages;
    UserDefaults defaults{folder.filePath(QStringLiteral("defaults.json"))};
    QuillbarSettings settings{defaults};
    SnippetStore snippets{folder.filePath(QStringLiteral("snippets.json")), clock};
    ClipThumbnailCache thumbnails{imageCodec};
    ClipboardPanelModel model{
        {*watcher, snippets, settings, thumbnails, queue},
        {[this] { return isOptionHeld; }, [this] { return isTrusted; }},
        [this](const QUrl& url) -> QCoro::Task<LinkPreview> { co_return pages.value(url); }};
};
