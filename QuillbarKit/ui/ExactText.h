#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickTextDocument>
#include <QString>
#include <QtQmlIntegration>

/// What is in a TextEdit, which itself tells no-break spaces as blanks and every line end as a line feed: to
/// the letter what was put in for as long as nothing is changed, and again once a change is undone. A changed
/// text keeps its no-break spaces; all its lines end in line feeds. Main thread only.
class ExactText : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickTextDocument* document MEMBER m_document REQUIRED)

public:
    using QObject::QObject;

    /// To be called once `given` was put into the document.
    Q_INVOKABLE void begin(const QString& given);
    Q_INVOKABLE QString text() const;

private:
    QString raw() const;

    QPointer<QQuickTextDocument> m_document;
    QString m_given;
    /// The document's own form of what was put in.
    QString m_untouched;
};
