#include "clipboard/previews/QuickLookModel.h"

#include "fakes/FakeImageCodec.h"
#include "fakes/ManualMainQueue.h"
#include "fakes/ManualSerialQueue.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {
class QuickLookModelTest : public testing::Test
{
protected:
    QString file(const QString& name, const QByteArray& bytes)
    {
        const auto path = folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }
    std::unique_ptr<QuickLookModel> model(const QStringList& paths, const QString& title = {})
    {
        return std::make_unique<QuickLookModel>(QuickLookModel::Services{codec, queue, work}, paths, title,
                                                800, 2);
    }
    void load()
    {
        work->runAll();
        queue.runUntilIdle();
    }

    QTemporaryDir folder;
    FakeImageCodec codec;
    ManualMainQueue queue;
    std::shared_ptr<ManualSerialQueue> work = std::make_shared<ManualSerialQueue>(QStringLiteral("work"));
    const QString picture = file(u"a.png"_qs, "picture");
    const QString text = file(u"b.txt"_qs, "hello");
};
} // namespace

TEST_F(QuickLookModelTest, NothingIsReadOnTheMainThread)
{
    const auto shown = model({picture});
    queue.runUntilIdle();
    EXPECT_EQ(shown->state(), QuickLookModel::Loading);
    EXPECT_EQ(codec.decodes, 0);
    load();
    EXPECT_EQ(shown->state(), QuickLookModel::Picture);
}

TEST_F(QuickLookModelTest, APictureIsAsSharpAsTheScreen)
{
    codec.size = {4000, 2000};
    const auto shown = model({picture});
    load();
    EXPECT_EQ(shown->picture().value<QImage>().size(), QSize(1600, 800));
    EXPECT_EQ(shown->pictureSize(), QSizeF(800, 400));
    EXPECT_TRUE(shown->summary().contains(u", 4000 × 2000, 7 "_qs)) << shown->summary().toStdString();
}

TEST_F(QuickLookModelTest, TheTitleIsTheFilesNameOrTheOneGiven)
{
    EXPECT_EQ(model({picture})->title(), u"a.png"_qs);
    EXPECT_EQ(model({picture}, u"Image"_qs)->title(), u"Image"_qs);
}

TEST_F(QuickLookModelTest, SeveralFilesAreTurnedOverFromTheFirstToTheLast)
{
    const auto shown = model({picture, text});
    load();
    EXPECT_EQ(shown->position(), u"1 of 2"_qs);
    EXPECT_TRUE(shown->isFirst());
    shown->showPrevious();
    EXPECT_EQ(shown->state(), QuickLookModel::Picture);
    shown->showNext();
    EXPECT_EQ(shown->title(), u"b.txt"_qs);
    EXPECT_EQ(shown->position(), u"2 of 2"_qs);
    EXPECT_EQ(shown->state(), QuickLookModel::Loading);
    load();
    EXPECT_EQ(shown->text(), u"hello"_qs);
    EXPECT_TRUE(shown->isLast());
    shown->showNext();
    EXPECT_EQ(shown->state(), QuickLookModel::Text);
    EXPECT_EQ(model({picture})->position(), QString());
}

TEST_F(QuickLookModelTest, WhatComesTooLateIsNotShown)
{
    const auto shown = model({picture, text});
    shown->showNext();
    ASSERT_TRUE(work->runOne());
    queue.runUntilIdle();
    EXPECT_EQ(shown->state(), QuickLookModel::Loading);
    load();
    EXPECT_EQ(shown->state(), QuickLookModel::Text);
}

TEST_F(QuickLookModelTest, ItsEndWhileAFileIsReadHarmsNobody)
{
    model({picture});
    load();
    EXPECT_EQ(codec.decodes, 1);
}

TEST_F(QuickLookModelTest, AFileThatIsGoneHasFacts)
{
    const auto shown = model({folder.filePath(u"gone"_qs)});
    load();
    EXPECT_EQ(shown->state(), QuickLookModel::Facts);
    EXPECT_EQ(shown->byteCount(), QString());
    EXPECT_EQ(shown->modified(), QString());
    EXPECT_EQ(shown->summary(), u"No longer there"_qs);
}
