#pragma once

#include "clipboard/module/ClipboardList.h"
#include "shell/NotchModule.h"

class QuillbarSettings;

/// The clipboard history in the panel: a list that copies what is tapped.
class ClipboardModule final : public NotchModule
{
public:
    /// All of them outlive the module and its views.
    ClipboardModule(ClipboardWatcher& watcher, QuillbarSettings& settings, ClipThumbnailCache& thumbnails,
                    MainQueue& mainQueue)
        : m_list(watcher, thumbnails, mainQueue), m_settings(settings)
    {}

    QString id() const override { return QStringLiteral("clipboard"); }
    QString title() const override { return QStringLiteral("Clipboard"); }
    QString iconSystemName() const override { return QStringLiteral("doc.on.clipboard"); }
    bool isActive() const override { return false; }
    ModuleView makeExpandedView() const override;

private:
    /// The view changes it, the module does not.
    mutable ClipboardList m_list;
    QuillbarSettings& m_settings;
};
