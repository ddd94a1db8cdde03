#include "app/SignatureWriteReport.h"

#include "signature/CurrentSignatureFileHelper.h"
#include "signature/SettingsKeys.h"
#include "signature/SignatureComposer.h"
#include "signature/SignatureFileChooser.h"
#include "util/CommandResults.h"
#include "util/UserDefaults.h"
#include "util/UserMessages.h"

const QString QBSignatureWriteReport::kTopic = QStringLiteral("signature-file");

bool QBSignatureWriteReport::write(const QString& content, bool announceSuccess)
{
    const QBUserDefaults& defaults = QBUserDefaults::standardUserDefaults();
    const QBSignatureSettings settings = QBSignatureSettings::fromDefaults(defaults);
    QBComposedSignature composed;
    QBCurrentSignatureFileHelper::WriteResult result;
    if (QBCurrentSignatureFileHelper::writeQuoteAsSignature(content, defaults, &composed,
                                                            &result)) {
        QBUserMessages::shared().dismiss(kTopic);
        if (!composed.fits) {
            // Written all the same: the user asked for this very quote.
            QBUserMessage message;
            message.kind = QBUserMessage::Kind::Warning;
            //% "The quote takes %1 lines, more than the signature's limit of %2; it was "
            //% "written all the same."
            message.text =
                qtTrId("SignatureLongerThanLimit").arg(composed.quoteLines).arg(settings.maxLines);
            message.topic = kTopic;
            QBUserMessages::shared().show(message);
        } else if (announceSuccess) {
            //% "Signature updated"
            QBCommandResults::report(qtTrId("SignatureUpdatedResult"));
        }
        return true;
    }
    const QString path = defaults.stringForKey(QBDefaultsSignatureOutputPath);
    QBUserMessages::shared().show({QBUserMessage::Kind::Error,
                                   //% "The signature file %1 could not be written. %2"
                                   qtTrId("SignatureWriteFailed").arg(path, result.reason),
                                   //% "Choose Another File…"
                                   qtTrId("ChooseAnotherSignatureFileButton"),
                                   [] { QBSignatureFileChooser::chooseAndUseFile(); },
                                   {},
                                   {},
                                   kTopic});
    return false;
}
