#include "clipboard/rows/ClipLinkPreview.h"

#include <QUrl>

ClipLinkPreview::ClipLinkPreview(QObject* parent) : QObject(parent)
{
    connect(this, &ClipLinkPreview::inputsChanged, this, &ClipLinkPreview::ask);
}

void ClipLinkPreview::setContent(ClipboardPanelContent* content)
{
    m_content = content;
    Q_EMIT inputsChanged();
}

void ClipLinkPreview::setUrl(const QString& url)
{
    m_url = url;
    Q_EMIT inputsChanged();
}

void ClipLinkPreview::ask()
{
    if (!m_content || !m_content->model() || m_url == m_asked)
        return;
    m_asked = m_url;
    set({}, {});
    const QUrl page(m_url);
    if (!page.isValid() || page.isEmpty())
        return;
    QCoro::connect(m_content->model()->linkPreviews().preview(page), this,
                   [this, url = m_url](const LinkPreview& preview) { take(url, preview); });
}

void ClipLinkPreview::take(const QString& url, const LinkPreview& preview)
{
    if (url != m_asked || (!preview.title && !preview.faviconPNG))
        return;
    set(preview.title.value_or(QString()), {});
    if (!preview.faviconPNG || !m_content || !m_content->pictures())
        return;
    m_content->pictures()->findIcon(*preview.faviconPNG, iconPixel, this, [this, url](const QImage& image) {
        if (url == m_asked)
            set(m_title, image);
    });
}

void ClipLinkPreview::set(const QString& title, const QImage& icon)
{
    m_title = title;
    m_icon = icon;
    Q_EMIT found();
}
