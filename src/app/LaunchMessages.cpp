#include "app/LaunchMessages.h"

#include "core/QuotesRepository.h"
#include "signature/SettingsKeys.h"
#include "signature/SignatureFileChooser.h"
#include "util/UserDefaults.h"
#include "util/UserMessages.h"

namespace {
const QString kSaveTopic = QStringLiteral("collectionSave");
const QString kDamagedTopic = QStringLiteral("collectionDamaged");
} // namespace

namespace qblaunchmessages {

void postLaunchMessages()
{
    const std::string& copy = CQuotesRepository::getInstance().damagedCopyPath();
    if (!copy.empty()) {
        QBUserMessages::shared().show(
            {QBUserMessage::Kind::Warning,
             //% "Your quotes file could not be read; what could be read is shown. The file as "
             //% "it was is kept at %1."
             qtTrId("CollectionDamagedMessage").arg(QString::fromStdString(copy)),
             {},
             {},
             {},
             {},
             kDamagedTopic});
    }
    if (QBUserDefaults::standardUserDefaults()
            .stringForKey(QBDefaultsSignatureOutputPath)
            .isEmpty()) {
        QBUserMessage hint;
        hint.kind = QBUserMessage::Kind::Information;
        //% "First choose where your signature file goes, then point your mail program at it."
        hint.text = qtTrId("FirstRunHint");
        //% "Choose Signature File…"
        hint.actionText = qtTrId("ChooseSignatureFileButton");
        hint.action = [] { QBSignatureFileChooser::chooseAndUseFile(); };
        //% "How?"
        hint.linkText = qtTrId("FirstRunHintLink");
        hint.helpAnchor = QStringLiteral("QB_SIGNATURE");
        hint.topic = QBSignatureFileChooser::kHintTopic;
        QBUserMessages::shared().show(hint);
    }
}

void installSaveMessages()
{
    CQuotesRepository& repository = CQuotesRepository::getInstance();
    repository.setSaveResultObserver([](const std::string& failure) {
        if (failure.empty()) {
            QBUserMessages::shared().dismiss(kSaveTopic);
            return;
        }
        QBUserMessages::shared().show(
            {QBUserMessage::Kind::Error,
             //% "Your changes could not be saved: %1"
             qtTrId("CollectionSaveFailed").arg(QString::fromStdString(failure)),
             //% "Try Again"
             qtTrId("TryAgainButton"),
             [] { CQuotesRepository::getInstance().saveQuotes(); },
             {},
             {},
             kSaveTopic});
    });
    repository.setSaveRefusedObserver([](const std::string& path, const std::string& reason) {
        QBUserMessages::shared().show(
            {QBUserMessage::Kind::Error,
             //% "The quotes database at %1 could not be read (%2), so your changes cannot "
             //% "be saved until the file is fixed."
             qtTrId("QuotesCannotBeSavedMessage")
                 .arg(QString::fromStdString(path), QString::fromStdString(reason)),
             {},
             {},
             {},
             {},
             kSaveTopic});
    });
}

} // namespace qblaunchmessages
