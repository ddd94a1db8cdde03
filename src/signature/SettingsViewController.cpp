#include "signature/SettingsViewController.h"

#include "logging/ULog.h"
#include "model/Notifications.h"
#include "model/QuoteValueObject.h"
#include "model/SignatureState.h"
#include "signature/CurrentSignatureFileHelper.h"
#include "signature/SettingsKeys.h"
#include "signature/SharedUserDefaults.h"
#include "signature/SignatureFileChooser.h"
#include "signature/SignatureSection.h"
#include "telemetry/QBTelemetryHelper.h"
#include "ui/Alert.h"
#include "ui/HelpBook.h"
#include "ui/VerticalScrollArea.h"
#include "util/UserDefaults.h"

#include "ui_QBSettingsView.h"

#include <QCheckBox>
#include <QLocale>
#include <QTimer>
#include <QVBoxLayout>

namespace {

// Shortest text that reads back as the same double, with ".0" on whole numbers, so a
// day reads "24.0h" and five minutes "0.08333333333333333h".
QString shortestRoundTrip(double value)
{
    QString text = QString::number(value, 'g', QLocale::FloatingPointShortest);
    if (!text.contains(QLatin1Char('.')) && !text.contains(QLatin1Char('e'))) {
        text += QStringLiteral(".0");
    }
    return text;
}

} // namespace

QBSettingsViewController::QBSettingsViewController(QWidget* parent)
    : QBSettingsViewController(QBUserDefaults::standardUserDefaults(),
                               QBSharedUserDefaults::sharedInstance(), parent)
{}

QBSettingsViewController::QBSettingsViewController(QBUserDefaults& standardDefaults,
                                                   QBSharedUserDefaults& sharedDefaults,
                                                   QWidget* parent)
    : QWidget(parent), mUi(std::make_unique<Ui::QBSettingsView>()),
      mStandardDefaults(standardDefaults), mMirror(standardDefaults, sharedDefaults)
{
    // The page scrolls down rather than squeezing its controls in a small window.
    auto* content = new QWidget;
    mUi->setupUi(content);
    // Room for a recognisable part of a path; when there is not, the form puts the label
    // above the field.
    mUi->outputPathField->setMinimumWidth(mUi->outputPathField->fontMetrics().averageCharWidth() *
                                          20);
    auto* scrollArea = new QBVerticalScrollArea(this);
    scrollArea->setObjectName(QStringLiteral("settingsScrollArea"));
    scrollArea->setFrameShape(QFrame::NoFrame);
    scrollArea->setWidget(content);
    auto* pageLayout = new QVBoxLayout(this);
    pageLayout->setContentsMargins(0, 0, 0, 0);
    pageLayout->addWidget(scrollArea);
    // Above the spacer that keeps the help button at the bottom.
    mSignatureSection = new QBSignatureSection(standardDefaults, content);
    mUi->mainLayout->insertWidget(
        mUi->mainLayout->indexOf(mUi->usageStatisticsUnavailableLabel) + 1, mSignatureSection);
    connect(mUi->changeIntervalPopupButton, &QComboBox::activated, this,
            &QBSettingsViewController::handleChangeIntervalSelected);
    connect(mUi->choosePathButton, &QPushButton::clicked, this,
            &QBSettingsViewController::pathFieldClicked);
    connect(mUi->helpButton, &QPushButton::clicked, this,
            &QBSettingsViewController::handleHelpClicked);
    bindCheckBox(mUi->autoRandomizeCheckBox, QBDefaultsAutoRandomize);
    bindCheckBox(mUi->clearTrailingEmptyLinesCheckBox, QBDefaultsClearTrailingEmptyLines);
    bindCheckBox(mUi->warnForDuplicatesCheckBox, QBDefaultsWarnForDuplicates);
    bindCheckBox(mUi->shareUsageStatisticsCheckBox, QBDefaultsShareUsageStatistics);

    mDefaultsObserver = QBNotificationCenter::defaultCenter().addObserver(
        QBUserDefaultsDidChangeNotification, [this](const QBNotification& notification) {
            if (notification.object == &mStandardDefaults) {
                userDefaultsDidChange();
            }
        });
    // The preview follows the list's selection and the edits of the selected quote.
    mSelectionObserver = QBNotificationCenter::defaultCenter().addObserver(
        QBQuoteSelectedNotification, [this](const QBNotification& notification) {
            mPreviewedQuote = qobject_cast<QBQuoteValueObject*>(notification.object);
            mSignatureSection->setPreviewQuote(mPreviewedQuote ? mPreviewedQuote->content()
                                                               : QString());
        });
    mQuoteUpdateObserver = QBNotificationCenter::defaultCenter().addObserver(
        QBQuoteDidUpdateNotification, [this](const QBNotification& notification) {
            if (mPreviewedQuote && notification.userInfo.value(QBKeyQuoteUID).toString() ==
                                       mPreviewedQuote->quoteUID()) {
                // After the value object itself has taken the new text.
                QTimer::singleShot(0, this, [this] {
                    if (mPreviewedQuote) {
                        mSignatureSection->setPreviewQuote(mPreviewedQuote->content());
                    }
                });
            }
        });
    updateControls();
    if (mStandardDefaults.boolForKey(QBDefaultsAutoRandomize))
        mHelperAppControl.watchRunningHelper();
    showRotationState();
}

