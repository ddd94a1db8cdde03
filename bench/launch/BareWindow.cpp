// The yardstick of the launch timing: a bare Qt main window, shown and painted once,
// started the same way as the application (QB_LAUNCH_PROBE set: quit after the paint).
#include "ui/LaunchProbe.h"

#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QMainWindow window;
    window.resize(960, 620);
    installLaunchProbe(&window);
    window.show();
    return QApplication::exec();
}
