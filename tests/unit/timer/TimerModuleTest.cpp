#include "timer/TimerModule.h"

#include "TimerServiceFixture.h"
#include "settings/QuillbarSettings.h"
#include "support/UserDefaults.h"

#include <QTemporaryDir>

namespace {
class TimerModuleTest : public TimerServiceFixture
{
protected:
    void expectView(const ModuleView& view, const QString& type)
    {
        EXPECT_EQ(view.source, QUrl(QStringLiteral("qrc:/qt/qml/Quillbar/%1.qml").arg(type)));
        EXPECT_EQ(view.properties.value(QStringLiteral("service")).value<TimerService*>(), &service);
        EXPECT_EQ(view.properties.value(QStringLiteral("settings")).value<QuillbarSettings*>(), &settings);
    }

    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("defaults.json"))};
    QuillbarSettings settings{defaults};
    TimerModule module{service, settings};
};
} // namespace

TEST_F(TimerModuleTest, NamesItself)
{
    EXPECT_EQ(module.id(), u"timer");
    EXPECT_EQ(module.title(), u"Timer");
    EXPECT_EQ(module.iconSystemName(), u"timer");
    EXPECT_EQ(module.peekPriority(), 1);
    EXPECT_FALSE(module.fillsAvailableHeight());
    EXPECT_EQ(module.preferredContentHeight(), std::nullopt);
}

TEST_F(TimerModuleTest, WantsThePeekWhileItRuns)
{
    EXPECT_FALSE(module.isActive());
    service.start();
    EXPECT_TRUE(module.isActive());
    service.pause();
    EXPECT_FALSE(module.isActive());
}

TEST_F(TimerModuleTest, GivesItsViewsTheServiceAndTheSettings)
{
    expectView(module.makeExpandedView(), u"TimerExpandedView"_qs);
    const auto leading = module.makePeekLeading();
    const auto trailing = module.makePeekTrailing();
    ASSERT_TRUE(leading && trailing);
    expectView(*leading, u"TimerPeekView"_qs);
    expectView(*trailing, u"TimerPeekView"_qs);
    EXPECT_EQ(leading->properties.value(u"side"_qs), u"leading"_qs);
    EXPECT_EQ(trailing->properties.value(u"side"_qs), u"trailing"_qs);
}
