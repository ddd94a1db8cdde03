#pragma once

#include "model/NotificationObserverTracker.h"

#include <QPointer>
#include <QWidget>

#include <memory>

class QBQuotesEditorViewController;
class QBUndoManager;
namespace Ui {
class QBEditorAreaView;
}

// The right-hand area of the quotes window: shows either the quotes editor or the
// settings page, switched by notifications.
class QBEditorAreaViewController : public QWidget
{
    Q_OBJECT
public:
    explicit QBEditorAreaViewController(QBUndoManager* undoManager, QWidget* parent = nullptr);
    ~QBEditorAreaViewController() override;

    QBQuotesEditorViewController* quotesEditorViewController() const { return mQuotesEditor; }
    QWidget* settingsViewController() const { return mSettingsView; }
    QWidget* currentEditorView() const { return mCurrentEditorView; }

    // Hands in the settings page; it replaces the one shown so far, also on screen.
    void setSettingsView(QWidget* settingsView);

    void switchToEditorView();
    void switchToSettingsView();

private:
    void switchTo(QWidget* view);

    std::unique_ptr<Ui::QBEditorAreaView> mUi;
    QBQuotesEditorViewController* mQuotesEditor = nullptr;
    QPointer<QWidget> mSettingsView;
    QPointer<QWidget> mCurrentEditorView;
    QBNotificationObserverTracker mNotificationTracker;
};
