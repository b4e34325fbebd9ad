// The rules of the registry over all eleven modules, each stood in for by one that a test sets.
#include "shell/ModuleRegistry.h"

#include "fakes/TestModule.h"
#include "settings/QuillbarSettings.h"

#include <map>

#include <gmock/gmock.h>

namespace {
const std::map<QString, int> priorities = {
    {u"calendar"_qs, 3}, {u"drop"_qs, 2}, {u"shelf"_qs, 2}, {u"timer"_qs, 1}};

class ModuleTableTest : public testing::Test
{
protected:
    ModuleTableTest() : registry(make()) {}

    static std::vector<std::unique_ptr<NotchModule>> make()
    {
        std::vector<std::unique_ptr<NotchModule>> modules;
        for (const auto& id : QuillbarSettings::allModuleIDs()) {
            auto module = std::make_unique<TestModule>(id);
            const auto found = priorities.find(id);
            module->priority = found == priorities.end() ? 0 : found->second;
            modules.push_back(std::move(module));
        }
        return modules;
    }

    void activate(const QStringList& ids)
    {
        for (const auto& id : QuillbarSettings::allModuleIDs())
            dynamic_cast<TestModule&>(*registry.module(id)).active = ids.contains(id);
    }

    /// Which one peeks while these are active.
    QString peek(const QStringList& active)
    {
        activate(active);
        return registry.peekModuleID();
    }

    const QStringList all = QuillbarSettings::allModuleIDs();
    ModuleRegistry registry;
};
} // namespace

TEST_F(ModuleTableTest, AllElevenStandInTheOrderOfRegistration)
{
    EXPECT_EQ(registry.allIDs(), all);
    EXPECT_EQ(registry.visibleIDs(), all);
    EXPECT_EQ(all.size(), 11);
}

TEST_F(ModuleTableTest, EachAlonePeeksWhileItIsActiveAndEnabled)
{
    EXPECT_EQ(peek({}), QString());
    for (const auto& id : all) {
        EXPECT_EQ(peek({id}), id);
        auto others = all;
        others.removeOne(id);
        registry.setEnabledIDs(others);
        EXPECT_EQ(registry.peekModuleID(), QString()) << qUtf8Printable(id);
        EXPECT_EQ(registry.visibleIDs(), others);
        EXPECT_NE(registry.module(id), nullptr);
        registry.setEnabledIDs(std::nullopt);
    }
}

TEST_F(ModuleTableTest, TheCalendarGoesBeforeFilesThoseBeforeTheTimerAndThatBeforeTheRest)
{
    EXPECT_EQ(peek(all), u"calendar"_qs);
    auto active = all;
    active.removeOne(u"calendar"_qs);
    EXPECT_EQ(peek(active), u"drop"_qs);
    active.removeOne(u"drop"_qs);
    EXPECT_EQ(peek(active), u"shelf"_qs);
    active.removeOne(u"shelf"_qs);
    EXPECT_EQ(peek(active), u"timer"_qs);
    active.removeOne(u"timer"_qs);
    EXPECT_EQ(peek(active), u"media"_qs);
    // The order decides among equals only.
    registry.setOrder(QStringList{u"mirror"_qs, u"battery"_qs});
    EXPECT_EQ(peek(active), u"mirror"_qs);
    EXPECT_EQ(peek(all), u"calendar"_qs);
}

TEST_F(ModuleTableTest, OfDropAndShelfTheOneOrderedFirstPeeks)
{
    registry.setOrder(QStringList{u"shelf"_qs, u"drop"_qs});
    EXPECT_EQ(peek({u"drop"_qs, u"shelf"_qs}), u"shelf"_qs);
    registry.setOrder(QStringList{u"drop"_qs, u"shelf"_qs});
    EXPECT_EQ(peek({u"drop"_qs, u"shelf"_qs}), u"drop"_qs);
}

TEST_F(ModuleTableTest, WithoutAnOrderAgainTheModulesStandAsRegistered)
{
    const QStringList backwards(all.crbegin(), all.crend());
    registry.setOrder(backwards);
    EXPECT_EQ(registry.visibleIDs(), backwards);
    registry.setOrder(std::nullopt);
    EXPECT_EQ(registry.visibleIDs(), all);
    EXPECT_EQ(peek({u"shelf"_qs, u"drop"_qs}), u"drop"_qs);
}

TEST_F(ModuleTableTest, OrderAndChoiceWorkTogether)
{
    registry.setOrder(QStringList{u"mirror"_qs, u"timer"_qs, u"media"_qs});
    registry.setEnabledIDs(QStringList{u"media"_qs, u"vitals"_qs, u"mirror"_qs});
    EXPECT_EQ(registry.visibleIDs(), (QStringList{u"mirror"_qs, u"media"_qs, u"vitals"_qs}));
}

TEST_F(ModuleTableTest, TellsOfAnotherChoiceButNotOfTheFirstOrOfAnotherOrder)
{
    int changes = 0;
    QObject::connect(&registry, &ModuleRegistry::choiceChanged, &registry, [&] { ++changes; });
    registry.setEnabledIDs(all);
    registry.setOrder(QStringList{u"mirror"_qs});
    registry.setEnabledIDs(all);
    EXPECT_EQ(changes, 0);
    registry.setEnabledIDs(QStringList{u"media"_qs, u"timer"_qs, u"mirror"_qs});
    EXPECT_EQ(changes, 1);
}

TEST_F(ModuleTableTest, ShowsAndMarksWhatIsSelectedWhereItCan)
{
    const QStringList visible = {u"vitals"_qs, u"timer"_qs};
    EXPECT_EQ(ModuleRegistry::shownID(u"timer"_qs, visible), u"timer"_qs);
    EXPECT_EQ(ModuleRegistry::shownID(u"media"_qs, visible), u"vitals"_qs);
    EXPECT_EQ(ModuleRegistry::shownID(u"media"_qs, {}), QString());
    EXPECT_EQ(registry.markedID(u"media"_qs, visible), u"media"_qs);
    EXPECT_EQ(registry.markedID(u"nothing"_qs, visible), u"vitals"_qs);
}
