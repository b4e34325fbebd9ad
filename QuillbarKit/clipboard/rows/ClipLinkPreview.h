#pragma once

#include "clipboard/panel/ClipboardPanelContent.h"

#include <QImage>
#include <QObject>
#include <QString>
#include <QVariant>
#include <QtQmlIntegration>

struct LinkPreview;

/// What a row shows of the page behind a link: nothing until the page gave a title or an icon. Asks again
/// when it is given another link. Main thread only.
class ClipLinkPreview : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(ClipboardPanelContent* content READ content WRITE setContent NOTIFY inputsChanged)
    Q_PROPERTY(QString url READ url WRITE setUrl NOTIFY inputsChanged)
    /// Empty for none.
    Q_PROPERTY(QString title READ title NOTIFY found)
    /// A QImage; null for none.
    Q_PROPERTY(QVariant icon READ icon NOTIFY found)

public:
    /// Of the icon's side, in points.
    static constexpr int iconPixel = 16;

    explicit ClipLinkPreview(QObject* parent = nullptr);

    ClipboardPanelContent* content() const { return m_content; }
    void setContent(ClipboardPanelContent* content);
    const QString& url() const { return m_url; }
    void setUrl(const QString& url);
    const QString& title() const { return m_title; }
    QVariant icon() const { return m_icon; }

Q_SIGNALS:
    void inputsChanged();
    void found();

private:
    void ask();
    void take(const QString& url, const LinkPreview& preview);
    void set(const QString& title, const QImage& icon);

    QPointer<ClipboardPanelContent> m_content;
    QString m_url;
    /// What the answer under way, or the one that came, is for.
    QString m_asked;
    QString m_title;
    QImage m_icon;
};
