#pragma once

#include "signature/DefaultsMirror.h"
#include "signature/HelperAppControl.h"
#include "util/NotificationCenter.h"

#include <QPointer>
#include <QUrl>
#include <QVariantMap>
#include <QWidget>

#include <memory>

namespace Ui {
class QBSettingsView;
}
class QBSignatureState;
class QBUserDefaults;
class QBSharedUserDefaults;
class QBQuoteValueObject;
class QBSignatureSection;

// The settings page: the signature file's path (with a button to choose another), the interval
// of the helper process, check boxes bound both ways to the application's defaults, and
// the signature's template and fit rules with a preview of the selected quote.
// On every change of those defaults it mirrors them into the shared suite, asks for a
// duplicate check when warnings were turned on, and turns the helper on or off; a new
// interval restarts the helper.
class QBSettingsViewController : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool isRandomizing READ isRandomizing NOTIFY isRandomizingChanged)
public:
    // On the application's standard defaults and the shared suite.
    explicit QBSettingsViewController(QWidget* parent = nullptr);
    QBSettingsViewController(QBUserDefaults& standardDefaults, QBSharedUserDefaults& sharedDefaults,
                             QWidget* parent = nullptr);
    ~QBSettingsViewController() override;

    bool isRandomizing() const { return mIsRandomizing; }
    QBHelperAppControl& helperAppControl() { return mHelperAppControl; }

    // The interval pop-up's action: stores the chosen interval and restarts the helper.
    void handleChangeIntervalSelected(int index);
    // The Choose… button's action: the save dialog, then updateOutputFilePath().
    void pathFieldClicked();
    void handleHelpClicked();
    // Shows the stored settings in the controls.
    void viewWillAppear();
    // Takes the file the user chose as the signature file, unless it is unusable.
    void updateOutputFilePath(const QUrl& url);
    // Shows under the automatic-change switch what the helper is doing now.
    void setSignatureState(QBSignatureState* state);
    QBSignatureSection& signatureSection() { return *mSignatureSection; }

signals:
    void isRandomizingChanged(bool isRandomizing);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void userDefaultsDidChange();
    void updateControls();
    void showRotationState();
    void bindCheckBox(class QCheckBox* checkBox, const QString& key);
    bool snapshotBool(const QString& key) const;

    std::unique_ptr<Ui::QBSettingsView> mUi;
    QBUserDefaults& mStandardDefaults;
    QBDefaultsMirror mMirror;
    QBHelperAppControl mHelperAppControl;
    QVariantMap mLastDefaults;
    bool mIsRandomizing = false;
    QBSignatureState* mSignatureState = nullptr;
    QBNotificationToken mDefaultsObserver;
    QBNotificationToken mSelectionObserver;
    QBNotificationToken mQuoteUpdateObserver;
    QBSignatureSection* mSignatureSection;
    QPointer<QBQuoteValueObject> mPreviewedQuote; // the list's selection
};
