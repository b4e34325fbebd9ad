// The preview of the clipboard panel's selected clip.

#include "clipboard/panel/ClipboardPanelController.h"
#include "clipboard/previews/QuickLookGeometry.h"
#include "clipboard/previews/QuickLookModel.h"
#include "support/MainQueue.h"

#include <QFileInfo>
#include <QPointer>
#include <QQuickItem>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {
/// How long the window waits unseen for what it shows, so that it does not jump to another size.
constexpr double revealSeconds = 0.25;
} // namespace

bool ClipboardPanelController::canQuickLookSelection() const
{
    if (!m_model || !m_window || !m_window->isKey() || m_model->isEditingAnyClip())
        return false;
    const auto* focused = m_window->activeFocusItem();
    if (focused && focused->flags().testFlag(QQuickItem::ItemAcceptsInputMethod))
        return false;
    const auto clip = m_model->selectedClip();
    return clip && (clip->kind == Clip::Kind::Image || clip->kind == Clip::Kind::File);
}

void ClipboardPanelController::toggleQuickLook()
{
    if (m_quickLookActive)
        endQuickLook();
    else if (isOpen() && prepareQuickLookItems())
        showQuickLook();
}

bool ClipboardPanelController::prepareQuickLookItems()
{
    const auto clip = m_model->selectedClip();
    if (!clip)
        return false;
    QStringList items;
    switch (clip->kind) {
    case Clip::Kind::Text:
        return false;
    case Clip::Kind::Image:
        if (!clip->imageData)
            return false;
        if (const auto path = writeTempImage(clip->imageData->bytes(), clip->uuid))
            items.append(*path);
        break;
    case Clip::Kind::File:
        std::ranges::copy_if(clip->filePaths, std::back_inserter(items),
                             [](const QString& path) { return QFileInfo::exists(path); });
        break;
    }
    if (items.isEmpty())
        return false;
    m_previewURLs = items;
    return true;
}

std::optional<QString> ClipboardPanelController::writeTempImage(const QByteArray& data, const QUuid& uuid)
{
    return m_tempDir.write(uuid.toString(QUuid::WithoutBraces).toUpper() + QStringLiteral(".png"), data);
}

void ClipboardPanelController::showQuickLook()
{
    m_quickLookActive = true;
    m_quickLookWindow =
        std::make_unique<ClipboardPanelWindow>(m_services.windowServer, QStringLiteral("Quillbar Preview"));
    // The name of a file of ours tells nothing.
    const bool isImage = m_model->selectedClip()->kind == Clip::Kind::Image;
    m_quickLookModel = new QuickLookModel(
        {m_services.imageCodec, m_services.model.mainQueue, m_services.quickLookQueue}, m_previewURLs,
        isImage ? QStringLiteral("Image") : QString(), QuickLookGeometry::longestSide(m_screenFrame),
        m_window->effectiveDevicePixelRatio(), m_quickLookWindow.get());
    auto* view = m_services.makeQuickLookView(*m_quickLookModel);
    connect(view, SIGNAL(closeRequested()), this, SLOT(endQuickLook()));
    m_quickLookWindow->setContentView(view);
    m_quickLookWindow->setFrame(QuickLookGeometry::factsFrame(m_screenFrame), 0);
    connect(m_quickLookModel, &QuickLookModel::changed, this, &ClipboardPanelController::fitQuickLook);
    view->forceActiveFocus();
    m_quickLookWindow->makeKeyAndOrderFront();
    revealQuickLookInTime();
}

void ClipboardPanelController::fitQuickLook()
{
    switch (m_quickLookModel->state()) {
    case QuickLookModel::Loading:
        return;
    case QuickLookModel::Picture:
        m_quickLookWindow->setFrame(
            QuickLookGeometry::pictureFrame(m_screenFrame, m_quickLookModel->pictureSize()), 1);
        return;
    case QuickLookModel::Text:
        m_quickLookWindow->setFrame(QuickLookGeometry::textFrame(m_screenFrame), 1);
        return;
    case QuickLookModel::Facts:
        m_quickLookWindow->setFrame(QuickLookGeometry::factsFrame(m_screenFrame), 1);
        return;
    }
}

void ClipboardPanelController::revealQuickLookInTime()
{
    m_services.model.mainQueue.asyncAfter(revealSeconds,
                                          WorkItem::make([window = QPointer(m_quickLookWindow.get())] {
                                              if (window)
                                                  window->setOpacity(1);
                                          }));
}

void ClipboardPanelController::quickLookDidResignKey()
{
    // Whether it is the panel that has the keyboard now is told next.
    m_services.model.mainQueue.async([self = QPointer(this), window = QPointer(m_quickLookWindow.get())] {
        if (!self || !window || window != self->m_quickLookWindow.get() || window->isKey())
            return;
        self->closeQuickLook();
        if (self->m_window && !self->m_window->isKey())
            self->windowDidResignKey();
    });
}

void ClipboardPanelController::endQuickLook()
{
    closeQuickLook();
    if (isOpen())
        m_window->makeKeyAndOrderFront();
}

void ClipboardPanelController::closeQuickLook()
{
    m_quickLookActive = false;
    m_previewURLs.clear();
    if (!m_quickLookWindow)
        return;
    // It lives a little longer, and what it reads may still arrive.
    m_quickLookModel->disconnect(this);
    m_quickLookModel = nullptr;
    m_quickLookWindow->resignKey();
    m_quickLookWindow->hide();
    // It may be handling the very key that closes it.
    m_services.model.mainQueue.async([window = std::shared_ptr(std::move(m_quickLookWindow))] {});
}

void ClipboardPanelController::cleanupTempFiles()
{
    m_tempDir.remove();
}
