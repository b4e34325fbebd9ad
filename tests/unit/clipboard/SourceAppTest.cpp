#include "clipboard/history/SourceApp.h"

#include "fakes/FakeWorkspace.h"

#include <gtest/gtest.h>

namespace {
const auto editor = QStringLiteral("org.example.Editor");
} // namespace

TEST(SourceAppTest, NamesAnInstalledProgram)
{
    FakeWorkspace workspace;
    workspace.names[editor] = QStringLiteral("Editor");
    SourceApp source(workspace);
    EXPECT_EQ(source.name(editor), QStringLiteral("Editor"));
    EXPECT_EQ(source.name(QStringLiteral("unknown")), std::nullopt);
    EXPECT_EQ(source.name(std::nullopt), std::nullopt);
}

TEST(SourceAppTest, KeepsAnIconThatWasFound)
{
    FakeWorkspace workspace;
    SourceApp source(workspace);
    EXPECT_EQ(source.icon(editor), std::nullopt);
    QImage icon(2, 2, QImage::Format_ARGB32);
    icon.fill(Qt::red);
    workspace.icons[editor] = icon;
    EXPECT_EQ(source.icon(editor), icon) << "a program that was installed since";
    workspace.icons.clear();
    EXPECT_EQ(source.icon(editor), icon);
    EXPECT_EQ(source.icon(std::nullopt), std::nullopt);
}
