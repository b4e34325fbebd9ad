#include "fakes/FakePasteboard.h"

#include <gtest/gtest.h>

TEST(FakePasteboardTest, EveryChangeRaisesTheCountAndIsTold)
{
    FakePasteboard pasteboard;
    qint64 told = 0;
    pasteboard.setChangeHandler([&] { told = pasteboard.changeCount(); });
    pasteboard.copyText(QStringLiteral("a"));
    EXPECT_EQ(told, 1);
    PasteboardContents contents;
    contents.string = QStringLiteral("b");
    pasteboard.write(contents);
    EXPECT_EQ(told, 2);
    EXPECT_EQ(pasteboard.contents(), contents);
    EXPECT_EQ(pasteboard.written.size(), 1U);
}
