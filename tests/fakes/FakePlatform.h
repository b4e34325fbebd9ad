#pragma once

#include "fakes/FakeAlertSound.h"
#include "fakes/FakeGlobalHotKeys.h"
#include "fakes/FakeHttpSession.h"
#include "fakes/FakeImageCodec.h"
#include "fakes/FakeKeystrokes.h"
#include "fakes/FakeNowPlayingFramework.h"
#include "fakes/FakePasteboard.h"
#include "fakes/FakePointerMonitor.h"
#include "fakes/FakeScreens.h"
#include "fakes/FakeScriptRunner.h"
#include "fakes/FakeStatusItem.h"
#include "fakes/FakeWindowServer.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ManualClock.h"
#include "fakes/ManualMainQueue.h"
#include "platform/Platform.h"
#include "support/UserDefaults.h"

#include <QTemporaryDir>

/// Every port in memory, on one hand-driven clock.
struct FakePlatform
{
    ManualClock clock;
    ManualMainQueue mainQueue{clock};
    FakeScreens screens;
    FakePointerMonitor pointer;
    FakeWindowServer windowServer;
    FakeAlertSound alertSound;
    FakePasteboard pasteboard;
    FakeWorkspace workspace;
    FakeImageCodec imageCodec;
    FakeStatusItem statusItem;
    FakeGlobalHotKeys hotKeys{mainQueue};
    FakeKeystrokes keystrokes;
    FakeHttpSession httpSession;
    /// Held at first: an empty answer would have the scripts asked, on a thread that no test waits for.
    FakeNowPlayingFramework nowPlayingFramework{FakeNowPlayingFramework::Held};
    FakeScriptRunner scriptRunner;
    QTemporaryDir folder;
    UserDefaults userDefaults{folder.filePath(QStringLiteral("defaults.json"))};

    Platform ports()
    {
        return {clock,
                mainQueue,
                screens,
                pointer,
                windowServer,
                alertSound,
                pasteboard,
                workspace,
                imageCodec,
                statusItem,
                hotKeys,
                keystrokes,
                httpSession,
                nowPlayingFramework,
                scriptRunner,
                userDefaults,
                folder.filePath(QStringLiteral("support"))};
    }
};
