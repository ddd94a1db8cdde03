#include "app/EditorAreaViewController.h"

#include "app/QuotesEditorViewController.h"
#include "model/Notifications.h"
#include "ui/ViewInstaller.h"

#include "ui_QBEditorAreaView.h"

QBEditorAreaViewController::QBEditorAreaViewController(QBUndoManager* undoManager, QWidget* parent)
    : QWidget(parent), mUi(std::make_unique<Ui::QBEditorAreaView>())
{
    mUi->setupUi(this);
    mQuotesEditor = new QBQuotesEditorViewController(undoManager, this);
    // Until the real settings page is handed in, an empty page stands in its place.
    auto* placeholder = new QWidget(this);
    placeholder->setObjectName(QStringLiteral("QBSettingsView"));
    placeholder->hide();
    mSettingsView = placeholder;
    // The editor shows from the start, empty until a quote is selected.
    switchToEditorView();

    // The tracker goes with this object, and its handlers with it.
    mNotificationTracker.observeNotification(
        QBQuoteSelectedNotification, [this](const QBNotification&) { switchToEditorView(); });
    mNotificationTracker.observeNotification(
        QBSwitchToSettingsNotification, [this](const QBNotification&) { switchToSettingsView(); });
}

QBEditorAreaViewController::~QBEditorAreaViewController() = default;

void QBEditorAreaViewController::setSettingsView(QWidget* settingsView)
{
    if (settingsView == nullptr || settingsView == mSettingsView)
        return;
    QWidget* old = mSettingsView;
    settingsView->setParent(this);
    settingsView->hide();
    mSettingsView = settingsView;
    if (old != nullptr && mCurrentEditorView == old)
        switchToSettingsView();
    delete old;
}

void QBEditorAreaViewController::switchToEditorView()
{
    switchTo(mQuotesEditor);
}

void QBEditorAreaViewController::switchToSettingsView()
{
    switchTo(mSettingsView);
}

void QBEditorAreaViewController::switchTo(QWidget* view)
{
    if (view == nullptr || view == mCurrentEditorView)
        return;
    LMViewInstaller::replaceChildView(mCurrentEditorView, view, this);
    mCurrentEditorView = view;
}
