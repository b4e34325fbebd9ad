#pragma once

#include "settings/Enumerations.h"
#include "settings/Setting.h"
#include "support/SrgbColor.h"

#include <QColor>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QtQmlIntegration>

#include <optional>

/// The one store of the user's preferences, loaded when it is made and written back value by value. Every set
/// publishes, also one of an equal value, and only then writes. Main thread only.
///
/// A stored value of a wrong type counts as missing; what takes its place is not written until the preference
/// next changes.
///
/// To add a preference, add its row here.
class QuillbarSettings : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application controller")
    /// The colour that accentColorHex writes, for the views.
    Q_PROPERTY(QColor accentColor READ accentQColor NOTIFY accentColorHexChanged)
    /// The clipboard's keyboard shortcut as it is written, such as "⌘⇧V".
    Q_PROPERTY(
        QString clipboardHotKeyDisplay READ clipboardHotKeyDisplay NOTIFY clipboardHotKeyDisplayChanged)

public:
    /// The ids of all modules, in the order that a new user finds.
    static const QStringList& allModuleIDs();
    /// The V key, as the platform's virtual key code.
    static constexpr int defaultClipboardHotKeyCode = 9;
    /// Command and Shift, as Carbon modifier bits.
    static constexpr int defaultClipboardHotKeyModifiers = 768;
    static QString defaultAccentColorHex() { return QStringLiteral("#739EFC"); }

    /// `defaults` must outlive this object.
    explicit QuillbarSettings(UserDefaults& defaults, QObject* parent = nullptr);

    /// What accentColorHex writes, or the default colour where it writes none.
    SrgbColor accentColor() const;

    /// The folder that pictures of the mirror go to: the chosen one, else the user's desktop.
    QUrl selfieSaveFolderURL() const;

    QString clipboardHotKeyDisplay() const;

    /// Publishes the code first, then the modifiers.
    Q_INVOKABLE void resetClipboardHotKey();

    /// Where `items` is out of range, publishes it all the same, and then the nearest that is allowed; only
    /// that one is written.
    void setClipboardMaxItems(const int& items);

    Q_INVOKABLE bool isModuleEnabled(const QString& id) const;

    /// Moves a module within moduleOrder. `to` is the index to insert at as drag and drop counts it, before
    /// the removal. Nothing happens when `from` is no index, `to` is beyond the end, or they are equal;
    /// otherwise the list is published twice, without the module and then with it.
    Q_INVOKABLE void moveModule(int from, int to);

    /// The stored order without unknown ids and repetitions; the modules that it lacks come last, so that one
    /// which is new to the user does not disturb the order they chose.
    static QStringList migrateModuleOrder(const std::optional<QStringList>& stored);

Q_SIGNALS:
    /// With each publication of the code and of the modifiers.
    void clipboardHotKeyDisplayChanged();

