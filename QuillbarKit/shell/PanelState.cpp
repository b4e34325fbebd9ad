#include "shell/PanelState.h"

PanelState::PanelState(QObject* parent) : QObject(parent) {}

void PanelState::setIsOpen(bool isOpen)
{
    m_isOpen = isOpen;
    Q_EMIT isOpenChanged();
}

void PanelState::setActiveModuleID(const QString& activeModuleID)
{
    m_activeModuleID = activeModuleID;
    Q_EMIT activeModuleIDChanged();
}

void PanelState::setIsPinned(bool isPinned)
{
    m_isPinned = isPinned;
    Q_EMIT isPinnedChanged();
}

void PanelState::setComposingEvent(bool composingEvent)
{
    m_composingEvent = composingEvent;
    Q_EMIT composingEventChanged();
}

void PanelState::setContentHeight(double contentHeight)
{
    m_contentHeight = contentHeight;
    Q_EMIT contentHeightChanged();
}
