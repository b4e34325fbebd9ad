#include <QGuiApplication>

int main(int argc, char* argv[])
{
    QGuiApplication application(argc, argv);
    return QGuiApplication::exec();
}
