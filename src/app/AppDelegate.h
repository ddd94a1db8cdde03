#pragma once

#include <QObject>
#include <QPointer>

#include <QMainWindow>

// Drives start-up and shut-down of the application.
class QBAppDelegate : public QObject
{
    Q_OBJECT
public:
    explicit QBAppDelegate(QObject* parent = nullptr);
    ~QBAppDelegate() override;

    // The launch sequence: logging, the launch line, then the main window.
    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    // $XDG_STATE_HOME/Logs/<process name>.log
    static QString getPathToLogFile();

    QMainWindow* window() const { return mWindow; }

private:
    QPointer<QMainWindow> mWindow;
};
