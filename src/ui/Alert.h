#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>

class QMessageBox;

// Alerts shown as window-modal message boxes opened with open(), so the caller goes on
// at once and the answer arrives through a handler. Texts are already localised by the
// caller. Main thread only.
class QBAlert
{
public:
    // NSAlert-style numbering used by the callers.
    enum Style
    {
        Warning = 0,
        Informational = 1,
        Critical = 2
    };

    static QBAlert& shared();

    // The window the alerts attach to; the active window when none is set.
    void setParentWindow(QWidget* window) { mParentWindow = window; }

    QMessageBox* infoWithTitle(const QString& title, const QString& message);
    QMessageBox* warningWithTitle(const QString& title, const QString& message);
    // Runs |onOK| when the user answers yes, |onCancel| for no or when the box is
    // dismissed otherwise.
    QMessageBox* showYesNoAlertWithLocalizedTitle(const QString& title, const QString& message,
                                                  int style, std::function<void()> onOK,
                                                  std::function<void()> onCancel);

private:
    QBAlert() = default;
    QMessageBox* openBox(int style, const QString& title, const QString& message);

    QPointer<QWidget> mParentWindow;
};
