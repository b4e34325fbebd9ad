#include "clipboard/rows/ClipRowsModel.h"

#include <gmock/gmock.h>

#include <map>
#include <random>

namespace {
using testing::ElementsAre;
using testing::IsEmpty;

/// Follows a model by what it tells, as a view does.
class Follower
{
public:
    explicit Follower(const ClipRowsModel& model) : m_model(model), m_rows(read())
    {
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, &m_context,
                         [this](const QModelIndex&, int first, int last) {
                             m_rows.remove(first, last - first + 1);
                             told.append(QStringLiteral("removed %1").arg(first));
                         });
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, &m_context,
                         [this](const QModelIndex&, int first, int last) {
                             for (int row = first; row <= last; ++row)
                                 m_rows.insert(row, at(row));
                             told.append(QStringLiteral("inserted %1").arg(first));
                         });
        QObject::connect(&model, &QAbstractItemModel::rowsMoved, &m_context,
                         [this](const QModelIndex&, int from, int, const QModelIndex&, int to) {
                             m_rows.move(from, to > from ? to - 1 : to);
                             told.append(QStringLiteral("moved %1 %2").arg(from).arg(to));
                         });
        QObject::connect(&model, &QAbstractItemModel::dataChanged, &m_context,
                         [this](const QModelIndex& first) {
                             m_rows[first.row()] = at(first.row());
                             told.append(QStringLiteral("changed %1").arg(first.row()));
                         });
        QObject::connect(&model, &QAbstractItemModel::modelReset, &m_context,
                         [this] { told.append(QStringLiteral("reset")); });
    }

    const QStringList& rows() const { return m_rows; }
    QStringList read() const
    {
        QStringList rows;
        for (int row = 0; row < m_model.rowCount(); ++row)
            rows.append(at(row));
        return rows;
    }

    QStringList told;

private:
    QString at(int row) const { return m_model.data(m_model.index(row), ClipRowsModel::TextRole).toString(); }

    const ClipRowsModel& m_model;
    QObject m_context;
    QStringList m_rows;
};

class ClipRowsModelTest : public testing::Test
{
protected:
    /// One clip a letter; the same letter is the same clip.
    QList<Clip> clips(const QString& letters)
    {
        QList<Clip> clips;
        for (const QChar letter : letters) {
            Clip& clip = m_known[letter];
            if (clip.uuid.isNull())
                clip.uuid = QUuid::createUuid();
            clip.text = letter;
            clips.append(clip);
        }
        return clips;
    }
    QString rows() const { return follower.read().join(QString()); }
    QVariant data(int role) const { return model.data(model.index(0), role); }
    void expectFollowed() { EXPECT_EQ(follower.rows(), follower.read()); }
    /// What the model tells while its clips `before` become those `after`.
    QStringList told(const QString& before, const QString& after)
    {
        model.setClips(clips(before));
        follower.told.clear();
        model.setClips(clips(after));
        EXPECT_EQ(rows(), after);
        expectFollowed();
        return follower.told;
    }

    ClipRowsModel model{[](const Clip& clip) { return QStringLiteral("label of ") + clip.text; }};
    Follower follower{model};

private:
    std::map<QChar, Clip> m_known;
};

TEST_F(ClipRowsModelTest, InsertsWhatIsNew)
{
    EXPECT_THAT(told(QStringLiteral("bd"), QStringLiteral("abcd")),
                ElementsAre(u"inserted 0", u"inserted 2"));
}

TEST_F(ClipRowsModelTest, RemovesWhatIsGone)
{
    EXPECT_THAT(told(QStringLiteral("abcd"), QStringLiteral("ac")), ElementsAre(u"removed 3", u"removed 1"));
}

TEST_F(ClipRowsModelTest, MovesAClipThatWentUp)
{
    EXPECT_THAT(told(QStringLiteral("abcd"), QStringLiteral("dabc")), ElementsAre(u"moved 3 0"));
}

TEST_F(ClipRowsModelTest, MovesAClipThatWentDownAndNotThoseItPassed)
{
    EXPECT_THAT(told(QStringLiteral("abcd"), QStringLiteral("bcda")), ElementsAre(u"moved 0 4"));
}

