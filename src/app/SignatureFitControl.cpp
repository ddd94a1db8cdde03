#include "app/SignatureFitControl.h"

#include "model/QuotesListModel.h"
#include "util/UserDefaults.h"

#include <QCheckBox>

QBSignatureFitControl::QBSignatureFitControl(
    QBUserDefaults& defaults, QBQuotesListModel* model,
    std::function<void(const std::function<void()>&)> rearrange, QObject* parent)
    : QObject(parent), mDefaults(defaults), mModel(model), mCheckBox(new QCheckBox),
      mRearrange(std::move(rearrange))
{
    mCheckBox->setObjectName(QStringLiteral("onlyTooLongCheckBox"));
    //% "Only quotes too long for the signature"
    mCheckBox->setText(qtTrId("QuotesListOnlyTooLong"));
    mCheckBox->setFocusPolicy(Qt::TabFocus);
    connect(mCheckBox, &QCheckBox::toggled, this, [this](bool checked) {
        mRearrange([this, checked] { mModel->setShowsOnlyTooLong(checked); });
    });
    mDefaultsObserver = QBNotificationCenter::defaultCenter().addObserver(
        QBUserDefaultsDidChangeNotification, [this](const QBNotification& notification) {
            if (notification.object == &mDefaults) {
                followSettings();
            }
        });
    followSettings();
}

QBSignatureFitControl::~QBSignatureFitControl()
{
    QBNotificationCenter::defaultCenter().removeObserver(mDefaultsObserver);
}

void QBSignatureFitControl::followSettings()
{
    const QBSignatureSettings settings = QBSignatureSettings::fromDefaults(mDefaults);
    // Only a new wrap column or limit changes which quotes fit.
    if (mHasApplied && settings.maxLines == mApplied.maxLines &&
        settings.wrapColumn == mApplied.wrapColumn) {
        return;
    }
    mApplied = settings;
    mHasApplied = true;
    const bool limited = settings.maxLines > 0;
    mRearrange([this, settings, limited] {
        mModel->setSignatureFitTest(
            limited ? QBQuotesListModel::FitTest([settings](const QString& content) {
                return QBSignatureComposer::fits(content, settings);
            })
                    : QBQuotesListModel::FitTest());
        if (!limited) {
            mModel->setShowsOnlyTooLong(false);
        }
    });
    if (!limited) {
        const QSignalBlocker blocker(mCheckBox);
        mCheckBox->setChecked(false);
    }
    mCheckBox->setVisible(limited);
}
