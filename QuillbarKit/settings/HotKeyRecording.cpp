#include "settings/HotKeyRecording.h"

#include "platform/GlobalHotKeys.h"
#include "settings/HotKeyFormatting.h"
#include "settings/QuillbarSettings.h"

#include <QCoreApplication>
#include <QKeyEvent>

HotKeyRecording::HotKeyRecording(const GlobalHotKeys& hotKeys, QuillbarSettings& settings, QObject* parent)
    : QObject(parent), m_hotKeys(hotKeys), m_settings(settings)
{}

void HotKeyRecording::start()
{
    if (m_isRecording)
        return;
    m_isRecording = true;
    QCoreApplication::instance()->installEventFilter(this);
    Q_EMIT recordingChanged();
}

void HotKeyRecording::stop()
{
    if (!m_isRecording)
        return;
    m_isRecording = false;
    QCoreApplication::instance()->removeEventFilter(this);
    Q_EMIT recordingChanged();
}

bool HotKeyRecording::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        // Sent ahead of the press: accepted, it keeps the press from becoming a shortcut.
        event->accept();
        return true;
    case QEvent::KeyPress:
        keyPressed(static_cast<const QKeyEvent&>(*event));
        return true;
    default:
        return QObject::eventFilter(watched, event);
    }
}

void HotKeyRecording::keyPressed(const QKeyEvent& event)
{
    // The key that started this may still be held.
    if (event.isAutoRepeat())
        return;
    if (event.key() == Qt::Key_Escape) {
        stop();
        return;
    }
    const auto modifiers = HotKeyFormatting::carbonModifiers(event.modifiers());
    const auto code = m_hotKeys.virtualKeyCode(event.nativeScanCode());
    if (modifiers == 0 || !code)
        return;
    m_settings.setClipboardHotKeyCode(static_cast<int>(*code));
    m_settings.setClipboardHotKeyModifiers(static_cast<int>(modifiers));
    stop();
}
