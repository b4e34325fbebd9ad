#include "clipboard/previews/QuickLookModel.h"

#include "clipboard/previews/QuickLookReader.h"
#include "support/MainQueue.h"
#include "support/SerialQueue.h"

#include <QFileInfo>
#include <QLocale>
#include <QPointer>

#include <cmath>
#include <utility>

QuickLookModel::QuickLookModel(Services services, QStringList paths, QString title, double maxPoints,
                               double scale, QObject* parent)
    : QObject(parent), m_services(std::move(services)), m_paths(std::move(paths)), m_title(std::move(title)),
      m_maxPixels(static_cast<int>(std::ceil(maxPoints * scale))), m_scale(scale)
{
    show(0);
}

QuickLookModel::State QuickLookModel::state() const
{
    if (m_isLoading)
        return Loading;
    switch (m_content.kind) {
    case QuickLookContent::Kind::Picture:
        return Picture;
    case QuickLookContent::Kind::Text:
        return Text;
    case QuickLookContent::Kind::Facts:
        break;
    }
    return Facts;
}

QString QuickLookModel::title() const
{
    return m_title.isEmpty() ? QFileInfo(m_paths[m_index]).fileName() : m_title;
}

QString QuickLookModel::position() const
{
    return m_paths.size() < 2 ? QString() : QStringLiteral("%1 of %2").arg(m_index + 1).arg(m_paths.size());
}

QString QuickLookModel::summary() const
{
    QStringList parts;
    if (!m_content.typeName.isEmpty())
        parts.append(m_content.typeName);
    if (!m_content.pixelSize.isEmpty()) {
        parts.append(
            QStringLiteral("%1 × %2").arg(m_content.pixelSize.width()).arg(m_content.pixelSize.height()));
    }
    if (m_content.byteCount)
        parts.append(byteCount());
    return parts.join(QStringLiteral(", "));
}

QString QuickLookModel::byteCount() const
{
    return m_content.byteCount
               ? QLocale().formattedDataSize(*m_content.byteCount, 1, QLocale::DataSizeSIFormat)
               : QString();
}

QString QuickLookModel::modified() const
{
    return m_content.modified.isValid() ? QLocale().toString(m_content.modified, QLocale::ShortFormat)
                                        : QString();
}

void QuickLookModel::showNext()
{
    if (!isLast())
        show(m_index + 1);
}

void QuickLookModel::showPrevious()
{
    if (!isFirst())
        show(m_index - 1);
}

void QuickLookModel::show(qsizetype index)
{
    m_index = index;
    m_isLoading = true;
    m_content = {};
    Q_EMIT changed();
    m_services.queue->async([&codec = m_services.codec, &mainQueue = m_services.mainQueue,
                             self = QPointer(this), path = m_paths[index], maxPixels = m_maxPixels, index] {
        auto content = QuickLookReader::read(path, codec, maxPixels);
        mainQueue.async([self, content = std::move(content), index] {
            // The preview may be gone or at another file by now.
            if (!self || !self->m_isLoading || self->m_index != index)
                return;
            self->m_content = content;
            self->m_isLoading = false;
            Q_EMIT self->changed();
        });
    });
}
