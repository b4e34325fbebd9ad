#include "unit/clipboard/ClipboardPanelModelFixture.h"

#include <QQmlComponent>
#include <QQmlEngine>

void qml_register_types_Quillbar();

namespace {
using ClipboardPanelModelQmlTest = ClipboardPanelModelFixture;

TEST_F(ClipboardPanelModelQmlTest, AViewShowsRowsBindsToTheValuesAndCallsTheOperations)
{
    copiedAll({QStringLiteral("first"), QStringLiteral("second"), QStringLiteral("third")});
    const auto board = boardOf(QStringLiteral("Work"), {QStringLiteral("first")});
    const auto snippet = snippets.add(QStringLiteral("title"), {});
    qml_register_types_Quillbar();
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(R"(
        import QtQml
        import Quillbar
        Instantiator {
            id: list
            required property ClipboardPanelModel panel
            property int made: 0
            property string board: panel.boardFilter.boardID
            property bool showsPinned: panel.boardFilter.kind === BoardFilterKind.Pinned
            property bool editsSnippet: panel.snippetEditing.kind === SnippetEditKind.Existing
            property string snippet: panel.snippetEditing.snippetID
            model: panel.rows
            delegate: QtObject {
                required property string displayText
                required property string uuid
                required property int kind
                required property bool pinned
                required property int index
                property bool isText: kind === ClipRowsModel.Text
                property bool edited: list.panel.editingClip === uuid
            }
            onObjectAdded: ++made
            function texts() {
                let texts = []
                for (let row = 0; row < count; ++row)
                    texts.push(objectAt(row).displayText + (objectAt(row).edited ? "*" : "")
                               + (objectAt(row).pinned ? "!" : "") + (objectAt(row).isText ? "" : "?"))
                return texts.join(" ")
            }
            function search(text) { panel.query = text }
            function pinned() { panel.show(BoardFilterKind.Pinned) }
        })",
                      QUrl());
    const std::unique_ptr<QObject> view(
        component.createWithInitialProperties({{QStringLiteral("panel"), QVariant::fromValue(&model)}}));
    ASSERT_TRUE(view) << component.errorString().toStdString();
    const auto texts = [&] {
        QVariant result;
        QMetaObject::invokeMethod(view.get(), "texts", Q_RETURN_ARG(QVariant, result));
        return result.toString();
    };
    EXPECT_EQ(texts(), u"third second first");

    model.beginEditingRow(1);
    watcher->togglePin(clip(QStringLiteral("first")));
    queue.runUntilIdle();
    EXPECT_EQ(texts(), u"first! third second*");
    // No row was made anew.
    EXPECT_EQ(view->property("made").toInt(), 3);

    QMetaObject::invokeMethod(view.get(), "search", Q_ARG(QVariant, QStringLiteral("RD")));
    EXPECT_EQ(texts(), u"third");
    QMetaObject::invokeMethod(view.get(), "search", Q_ARG(QVariant, QString()));
    QMetaObject::invokeMethod(view.get(), "pinned");
    EXPECT_TRUE(view->property("showsPinned").toBool());
    EXPECT_EQ(texts(), u"first!");

    model.showBoard(board.toString());
    EXPECT_EQ(view->property("board").toString(), board.toString(QUuid::WithoutBraces));
    model.showBoard(QStringLiteral("no board"));
    EXPECT_EQ(model.selectedBoardID(), board);
    model.activateRow(0);
    model.activateRow(1);
    EXPECT_EQ(activated.size(), 1);

    model.editSnippet(snippet.id.toString(QUuid::WithoutBraces));
    EXPECT_TRUE(view->property("editsSnippet").toBool());
    EXPECT_EQ(view->property("snippet").toString(), snippet.id.toString(QUuid::WithoutBraces));
    model.beginSnippet();
    EXPECT_EQ(model.snippetEditing(), SnippetEdit::newSnippet());
    model.closeSnippetEditor();
    EXPECT_EQ(model.snippetEditing(), SnippetEdit::none());
}
} // namespace
