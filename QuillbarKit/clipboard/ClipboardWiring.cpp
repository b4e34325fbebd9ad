// The controller's share of the clipboard.

#include "AppDelegate.h"

namespace {
QSet<QString> setOf(const QStringList& list)
{
    return {list.begin(), list.end()};
}
} // namespace

void AppDelegate::launchClipboard()
{
    m_snippetStore.load();
    m_clipboardWatcher.setEnabled(m_settings.clipboardEnabled());
    m_clipboardWatcher.setMaxItems(m_settings.clipboardMaxItems());
    m_clipboardWatcher.setExcludedBundleIDs(setOf(m_settings.clipboardExcludedBundleIDs()));
    if (m_settings.clipboardEnabled())
        m_clipboardWatcher.start();
}

void AppDelegate::subscribeClipboardSettings()
{
    onEach(m_settings, &QuillbarSettings::clipboardEnabled, &QuillbarSettings::clipboardEnabledChanged,
           [this](bool enabled) {
               m_clipboardWatcher.setEnabled(enabled);
               if (!enabled) {
                   // Whoever turns the history off wants it gone.
                   m_clipboardWatcher.stop();
                   m_clipboardWatcher.clear();
               } else if (!m_clipboardWatcher.isRunning()) {
                   m_clipboardWatcher.start();
               }
           });
    onEach(m_settings, &QuillbarSettings::clipboardMaxItems, &QuillbarSettings::clipboardMaxItemsChanged,
           [this](int maxItems) { m_clipboardWatcher.setMaxItems(maxItems); });
    onChange(m_settings, &QuillbarSettings::clipboardExcludedBundleIDs,
             &QuillbarSettings::clipboardExcludedBundleIDsChanged, [this](const QStringList& bundleIDs) {
                 m_clipboardWatcher.setExcludedBundleIDs(setOf(bundleIDs));
             });
}
