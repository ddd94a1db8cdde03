// The save dialog of QBCurrentSignatureFileHelper: the one part of it that needs widgets.
#include "signature/CurrentSignatureFileHelper.h"
#include "signature/SettingsKeys.h"
#include "util/UserDefaults.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMainWindow>

namespace {
// The window that has the focus, else the first visible main window.
QWidget* mainWindow()
{
    if (QWidget* active = QApplication::activeWindow()) {
        return active;
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->isVisible() && qobject_cast<QMainWindow*>(window)) {
            return window;
        }
    }
    return nullptr;
}
} // namespace

void QBCurrentSignatureFileHelper::askPathToOutputSignatureFile(
    const std::function<void(const QUrl&)>& handler)
{
    QWidget* window = mainWindow();
    if (!window) {
        return;
    }
    auto* dialog = new QFileDialog(window);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setWindowModality(Qt::WindowModal);
    // Replacing is asked afterwards, and only for a file that Quillbox2 did not write.
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    // In the current signature file's folder, else the home folder: not wherever the
    // program happened to be started from.
    const QFileInfo current(
        QBUserDefaults::standardUserDefaults().stringForKey(QBDefaultsSignatureOutputPath));
    dialog->setDirectory(current.fileName().isEmpty() || !current.absoluteDir().exists()
                             ? QDir::homePath()
                             : current.absolutePath());
    //: Default name of the output signature file
    //% "CurrentSignature.txt"
    dialog->selectFile(qtTrId("CurrentSignature.txt"));
    QObject::connect(dialog, &QFileDialog::finished, dialog, [dialog, handler](int result) {
        if (result != QDialog::Accepted) {
            return;
        }
        const QList<QUrl> urls = dialog->selectedUrls();
        if (!urls.isEmpty() && handler) {
            handler(urls.first());
        }
    });
    dialog->open();
}
