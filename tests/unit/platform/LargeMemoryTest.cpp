#include "platform/linux/LargeMemory.h"

#include <QByteArray>
#include <QString>

#include <gtest/gtest.h>

TEST(LargeMemoryTest, NothingIsLeft)
{
    QByteArray bytes(qsizetype{20} << 20, 'x');
    LargeMemory::release(bytes);
    EXPECT_TRUE(bytes.isNull());
    QString text(qsizetype{20} << 20, u'x');
    LargeMemory::release(text);
    EXPECT_TRUE(text.isNull());
}

TEST(LargeMemoryTest, WhatAnotherHoldsStaysWhole)
{
    const QByteArray kept(qsizetype{20} << 20, 'x');
    QByteArray shared = kept;
    LargeMemory::release(shared);
    EXPECT_TRUE(shared.isNull());
    EXPECT_EQ(kept, QByteArray(qsizetype{20} << 20, 'x'));
}

TEST(LargeMemoryTest, SmallAndEmptyOnesGoToo)
{
    QByteArray bytes("a");
    LargeMemory::release(bytes);
    EXPECT_TRUE(bytes.isNull());
    LargeMemory::release(bytes);
    EXPECT_TRUE(bytes.isNull());
}
