#pragma once

#include "platform/StatusItem.h"

#include <algorithm>
#include <utility>

/// A bar that a test clicks in. Handlers run at once.
class FakeStatusItem final : public StatusItem
{
public:
    QImage image;
    QString title;
    QList<StatusMenuEntry> menu;
    std::optional<ScreenRect> frame;
    bool isInstalled = false;
    bool isMenuOpen = false;
    int menusSet = 0;

    void install(const QImage& given, const QString& givenTitle) override
    {
        image = given;
        title = givenTitle;
        isInstalled = true;
    }
    void setMenu(QList<StatusMenuEntry> given) override
    {
        menu = std::move(given);
        ++menusSet;
    }
    void setClickHandler(std::function<void()> handler) override { m_handler = std::move(handler); }
    std::optional<ScreenRect> frameOnScreen() const override { return frame; }

    void leftClick() const
    {
        if (m_handler)
            m_handler();
    }
    void rightClick() { isMenuOpen = true; }

    /// The entry of that title; a test that names another one ends here.
    const StatusMenuEntry& entry(const QString& wanted) const
    {
        const auto found = std::ranges::find(menu, wanted, &StatusMenuEntry::title);
        Q_ASSERT_X(found != menu.end(), "FakeStatusItem", "no such entry");
        return *found;
    }

    /// Chooses that entry, as a click on it does: a disabled one does nothing.
    void choose(const QString& wanted)
    {
        isMenuOpen = false;
        // The action may replace the menu.
        const auto chosen = entry(wanted);
        if (chosen.isEnabled && chosen.action)
            chosen.action();
    }

private:
    std::function<void()> m_handler;
};
