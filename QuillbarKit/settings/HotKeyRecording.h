#pragma once

#include <QObject>
#include <QtQmlIntegration>

class GlobalHotKeys;
class QKeyEvent;
class QuillbarSettings;

/// Captures a new keyboard shortcut for the clipboard from the keyboard. While it records, no key press
/// reaches anything else in the program, not even a shortcut of its windows. Main thread only.
class HotKeyRecording : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application controller")
    Q_PROPERTY(bool recording READ isRecording NOTIFY recordingChanged)

public:
    /// Both must outlive this object.
    HotKeyRecording(const GlobalHotKeys& hotKeys, QuillbarSettings& settings, QObject* parent = nullptr);

    bool isRecording() const { return m_isRecording; }

    /// Records until a combination with at least one modifier is pressed, which is then stored, or Escape,
    /// which changes nothing. Presses of other keys are ignored.
    Q_INVOKABLE void start();
    Q_INVOKABLE void stop();

    /// Takes key presses away from the program; installed while it records.
    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void recordingChanged();

private:
    void keyPressed(const QKeyEvent& event);

    const GlobalHotKeys& m_hotKeys;
    QuillbarSettings& m_settings;
    bool m_isRecording = false;
};