private:
    QColor accentQColor() const;
    static QList<int> atLeastOnePreset(const std::optional<QList<int>>& stored);
    static QStringList atLeastThreeModules(const std::optional<QStringList>& stored);
    static int clampedMaxItems(const std::optional<int>& stored);

    template <typename T>
    void publish(T& member, T value, void (QuillbarSettings::*changed)())
    {
        member = std::move(value);
        Q_EMIT(this->*changed)();
    }

    UserDefaults& m_defaults;

    QUILLBAR_SETTING(Settings::ModuleSwitchMode, moduleSwitchMode, setModuleSwitchMode,
                     Setting::orDefault(Settings::ModuleSwitchMode::Click));
    QUILLBAR_SETTING(bool, mirrorHoverEnabled, setMirrorHoverEnabled, Setting::orDefault(false));
    QUILLBAR_SETTING(Settings::DropSource, dropSource, setDropSource,
                     Setting::orDefault(Settings::DropSource::Recent));
    /// Empty for the user's desktop.
    QUILLBAR_SETTING(QString, selfieSaveFolderPath, setSelfieSaveFolderPath, Setting::orDefault(QString()));
    QUILLBAR_SETTING(bool, calendarShowUpcomingWhenEmpty, setCalendarShowUpcomingWhenEmpty,
                     Setting::orDefault(true));
    QUILLBAR_SETTING(Settings::MediaArtPosition, mediaArtPosition, setMediaArtPosition,
                     Setting::orDefault(Settings::MediaArtPosition::Left));
    QUILLBAR_SETTING(Settings::MediaArtSize, mediaArtSize, setMediaArtSize,
                     Setting::orDefault(Settings::MediaArtSize::Medium));
    QUILLBAR_SETTING(Settings::VitalsStyle, vitalsStyle, setVitalsStyle,
                     Setting::orDefault(Settings::VitalsStyle::Gauges));
    QUILLBAR_SETTING(Settings::ShelfViewMode, shelfViewMode, setShelfViewMode,
                     Setting::orDefault(Settings::ShelfViewMode::List));
    QUILLBAR_SETTING(bool, calendarMeetingCountdown, setCalendarMeetingCountdown, Setting::orDefault(true));
    QUILLBAR_SETTING(bool, timerSoundEnabled, setTimerSoundEnabled, Setting::orDefault(true));
    /// In minutes.
    QUILLBAR_SETTING(QList<int>, timerPresets, setTimerPresets, atLeastOnePreset);
    /// In minutes; whoever counts with it sees to its range.
    QUILLBAR_SETTING(int, pomodoroWork, setPomodoroWork, Setting::orDefault(25));
    /// In minutes, likewise.
    QUILLBAR_SETTING(int, pomodoroBreak, setPomodoroBreak, Setting::orDefault(5));
    QUILLBAR_SETTING(bool, clipboardEnabled, setClipboardEnabled, Setting::orDefault(true));
    QUILLBAR_SETTING(bool, clipboardHotkeyEnabled, setClipboardHotkeyEnabled, Setting::orDefault(true));
    QUILLBAR_SETTING(int, clipboardHotKeyCode, setClipboardHotKeyCode,
                     Setting::orDefault(defaultClipboardHotKeyCode));
    QUILLBAR_SETTING(int, clipboardHotKeyModifiers, setClipboardHotKeyModifiers,
                     Setting::orDefault(defaultClipboardHotKeyModifiers));
    QUILLBAR_SETTING(QStringList, clipboardExcludedBundleIDs, setClipboardExcludedBundleIDs,
                     Setting::orDefault(QStringList()));
    /// Without an order; moduleOrder has that.
    QUILLBAR_SETTING(QStringList, enabledModuleIDs, setEnabledModuleIDs, atLeastThreeModules);
    QUILLBAR_SETTING(QStringList, moduleOrder, setModuleOrder, migrateModuleOrder);
    QUILLBAR_SETTING(bool, pasteAsPlainByDefault, setPasteAsPlainByDefault, Setting::orDefault(false));
    QUILLBAR_SETTING(bool, autoPasteEnabled, setAutoPasteEnabled, Setting::orDefault(false));
    QUILLBAR_SETTING(bool, iCloudSyncEnabled, setICloudSyncEnabled, Setting::orDefault(false));
    /// As the user typed it, perhaps no colour at all.
    QUILLBAR_SETTING(QString, accentColorHex, setAccentColorHex, Setting::orDefault(defaultAccentColorHex()));
    QUILLBAR_SETTING(bool, lyricsEnabled, setLyricsEnabled, Setting::orDefault(false));
    /// From 0 to 1.
    QUILLBAR_SETTING(double, lyricsBackgroundOpacity, setLyricsBackgroundOpacity, Setting::orDefault(1.0));
    QUILLBAR_SETTING(bool, notchFrameEnabled, setNotchFrameEnabled, Setting::orDefault(false));
    QUILLBAR_SETTING(bool, notchGlass, setNotchGlass, Setting::orDefault(false));

    /// From 5 to 100.
    QUILLBAR_SETTING_WITH_SETTER(int, clipboardMaxItems, setClipboardMaxItems, clampedMaxItems);
};
