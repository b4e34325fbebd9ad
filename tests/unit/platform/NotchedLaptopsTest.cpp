#include "platform/linux/NotchedLaptops.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {
class MachineModelTest : public testing::Test
{
protected:
    void write(const QString& path, const QByteArray& bytes)
    {
        const QString full = root.filePath(path);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(full).path()));
        QFile file(full);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    void writeDeviceTree(const QByteArray& bytes)
    {
        write(QStringLiteral("proc/device-tree/compatible"), bytes);
    }
    void writeDmi(const QByteArray& bytes) { write(QStringLiteral("sys/class/dmi/id/product_name"), bytes); }
    QString model() const { return NotchedLaptops::machineModel(root.path()); }

    QTemporaryDir root;
};

std::optional<QSize> housingSize(const QString& model, const QString& connector, const QSize& pixels)
{
    const auto housing = NotchedLaptops::housing(model, connector, pixels);
    return housing ? std::optional(housing->size) : std::nullopt;
}
} // namespace

TEST(NotchedLaptopsTest, AKnownModelsOwnPanelInItsFullModeHasAHousing)
{
    EXPECT_EQ(housingSize(u"apple,j314s"_qs, u"eDP-1"_qs, {3024, 1964}), QSize(370, 74));
    EXPECT_EQ(housingSize(u"apple,j416c"_qs, u"eDP-1"_qs, {3456, 2234}), QSize(370, 74));
    EXPECT_EQ(housingSize(u"apple,j413"_qs, u"eDP-1"_qs, {2560, 1664}), QSize(340, 64));
    EXPECT_EQ(housingSize(u"apple,j415"_qs, u"eDP-2"_qs, {2880, 1864}), QSize(340, 64));
}

TEST(NotchedLaptopsTest, AnExternalDisplayHasNone)
{
    for (const auto& connector : {u"HDMI-1"_qs, u"DP-1"_qs, u"default"_qs, QString()})
        EXPECT_EQ(housingSize(u"apple,j314s"_qs, connector, {3024, 1964}), std::nullopt);
}

TEST(NotchedLaptopsTest, AModeWithoutTheStripBesideTheHousingHasNone)
{
    for (const auto& pixels : {QSize(3024, 1890), QSize(1512, 982), QSize(1964, 3024), QSize(3456, 2234)})
        EXPECT_EQ(housingSize(u"apple,j314s"_qs, u"eDP-1"_qs, pixels), std::nullopt);
}

TEST(NotchedLaptopsTest, AnotherModelHasNone)
{
    for (const auto& model : {u"apple,j313"_qs, u"apple,j314"_qs, u"APPLE,J314S"_qs, QString()})
        EXPECT_EQ(housingSize(model, u"eDP-1"_qs, {3024, 1964}), std::nullopt);
}

TEST_F(MachineModelTest, IsTheFirstOfTheDeviceTreesNames)
{
    const char names[] = "apple,j314s\0apple,t6000\0apple,arm-platform";
    writeDeviceTree(QByteArray(names, sizeof names));
    writeDmi("Some Laptop\n");
    EXPECT_EQ(model(), u"apple,j314s"_qs);
}

TEST_F(MachineModelTest, IsTheDmiProductNameWhereThereIsNoDeviceTree)
{
    writeDmi("Some Laptop 15\n");
    EXPECT_EQ(model(), u"Some Laptop 15"_qs);
}

TEST_F(MachineModelTest, AnEmptyDeviceTreeIsAsGoodAsNone)
{
    writeDeviceTree(QByteArray(1, '\0'));
    writeDmi("Some Laptop\n");
    EXPECT_EQ(model(), u"Some Laptop"_qs);
}

TEST_F(MachineModelTest, IsEmptyWhereNothingTellsIt)
{
    EXPECT_EQ(model(), QString());
}
