#pragma once

#include <QQuickItem>

/// Stands where the clipboard panel's view does.
class FakePanelView final : public QQuickItem
{
    Q_OBJECT
    Q_PROPERTY(bool blended MEMBER blended)
    Q_PROPERTY(bool keysAreTaken MEMBER keysAreTaken)
    Q_PROPERTY(bool keyboardIsHeld MEMBER keyboardIsHeld)

public:
    using QQuickItem::QQuickItem;

    bool blended = false;
    bool keysAreTaken = false;
    bool keyboardIsHeld = false;
    int searchFocusings = 0;
    Q_INVOKABLE void focusSearch() { ++searchFocusings; }

Q_SIGNALS:
    void closeRequested();
    void openSettingsRequested();
    void aboutRequested();
    void quitRequested();
};
