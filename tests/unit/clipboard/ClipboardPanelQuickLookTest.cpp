#include "unit/clipboard/ClipboardPanelControllerFixture.h"

#include <QDir>
#include <QFile>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {
/// A control that somebody types into.
class TypingItem final : public QQuickItem
{
public:
    explicit TypingItem(QQuickItem* parent) : QQuickItem(parent) { setFlag(ItemAcceptsInputMethod); }
};

class ClipboardPanelQuickLookTest : public ClipboardPanelControllerFixture
{
protected:
    QString file(const QString& name)
    {
        const auto path = folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("content");
        return path;
    }
    void openOnImage()
    {
        copied(image("picture"));
        open();
    }
    QStringList temporaryFiles() const { return QDir(temporary + u"/Quillbar-QL"_qs).entryList(QDir::Files); }
    bool pressSpace() { return press(Qt::Key_Space); }
    void setPreviewKey(bool isKey) { Q_EMIT windowServer.isKeyChanged(controller.quickLookWindow(), isKey); }
};
} // namespace

// Whether there is something to look into

TEST_F(ClipboardPanelQuickLookTest, ImagesAndFilesCanBeLookedIntoAndTextsCannot)
{
    EXPECT_FALSE(controller.canQuickLookSelection());
    openOnImage();
    EXPECT_TRUE(controller.canQuickLookSelection());
    copied(files({file(u"a.txt"_qs)}));
    EXPECT_TRUE(controller.canQuickLookSelection());
    copied(u"text"_qs);
    EXPECT_FALSE(controller.canQuickLookSelection());
    EXPECT_FALSE(pressSpace());
    EXPECT_FALSE(controller.quickLookActive());
}

TEST_F(ClipboardPanelQuickLookTest, WithoutTheKeyboardNothingIsLookedInto)
{
    copied(image("picture"));
    controller.show({});
    EXPECT_FALSE(controller.canQuickLookSelection());
    setKey(true);
    EXPECT_TRUE(controller.canQuickLookSelection());
    setKey(false);
    EXPECT_FALSE(controller.canQuickLookSelection());
}

TEST_F(ClipboardPanelQuickLookTest, WhileAClipIsEditedNothingIsLookedInto)
{
    openOnImage();
    controller.model()->setEditingClipUUID(QUuid::createUuid());
    EXPECT_FALSE(controller.canQuickLookSelection());
    EXPECT_FALSE(pressSpace());
    controller.model()->endEditing();
    EXPECT_TRUE(controller.canQuickLookSelection());
}

TEST_F(ClipboardPanelQuickLookTest, SpaceIsABlankForWhoTypes)
{
    openOnImage();
    auto* field = new TypingItem(view);
    field->forceActiveFocus();
    EXPECT_FALSE(controller.canQuickLookSelection());
    EXPECT_FALSE(pressSpace());
    EXPECT_FALSE(controller.quickLookActive());
}

TEST_F(ClipboardPanelQuickLookTest, SpaceOnAButtonPressesTheButton)
{
    openOnImage();
    view->keysAreTaken = true;
    EXPECT_FALSE(pressSpace());
    EXPECT_FALSE(controller.quickLookActive());
}

TEST_F(ClipboardPanelQuickLookTest, WithoutASelectionNothingIsLookedInto)
{
    open();
    EXPECT_FALSE(controller.canQuickLookSelection());
}

// What is shown

TEST_F(ClipboardPanelQuickLookTest, AnImageIsShownFromAFileOfItsOwn)
{
    openOnImage();
    const auto name = watcher->clips().first().uuid.toString(QUuid::WithoutBraces).toUpper() + u".png"_qs;
    EXPECT_TRUE(pressSpace());
    EXPECT_TRUE(controller.quickLookActive());
    EXPECT_THAT(controller.previewURLs(), ElementsAre(temporary + u"/Quillbar-QL/"_qs + name));
    EXPECT_EQ(SavedFolder::read(controller.previewURLs().first()), "picture");
    EXPECT_EQ(controller.quickLookModel()->title(), u"Image"_qs);
    EXPECT_TRUE(windowServer.isKey);
    EXPECT_EQ(windowServer.traits.level, 101);
}

TEST_F(ClipboardPanelQuickLookTest, TheImagesFileIsWrittenOnce)
{
    openOnImage();
    pressSpace();
    const auto path = controller.previewURLs().first();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("as it was");
    file.close();
    controller.toggleQuickLook();
    setKey(true);
    pressSpace();
    EXPECT_THAT(controller.previewURLs(), ElementsAre(path));
    EXPECT_EQ(SavedFolder::read(path), "as it was");
}

TEST_F(ClipboardPanelQuickLookTest, OfFilesThoseAreShownThatAreThere)
{
    const auto first = file(u"a.txt"_qs);
    const auto gone = file(u"b.txt"_qs);
    const auto last = file(u"c.txt"_qs);
    copied(files({first, gone, last}));
    open();
    ASSERT_TRUE(QFile::remove(gone));
    pressSpace();
    EXPECT_THAT(controller.previewURLs(), ElementsAre(first, last));
    EXPECT_EQ(controller.quickLookModel()->title(), u"a.txt"_qs);
    EXPECT_THAT(temporaryFiles(), IsEmpty());
}