QBSettingsViewController::~QBSettingsViewController()
{
    QBNotificationCenter::defaultCenter().removeObserver(mDefaultsObserver);
    QBNotificationCenter::defaultCenter().removeObserver(mSelectionObserver);
    QBNotificationCenter::defaultCenter().removeObserver(mQuoteUpdateObserver);
}

void QBSettingsViewController::setSignatureState(QBSignatureState* state)
{
    mSignatureState = state;
    connect(state, &QBSignatureState::changed, this, &QBSettingsViewController::showRotationState);
    showRotationState();
}

void QBSettingsViewController::showRotationState()
{
    mUi->rotationStatusLabel->setVisible(mSignatureState != nullptr);
    if (mSignatureState != nullptr)
        mUi->rotationStatusLabel->setText(mSignatureState->rotationDescription());
}

void QBSettingsViewController::bindCheckBox(QCheckBox* checkBox, const QString& key)
{
    // Only the user's clicks write; updateControls() follows the defaults back.
    connect(checkBox, &QCheckBox::clicked, this,
            [this, key](bool checked) { mStandardDefaults.setObject(checked, key); });
}

void QBSettingsViewController::updateControls()
{
    const std::pair<QCheckBox*, QString> boxes[] = {
        {mUi->autoRandomizeCheckBox, QBDefaultsAutoRandomize},
        {mUi->clearTrailingEmptyLinesCheckBox, QBDefaultsClearTrailingEmptyLines},
        {mUi->warnForDuplicatesCheckBox, QBDefaultsWarnForDuplicates}};
    for (const auto& [box, key] : boxes) {
        box->setChecked(mStandardDefaults.boolForKey(key));
    }
    // A build without a statistics service shows the switch off and says why.
    const bool canShare = QBTelemetryHelper::shared().canShare();
    mUi->shareUsageStatisticsCheckBox->setEnabled(canShare);
    mUi->shareUsageStatisticsCheckBox->setChecked(
        canShare &&
        sharesUsageStatistics(mStandardDefaults.objectForKey(QBDefaultsShareUsageStatistics)));
    mUi->usageStatisticsUnavailableLabel->setVisible(!canShare);

    const QString path = mStandardDefaults.stringForKey(QBDefaultsSignatureOutputPath);
    mUi->outputPathField->setText(path);
    // A long path shows its file name, not its start; the tooltip holds all of it.
    mUi->outputPathField->setCursorPosition(int(path.size()));
    mUi->outputPathField->setToolTip(path);
    mSignatureSection->updateFromDefaults();
}

void QBSettingsViewController::showEvent(QShowEvent* event)
{
    viewWillAppear();
    QWidget::showEvent(event);
}

