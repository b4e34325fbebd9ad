#pragma once

#include "media/MediaSource.h"

#include <QList>

/// A source without a player: it keeps what it is told and delivers what the test emits.
class FakeMediaSource final : public MediaSource
{
public:
    void start() override {}
    void stop() override {}
    void send(MediaCommand command) override { m_sentCommands.append(command); }
    void seek(double seconds) override { m_seekedTo.append(seconds); }
    void setShuffle(bool enabled) override { m_shuffleSet.append(enabled); }
    void setRepeat(RepeatMode mode) override { m_repeatSet.append(mode); }
    void setLoved(bool loved) override { m_lovedSet.append(loved); }

    void emit(const std::optional<NowPlaying>& snapshot)
    {
        if (onChange)
            onChange(snapshot);
    }

    const QList<MediaCommand>& sentCommands() const { return m_sentCommands; }
    const QList<double>& seekedTo() const { return m_seekedTo; }
    const QList<bool>& shuffleSet() const { return m_shuffleSet; }
    const QList<RepeatMode>& repeatSet() const { return m_repeatSet; }
    const QList<bool>& lovedSet() const { return m_lovedSet; }

private:
    QList<MediaCommand> m_sentCommands;
    QList<double> m_seekedTo;
    QList<bool> m_shuffleSet;
    QList<RepeatMode> m_repeatSet;
    QList<bool> m_lovedSet;
};
