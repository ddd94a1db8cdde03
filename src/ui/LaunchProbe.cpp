#include "ui/LaunchProbe.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

namespace {

class FirstPaintWatcher : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            watched->removeEventFilter(this);
            // After the painted frame reaches the screen.
            QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        }
        return false;
    }
};

} // namespace

void installLaunchProbe(QWidget* window)
{
    if (window == nullptr || !qEnvironmentVariableIsSet("QB_LAUNCH_PROBE"))
        return;
    window->installEventFilter(new FirstPaintWatcher(window));
}