TEST_F(ClipRowsModelTest, TellsWhichClipChanged)
{
    auto list = clips(QStringLiteral("abc"));
    model.setClips(list);
    follower.told.clear();
    list[1].pinned = true;
    model.setClips(list);
    EXPECT_THAT(follower.told, ElementsAre(u"changed 1"));
    EXPECT_TRUE(model.data(model.index(1), ClipRowsModel::PinnedRole).toBool());
}

TEST_F(ClipRowsModelTest, SaysNothingOfTheSameList)
{
    EXPECT_THAT(told(QStringLiteral("abc"), QStringLiteral("abc")), IsEmpty());
}

TEST_F(ClipRowsModelTest, HoldsAClipSeveralTimes)
{
    model.setClips(clips(QStringLiteral("aba")));
    EXPECT_EQ(rows(), u"aba");
    follower.told.clear();
    model.setClips(clips(QStringLiteral("ba")));
    EXPECT_EQ(rows(), u"ba");
    model.setClips(clips(QStringLiteral("baab")));
    EXPECT_EQ(rows(), u"baab");
    expectFollowed();
}

TEST_F(ClipRowsModelTest, GetsFromAnyListToAnyOtherWithoutAReset)
{
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        QString letters;
        const auto length = random() % 9;
        for (unsigned i = 0; i < length; ++i)
            letters += QChar(static_cast<char16_t>(u'a' + random() % 6));
        model.setClips(clips(letters));
        ASSERT_EQ(rows(), letters);
        ASSERT_EQ(follower.rows(), follower.read());
    }
    EXPECT_FALSE(follower.told.contains(QStringLiteral("reset")));
}

TEST_F(ClipRowsModelTest, TellsItsCountWhenItChanges)
{
    int counted = 0;
    QObject::connect(&model, &ClipRowsModel::countChanged, &model, [&] { ++counted; });
    model.setClips(clips(QStringLiteral("ab")));
    EXPECT_EQ(counted, 1);
    EXPECT_EQ(model.count(), 2);
    model.setClips(clips(QStringLiteral("ba")));
    EXPECT_EQ(counted, 1);
    model.setClips({});
    EXPECT_EQ(counted, 2);
}

TEST_F(ClipRowsModelTest, ShowsWhatARowNeeds)
{
    Clip clip;
    clip.uuid = QUuid(QStringLiteral("{0A1B2C3D-0000-4000-8000-000000000001}"));
    clip.text = QStringLiteral("https://example.org");
    clip.detectedKind = DetectedKind::link(clip.text);
    clip.date = QDateTime::fromSecsSinceEpoch(1'700'000'000, Qt::UTC);
    clip.sourceBundleID = QStringLiteral("org.example.editor");
    model.setClips({clip});
    EXPECT_EQ(data(ClipRowsModel::UuidRole).toString(), u"0a1b2c3d-0000-4000-8000-000000000001");
    EXPECT_EQ(data(ClipRowsModel::KindRole).value<ClipRowsModel::Kind>(), ClipRowsModel::Kind::Text);
    EXPECT_EQ(data(ClipRowsModel::TextRole).toString(), clip.text);
    EXPECT_EQ(data(ClipRowsModel::DisplayTextRole).toString(), u"label of https://example.org");
    EXPECT_EQ(data(ClipRowsModel::DetectedRole).value<ClipRowsModel::Detected>(),
              ClipRowsModel::Detected::Link);
    EXPECT_EQ(data(ClipRowsModel::DetectedValueRole).toString(), clip.text);
    EXPECT_FALSE(data(ClipRowsModel::PinnedRole).toBool());
    EXPECT_EQ(data(ClipRowsModel::DateRole).toDateTime(), clip.date);
    EXPECT_EQ(data(ClipRowsModel::SourceBundleIDRole).toString(), u"org.example.editor");
    EXPECT_EQ(data(ClipRowsModel::FileCountRole).toInt(), 0);
    EXPECT_FALSE(data(Qt::DecorationRole).isValid());
    EXPECT_EQ(model.roleNames().size(), 10);
}
} // namespace
