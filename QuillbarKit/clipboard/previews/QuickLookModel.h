#pragma once

#include "clipboard/previews/QuickLookContent.h"

#include <QObject>
#include <QSizeF>
#include <QStringList>
#include <QVariant>
#include <QtQmlIntegration>

#include <memory>

class ImageCodec;
class MainQueue;
class SerialQueue;

/// The files of one preview and what is shown of the one in front. Main thread only; files are read and
/// decoded on a queue of their own.
class QuickLookModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the clipboard panel's controller")
    Q_PROPERTY(QuickLookModel::State state READ state NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    /// "2 of 3"; empty for a single file.
    Q_PROPERTY(QString position READ position NOTIFY changed)
    Q_PROPERTY(bool isFirst READ isFirst NOTIFY changed)
    Q_PROPERTY(bool isLast READ isLast NOTIFY changed)
    /// What there is to know in one line: "PNG image, 640 × 480, 12 kB".
    Q_PROPERTY(QString summary READ summary NOTIFY changed)
    Q_PROPERTY(QString typeName READ typeName NOTIFY changed)
    /// Empty where there is none.
    Q_PROPERTY(QString byteCount READ byteCount NOTIFY changed)
    Q_PROPERTY(QString modified READ modified NOTIFY changed)
    Q_PROPERTY(QString symbol READ symbol NOTIFY changed)
    /// A QImage, which views have no name for.
    Q_PROPERTY(QVariant picture READ picture NOTIFY changed)
    /// Of the picture, in points, never larger than its pixels.
    Q_PROPERTY(QSizeF pictureSize READ pictureSize NOTIFY changed)
    /// Whether something shows through the picture.
    Q_PROPERTY(bool isTransparent READ isTransparent NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(bool isCode READ isCode NOTIFY changed)
    Q_PROPERTY(bool isCut READ isCut NOTIFY changed)

public:
    enum State { Loading, Picture, Text, Facts };
    Q_ENUM(State)

    struct Services
    {
        const ImageCodec& codec;
        MainQueue& mainQueue;
        std::shared_ptr<SerialQueue> queue;
    };

    /// Begins with the first of `paths`, of which there is at least one. `title` stands in the place of the
    /// files' names unless it is empty. Pictures are decoded for `maxPoints` on the longer side on a screen
    /// of that scale.
    QuickLookModel(Services services, QStringList paths, QString title, double maxPoints, double scale,
                   QObject* parent = nullptr);

    State state() const;
    QString title() const;
    QString position() const;
    bool isFirst() const { return m_index == 0; }
    bool isLast() const { return m_index + 1 == m_paths.size(); }
    QString summary() const;
    QString typeName() const { return m_content.typeName; }
    QString byteCount() const;
    QString modified() const;
    QString symbol() const { return m_content.symbol; }
    QVariant picture() const { return m_content.picture; }
    QSizeF pictureSize() const { return QSizeF(m_content.picture.size()) / m_scale; }
    bool isTransparent() const { return m_content.picture.hasAlphaChannel(); }
    QString text() const { return m_content.text; }
    bool isCode() const { return m_content.isCode; }
    bool isCut() const { return m_content.isCut; }

    /// The next file or the one before; the last and the first stay.
    Q_INVOKABLE void showNext();
    Q_INVOKABLE void showPrevious();

Q_SIGNALS:
    void changed();

private:
    void show(qsizetype index);

    Services m_services;
    const QStringList m_paths;
    const QString m_title;
    const int m_maxPixels;
    const double m_scale;
    qsizetype m_index = 0;
    bool m_isLoading = true;
    QuickLookContent m_content;
};
