#pragma once

#include "platform/Screens.h"

class MainQueue;
class QScreen;
class X11Connection;

/// Screens over the toolkit's displays, with the top strut of the work area as the menu bar.
class X11Screens final : public Screens
{
    Q_OBJECT

public:
    /// `connection` must be given over to this object alone.
    X11Screens(X11Connection& connection, MainQueue& mainQueue, QObject* parent = nullptr);

    QList<Screen> screens() const override;
    std::optional<Screen> mainScreen() const override;
    double menuBarThickness() const override;

private:
    struct Snapshot
    {
        QList<Screen> screens;
        std::optional<Screen> mainScreen;
        double menuBarThickness = 0;

        bool operator==(const Snapshot&) const = default;
    };

    Snapshot snapshot() const;
    Screen screenOf(const QScreen& screen) const;
    void watch(QScreen* screen);
    void announceSoon();

    X11Connection& m_connection;
    MainQueue& m_mainQueue;
    QString m_machineModel;
    uint32_t m_workAreaAtom = 0;
    uint32_t m_desktopAtom = 0;
    Snapshot m_announced;
    bool m_isAnnouncing = false;
};
