#pragma once

#include "clipboard/boards/BoardFilter.h"
#include "clipboard/rows/ClipRowsModel.h"

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQmlIntegration>

/// What the clipboard's views make of clips, numbers and filters. Pure functions, for any thread.
class ClipViewTexts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// As much of a text as a row can show, in characters.
    static constexpr int previewCharacters = 300;

    /// The symbol of a clip. A text that begins as a web address is one only where `marksLinks`.
    Q_INVOKABLE static QString glyph(ClipRowsModel::Kind kind, const QString& text, int fileCount,
                                     bool marksLinks);
    /// The beginning of a text, without the blank lines before it: layout costs what it is given, and a clip
    /// may be a whole book.
    Q_INVOKABLE static QString plainTextPreview(const QString& text);
    /// "3 items", also for one.
    Q_INVOKABLE static QString count(int count) { return QStringLiteral("%1 items").arg(count); }
    /// What stands where the query or the filter leaves no row.
    Q_INVOKABLE static QString emptyListMessage(const QString& query,
                                                BoardFilterKinds::BoardFilterKind filter);
    /// The colour of a canonical hex text; transparent for any other text.
    Q_INVOKABLE static QColor swatch(const QString& hex);
};
