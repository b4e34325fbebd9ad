#pragma once

#include "support/ScreenRect.h"

#include <QImage>
#include <QList>
#include <QString>

#include <functional>
#include <optional>

/// One line of the status item's menu.
struct StatusMenuEntry
{
    /// Empty for a separator, which is all that a separator is.
    QString title;
    /// The character that chooses the entry together with Command; empty for none.
    QString keyEquivalent;
    /// Whether it has a check mark; none for an entry that is never checked.
    std::optional<bool> isChecked;
    bool isEnabled = true;
    std::function<void()> action;

    bool isSeparator() const { return title.isEmpty(); }
};

/// This program's place in the desktop's bar: an icon that is clicked, and its menu. Main thread only.
class StatusItem
{
public:
    virtual ~StatusItem() = default;

    /// Puts the icon into the bar, now or as soon as the desktop has one that takes it, and again whenever
    /// the bar comes back. Of `image`, a square, only the coverage counts: the colour is the bar's. `title`
    /// is the tooltip and what assistive software reads.
    virtual void install(const QImage& image, const QString& title) = 0;

    /// What a click with the right button shows. An action runs on a later turn of the main queue.
    virtual void setMenu(QList<StatusMenuEntry> menu) = 0;

    /// Called for a click with the left button, on a later turn of the main queue. Bars that know one kind of
    /// click only show the menu for it.
    virtual void setClickHandler(std::function<void()> handler) = 0;

    /// Where the icon is, or, where the bar doesn't tell, about where it was last clicked. None before that.
    virtual std::optional<ScreenRect> frameOnScreen() const = 0;
};
