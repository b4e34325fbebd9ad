#include "shell/ModuleRegistry.h"

#include "fakes/TestModule.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {
class ModuleRegistryTest : public testing::Test
{
protected:
    TestModule& add(const QString& id, int priority = 0)
    {
        auto module = std::make_unique<TestModule>(id);
        module->priority = priority;
        auto& reference = *module;
        m_modules.push_back(std::move(module));
        return reference;
    }

    ModuleRegistry& registry()
    {
        if (!m_registry)
            m_registry = std::make_unique<ModuleRegistry>(std::move(m_modules));
        return *m_registry;
    }

    std::vector<QString> visibleIDs()
    {
        std::vector<QString> ids;
        for (const auto* module : registry().visibleModules())
            ids.push_back(module->id());
        return ids;
    }

private:
    std::vector<std::unique_ptr<NotchModule>> m_modules;
    std::unique_ptr<ModuleRegistry> m_registry;
};
} // namespace

TEST_F(ModuleRegistryTest, WithoutFilterAndOrderTheModulesStandAsRegistered)
{
    add(u"a"_qs);
    add(u"b"_qs);
    EXPECT_THAT(visibleIDs(), ElementsAre(u"a"_qs, u"b"_qs));
}

TEST_F(ModuleRegistryTest, WithNothingEnabledNothingIsVisibleAndNothingPeeks)
{
    add(u"a"_qs).active = true;
    registry().setEnabledIDs(QStringList());
    EXPECT_THAT(visibleIDs(), IsEmpty());
    EXPECT_EQ(registry().peekModule(), nullptr);
}

TEST_F(ModuleRegistryTest, TheOrderOfTheEnabledIDsPlaysNoPart)
{
    add(u"a"_qs);
    add(u"b"_qs);
    add(u"c"_qs);
    registry().setEnabledIDs(QStringList{u"c"_qs, u"a"_qs});
    EXPECT_THAT(visibleIDs(), ElementsAre(u"a"_qs, u"c"_qs));
}

TEST_F(ModuleRegistryTest, ModulesMissingFromTheOrderComeLastAsRegistered)
{
    for (const auto& id : {u"a"_qs, u"b"_qs, u"c"_qs, u"d"_qs})
        add(id);
    registry().setOrder(QStringList{u"c"_qs, u"a"_qs});
    EXPECT_THAT(visibleIDs(), ElementsAre(u"c"_qs, u"a"_qs, u"b"_qs, u"d"_qs));
}

TEST_F(ModuleRegistryTest, AnOrderedIDThatNamesNoModuleHasNoEffect)
{
    add(u"a"_qs);
    add(u"b"_qs);
    registry().setOrder(QStringList{u"x"_qs, u"b"_qs, u"y"_qs, u"a"_qs});
    EXPECT_THAT(visibleIDs(), ElementsAre(u"b"_qs, u"a"_qs));
}

TEST_F(ModuleRegistryTest, ADisabledModuleIsFoundByItsIDButNotListed)
{
    add(u"a"_qs);
    auto& hidden = add(u"b"_qs);
    registry().setEnabledIDs(QStringList{u"a"_qs});
    EXPECT_EQ(registry().module(u"b"_qs), &hidden);
    EXPECT_THAT(visibleIDs(), ElementsAre(u"a"_qs));
    EXPECT_EQ(registry().module(u"nothing"_qs), nullptr);
}

TEST_F(ModuleRegistryTest, AmongEqualPrioritiesTheUsersOrderDecidesWhoPeeks)
{
    auto& media = add(u"media"_qs);
    auto& battery = add(u"battery"_qs);
    media.active = battery.active = true;
    registry().setOrder(QStringList{u"media"_qs, u"battery"_qs});
    EXPECT_EQ(registry().peekModule(), &media);
    registry().setOrder(QStringList{u"battery"_qs, u"media"_qs});
    EXPECT_EQ(registry().peekModule(), &battery);
}

TEST_F(ModuleRegistryTest, AHigherPriorityPeeksWhereverItStands)
{
    auto& first = add(u"first"_qs, 1);
    auto& second = add(u"second"_qs, 2);
    first.active = second.active = true;
    EXPECT_EQ(registry().peekModule(), &second);
    second.active = false;
    EXPECT_EQ(registry().peekModule(), &first);
    first.active = false;
    EXPECT_EQ(registry().peekModule(), nullptr);
}

TEST_F(ModuleRegistryTest, ADisabledModuleNeverPeeks)
{
    add(u"other"_qs);
    add(u"timer"_qs, 1).active = true;
    registry().setEnabledIDs(QStringList{u"other"_qs});
    EXPECT_EQ(registry().peekModule(), nullptr);
}

TEST_F(ModuleRegistryTest, TellsWhenItsAnswersMayHaveChanged)
{
    add(u"a"_qs);
    int changes = 0;
    QObject::connect(&registry(), &ModuleRegistry::changed, &registry(), [&] { ++changes; });
    registry().setEnabledIDs(QStringList{u"a"_qs});
    registry().setOrder(QStringList{u"a"_qs});
    registry().notifyActivityChanged();
    EXPECT_EQ(changes, 3);
}

TEST_F(ModuleRegistryTest, AnOrderWithADuplicateStopsTheProcess)
{
    add(u"a"_qs);
    EXPECT_DEATH(registry().setOrder(QStringList{u"a"_qs, u"a"_qs}), "twice");
}
