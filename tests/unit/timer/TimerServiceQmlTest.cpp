#include "TimerServiceFixture.h"

#include <QQmlComponent>
#include <QQmlEngine>

void qml_register_types_Quillbar();

namespace {
using TimerServiceQmlTest = TimerServiceFixture;
} // namespace

TEST_F(TimerServiceQmlTest, AViewNamesModesAndPhasesBindsToTheValuesAndCallsTheOperations)
{
    qml_register_types_Quillbar();
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(R"(
        import QtQml
        import Quillbar
        QtObject {
            required property TimerService service
            property string text: service.mode === TimerMode.Pomodoro
                ? (service.phase === PomodoroPhase.Rest ? "rest " : "focus ") + service.completedFocusRounds
                : "other"
            property int left: service.remaining
            property bool running: service.isRunning
            Component.onCompleted: {
                service.workMinutes = 50
                service.setMode(TimerMode.Pomodoro)
                service.add(60)
                service.startOrPause()
            }
        })",
                      QUrl());
    const std::unique_ptr<QObject> view(
        component.createWithInitialProperties({{QStringLiteral("service"), QVariant::fromValue(&service)}}));
    ASSERT_TRUE(view) << component.errorString().toStdString();
    EXPECT_EQ(view->property("text").toString(), u"focus 0");
    EXPECT_EQ(view->property("left").toInt(), 3060);
    EXPECT_TRUE(view->property("running").toBool());
    service.skip();
    EXPECT_EQ(view->property("text").toString(), u"rest 1");
    queue.advance(1);
    EXPECT_EQ(view->property("left").toInt(), 299);
}
