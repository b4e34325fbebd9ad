#pragma once

#include "clipboard/history/ClipboardHistoryFile.h"
#include "clipboard/history/ClipboardWatcher.h"
#include "fakes/FakeImageCodec.h"
#include "fakes/FakePasteboard.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ManualClock.h"
#include "fakes/ManualMainQueue.h"
#include "fakes/ManualSerialQueue.h"
#include "unit/support/SavedFolder.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <memory>

/// A watcher over a pasteboard in memory and a history file in a folder of its own.
class ClipboardWatcherFixture : public testing::Test
{
protected:
    static PasteboardContents text(const QString& string)
    {
        PasteboardContents contents;
        contents.types = {PasteboardType::plainText};
        contents.string = string;
        return contents;
    }
    static PasteboardContents image(const QByteArray& png)
    {
        PasteboardContents contents;
        contents.types = {PasteboardType::png};
        contents.png = png;
        return contents;
    }
    static PasteboardContents files(const QStringList& paths)
    {
        PasteboardContents contents;
        contents.types = {PasteboardType::fileURL};
        contents.filePaths = paths;
        return contents;
    }

    /// A program copies, and the next beat of the watcher comes.
    void copied(const PasteboardContents& contents)
    {
        pasteboard.copy(contents);
        nextTick();
    }
    void copied(const QString& string) { copied(text(string)); }
    void nextTick() { queue.advance(0.7); }

    /// Has an image that is copied back decoded and put on the pasteboard.
    void decode()
    {
        imageQueue->runAll();
        queue.runUntilIdle();
    }

    /// The texts of the clips, in their order.
    QStringList texts() const
    {
        QStringList texts;
        for (const auto& clip : watcher->clips())
            texts.append(clip.text);
        return texts;
    }
    const Clip& clip(const QString& text) const
    {
        for (const auto& each : watcher->clips()) {
            if (each.text == text)
                return each;
        }
        qFatal("no such clip");
    }

    /// What the file holds now.
    std::optional<ClipboardStore> saved() const
    {
        return ClipboardHistoryFile::read(SavedFolder::read(path));
    }
    void expectSaved() const
    {
        const auto store = saved();
        ASSERT_TRUE(store);
        ASSERT_EQ(store->clips.size(), watcher->clips().size());
        for (qsizetype i = 0; i < store->clips.size(); ++i)
            EXPECT_EQ(store->clips[i].id, watcher->clips()[i].id);
        ASSERT_EQ(store->boards.size(), watcher->boards().size());
        for (qsizetype i = 0; i < store->boards.size(); ++i)
            EXPECT_EQ(store->boards[i].clipUUIDs, watcher->boards()[i].clipUUIDs);
    }

    std::unique_ptr<ClipboardWatcher> makeWatcher()
    {
        return std::make_unique<ClipboardWatcher>(pasteboard, workspace, imageCodec, clock, queue, imageQueue,
                                                  path);
    }

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Quillbar/clipboard.json"));
    ManualClock clock;
    ManualMainQueue queue{clock};
    FakePasteboard pasteboard;
    FakeWorkspace workspace;
    FakeImageCodec imageCodec;
    std::shared_ptr<ManualSerialQueue> imageQueue =
        std::make_shared<ManualSerialQueue>(QStringLiteral("images"));
    std::unique_ptr<ClipboardWatcher> watcher = makeWatcher();
};
