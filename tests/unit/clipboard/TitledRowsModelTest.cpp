#include "clipboard/panel/TitledRowsModel.h"

#include <gmock/gmock.h>

namespace {
/// How often a model has told of each kind of change.
struct Changes
{
    explicit Changes(TitledRowsModel& model)
    {
        const auto count = [&model](auto signal, int& counter) {
            QObject::connect(&model, signal, &model, [&counter] { ++counter; });
        };
        count(&QAbstractItemModel::modelReset, resets);
        count(&QAbstractItemModel::rowsRemoved, removed);
        count(&QAbstractItemModel::rowsInserted, inserted);
        count(&QAbstractItemModel::rowsMoved, moved);
        count(&QAbstractItemModel::dataChanged, changed);
    }

    int resets = 0;
    int removed = 0;
    int inserted = 0;
    int moved = 0;
    int changed = 0;
};

TitledRowsModel::Row row(const QUuid& id, const QString& title)
{
    return {id, title, {}};
}

QStringList titles(const TitledRowsModel& model)
{
    QStringList titles;
    for (int at = 0; at < model.rowCount(); ++at)
        titles.append(model.data(model.index(at), TitledRowsModel::TitleRole).toString());
    return titles;
}
} // namespace

using testing::ElementsAre;

TEST(TitledRowsModelTest, TellsWhatWentMovedCameAndChanged)
{
    const auto a = QUuid::createUuid();
    const auto b = QUuid::createUuid();
    const auto c = QUuid::createUuid();
    TitledRowsModel model;
    model.setRows({row(a, u"a"_qs), row(b, u"b"_qs)});
    const Changes told(model);
    model.setRows({row(c, u"c"_qs), row(b, u"B"_qs)});
    EXPECT_THAT(titles(model), ElementsAre(u"c"_qs, u"B"_qs));
    EXPECT_EQ(told.removed, 1);
    EXPECT_EQ(told.inserted, 1);
    EXPECT_EQ(told.changed, 1);
    model.setRows({row(b, u"B"_qs), row(c, u"c"_qs)});
    EXPECT_THAT(titles(model), ElementsAre(u"B"_qs, u"c"_qs));
    EXPECT_EQ(told.moved, 1);
    EXPECT_EQ(told.resets, 0);
}

TEST(TitledRowsModelTest, OfSeveralWithOneIdTheFirstCounts)
{
    const auto a = QUuid::createUuid();
    TitledRowsModel model;
    model.setRows({row(a, u"first"_qs), row(a, u"second"_qs)});
    EXPECT_THAT(titles(model), ElementsAre(u"first"_qs));
}