void QBSettingsViewController::viewWillAppear()
{
    updateControls();
    const qint64 seconds = mStandardDefaults.integerForKey(QBDefaultsRandomizeInterval);
    const QStringList tags =
        mUi->changeIntervalPopupButton->property("minuteTags").toString().split(QLatin1Char(','));
    const qsizetype index = seconds % 60 == 0 ? tags.indexOf(QString::number(seconds / 60)) : -1;
    if (index < 0) {
        logWarningMessage(
            QStringLiteral("Failed to select popup menu item for change interval <%1>")
                .arg(seconds));
        return;
    }
    mUi->changeIntervalPopupButton->setCurrentIndex(static_cast<int>(index));
}

void QBSettingsViewController::handleChangeIntervalSelected(int index)
{
    const QStringList tags =
        mUi->changeIntervalPopupButton->property("minuteTags").toString().split(QLatin1Char(','));
    const qint64 minutes = tags.value(index).toLongLong();
    qint64 seconds = 0;
    if (qMulOverflow(minutes, qint64(60), &seconds)) {
        qFatal("The interval of %lld minutes overflows in seconds",
               static_cast<long long>(minutes));
    }
    logInfoMessage(QStringLiteral("Auto-change interval changed to %1s (%2min. / %3h)")
                       .arg(QString::number(seconds), QString::number(seconds / 60),
                            shortestRoundTrip(static_cast<double>(seconds) / 3600.0)));
    mStandardDefaults.setInteger(seconds, QBDefaultsRandomizeInterval);
    // Whether or not the helper runs: a stopped one stays stopped only if unregistering
    // fails, which ends the restart before anything is registered.
    mHelperAppControl.restart();
}

void QBSettingsViewController::pathFieldClicked()
{
    QBSignatureFileChooser::chooseFile([this](const QUrl& url) { updateOutputFilePath(url); });
}

void QBSettingsViewController::handleHelpClicked()
{
    QBHelpBook::openHelpAnchor(QString());
}

void QBSettingsViewController::updateOutputFilePath(const QUrl& url)
{
    QBSignatureFileChooser::useFile(url, mStandardDefaults, this);
}

bool QBSettingsViewController::snapshotBool(const QString& key) const
{
    return QBUserDefaults::boolFromValue(mLastDefaults.value(key));
}

void QBSettingsViewController::userDefaultsDidChange()
{
    mMirror.mirrorToSharedDefaults();

    if (!snapshotBool(QBDefaultsWarnForDuplicates) &&
        mStandardDefaults.boolForKey(QBDefaultsWarnForDuplicates)) {
        QBNotificationCenter::defaultCenter().post(QBCheckForDuplicateQuotesNotification, this);
    }

    const bool randomize = mStandardDefaults.boolForKey(QBDefaultsAutoRandomize);
    if (randomize != snapshotBool(QBDefaultsAutoRandomize)) {
        logInfoMessage(randomize ? "Enabling helper app" : "Disabling helper app");
        mIsRandomizing = randomize;
        emit isRandomizingChanged(randomize);
        if (randomize) {
            mHelperAppControl.enable();
        } else {
            mHelperAppControl.disable();
        }
        if (randomize && mStandardDefaults.stringForKey(QBDefaultsSignatureOutputPath).isEmpty()) {
            //% "No Output File Specified"
            QBAlert::shared().warningWithTitle(qtTrId("NoOutputFileSpecified"),
                                               //% "Please specify an output file"
                                               qtTrId("PleaseSpecifyOutputFile"));
        }
    }

    const bool share =
        sharesUsageStatistics(mStandardDefaults.objectForKey(QBDefaultsShareUsageStatistics));
    if (share != sharesUsageStatistics(mLastDefaults.value(QBDefaultsShareUsageStatistics))) {
        QBTelemetryHelper::shared().setUserAllowsSharing(share);
    }

    mLastDefaults = mStandardDefaults.dictionaryRepresentation();
    updateControls();
}
