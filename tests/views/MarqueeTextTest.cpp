#include "Rest.h"
#include "ViewWindow.h"

namespace {
class MarqueeTextTest : public testing::Test, protected ViewWindow
{
protected:
    ~MarqueeTextTest() override { view.reset(); }

    void show(const QString& text)
    {
        showView(urlOf(QStringLiteral("MarqueeText")), {{QStringLiteral("text"), text}}, {200, 20});
    }
    double offset() const { return view->property("offset").toDouble(); }
    bool runs() const { return view->property("animate").toBool(); }

    const QString longText = QString(120, u'M');
    const QString shortText = QStringLiteral("Brief");
};
} // namespace

TEST_F(MarqueeTextTest, AShortTextAfterALongOneStandsAtItsStart)
{
    show(longText);
    ASSERT_TRUE(QTest::qWaitFor([&] { return offset() < -2; }));
    EXPECT_TRUE(runs());
    EXPECT_EQ(texts(), QStringList(2, longText));
    view->setProperty("text", shortText);
    EXPECT_EQ(offset(), 0);
    Rest::wait(window);
    EXPECT_EQ(offset(), 0);
    EXPECT_FALSE(runs());
    EXPECT_FALSE(view->property("overflows").toBool());
    EXPECT_EQ(texts(), QStringList{shortText});
}

TEST_F(MarqueeTextTest, ALongTextAfterAShortOneRuns)
{
    show(shortText);
    Rest::wait(window);
    EXPECT_FALSE(runs());
    view->setProperty("text", longText);
    EXPECT_TRUE(QTest::qWaitFor([&] { return offset() < -2; }));
}

TEST_F(MarqueeTextTest, InAWiderPlaceALongTextStandsStill)
{
    show(longText);
    ASSERT_TRUE(QTest::qWaitFor([&] { return offset() < -2; }));
    view->setWidth(view->property("textWidth").toDouble());
    EXPECT_EQ(offset(), 0);
    Rest::wait(window);
    EXPECT_FALSE(runs());
    EXPECT_EQ(texts(), QStringList{longText});
}
