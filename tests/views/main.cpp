#include <QGuiApplication>
#include <QQuickWindow>
#include <gmock/gmock.h>

int main(int argc, char* argv[])
{
    // Drawn as on a desktop, but nowhere.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication application(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