TEST_F(ClipboardPanelQuickLookTest, WithAllFilesGoneSpaceDoesNothingFurther)
{
    const auto only = file(u"a.txt"_qs);
    copied(files({only}));
    open();
    ASSERT_TRUE(QFile::remove(only));
    EXPECT_TRUE(pressSpace());
    EXPECT_FALSE(controller.quickLookActive());
    EXPECT_EQ(controller.quickLookWindow(), nullptr);
    EXPECT_TRUE(controller.isOpen());
}

TEST_F(ClipboardPanelQuickLookTest, AnImageThatCannotBeWrittenIsNotShown)
{
    QFile obstacle(temporary);
    ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
    openOnImage();
    EXPECT_TRUE(pressSpace());
    EXPECT_FALSE(controller.quickLookActive());
}

TEST_F(ClipboardPanelQuickLookTest, TheWindowTakesTheSizeOfWhatIsRead)
{
    copied(files({file(u"a.txt"_qs), file(u"b.png"_qs)}));
    open();
    pressSpace();
    EXPECT_EQ(controller.quickLookWindow()->frame(), (ScreenRect{410, 280, 460, 240}));
    EXPECT_EQ(controller.quickLookWindow()->opacity(), 0);
    quickLookQueue->runAll();
    queue.runUntilIdle();
    EXPECT_EQ(controller.quickLookWindow()->frame(), (ScreenRect{260, 80, 760, 640}));
    EXPECT_EQ(controller.quickLookWindow()->opacity(), 1);
    imageCodec.size = QSize(1000, 100);
    controller.quickLookModel()->showNext();
    quickLookQueue->runAll();
    queue.runUntilIdle();
    EXPECT_EQ(controller.quickLookWindow()->frame().height, 220);
}

TEST_F(ClipboardPanelQuickLookTest, WhatIsNotReadInTimeIsAwaitedInSight)
{
    copied(files({file(u"a.txt"_qs)}));
    open();
    pressSpace();
    queue.advance(0.25);
    EXPECT_EQ(controller.quickLookWindow()->frame(), (ScreenRect{410, 280, 460, 240}));
    EXPECT_EQ(controller.quickLookWindow()->opacity(), 1);
    quickLookQueue->runAll();
    queue.runUntilIdle();
    EXPECT_EQ(controller.quickLookWindow()->frame(), (ScreenRect{260, 80, 760, 640}));
}

// How it ends

TEST_F(ClipboardPanelQuickLookTest, SpaceOrEscapeInItGivesThePanelTheKeyboard)
{
    openOnImage();
    pressSpace();
    setKey(false);
    EXPECT_TRUE(controller.isOpen());
    Q_EMIT quickLookView->closeRequested();
    EXPECT_FALSE(controller.quickLookActive());
    EXPECT_EQ(controller.quickLookWindow(), nullptr);
    EXPECT_THAT(controller.previewURLs(), IsEmpty());
    EXPECT_TRUE(windowServer.isKey);
    EXPECT_TRUE(controller.isOpen());
    queue.runUntilIdle();
    EXPECT_TRUE(quickLookView.isNull());
    EXPECT_THAT(temporaryFiles(), SizeIs(1));
}

TEST_F(ClipboardPanelQuickLookTest, ItMayEndRightBeforeItsFileArrives)
{
    openOnImage();
    pressSpace();
    quickLookQueue->runAll();
    Q_EMIT quickLookView->closeRequested();
    queue.runUntilIdle();
    EXPECT_TRUE(quickLookView.isNull());
    EXPECT_FALSE(controller.quickLookActive());
    EXPECT_TRUE(controller.isOpen());
}

TEST_F(ClipboardPanelQuickLookTest, AHeldKeyOpensItOnce)
{
    openOnImage();
    const QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QString(), true);
    EXPECT_TRUE(controller.window()->keyMonitor(repeated));
    EXPECT_FALSE(controller.quickLookActive());
}

TEST_F(ClipboardPanelQuickLookTest, ItGoesWithThePanelAndSoDoItsFiles)
{
    openOnImage();
    pressSpace();
    controller.animateOutAndClose();
    EXPECT_FALSE(controller.quickLookActive());
    EXPECT_EQ(controller.quickLookWindow(), nullptr);
    EXPECT_FALSE(windowServer.isKey);
    EXPECT_THAT(QDir(temporary).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), IsEmpty());
}

TEST_F(ClipboardPanelQuickLookTest, TheNextShowingBeginsWithoutIt)
{
    openOnImage();
    pressSpace();
    controller.show({});
    EXPECT_FALSE(controller.quickLookActive());
    EXPECT_EQ(controller.quickLookWindow(), nullptr);
    EXPECT_THAT(QDir(temporary).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), IsEmpty());
}

TEST_F(ClipboardPanelQuickLookTest, TheKeyboardThatGoesElsewhereClosesBoth)
{
    openOnImage();
    pressSpace();
    setPreviewKey(true);
    setKey(false);
    setPreviewKey(false);
    queue.runUntilIdle();
    EXPECT_FALSE(controller.quickLookActive());
    EXPECT_FALSE(controller.isOpen());
    EXPECT_EQ(controller.secondsSinceResignClose(), 0);
}

TEST_F(ClipboardPanelQuickLookTest, TheKeyboardThatGoesToThePanelClosesThePreviewAlone)
{
    openOnImage();
    pressSpace();
    setPreviewKey(true);
    setKey(false);
    setPreviewKey(false);
    setKey(true);
    queue.runUntilIdle();
    EXPECT_FALSE(controller.quickLookActive());
    EXPECT_TRUE(controller.isOpen());
}
