#include <QGuiApplication>
#include <gmock/gmock.h>

int main(int argc, char* argv[])
{
    // Views can be made without a display; nothing of a unit test may appear on one.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
