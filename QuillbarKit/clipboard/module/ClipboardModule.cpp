#include "clipboard/module/ClipboardModule.h"

#include "settings/QuillbarSettings.h"

ModuleView ClipboardModule::makeExpandedView() const
{
    return ModuleView::named(QStringLiteral("ClipboardExpandedView"),
                             {{QStringLiteral("list"), QVariant::fromValue(&m_list)},
                              {QStringLiteral("settings"), QVariant::fromValue(&m_settings)}});
}
