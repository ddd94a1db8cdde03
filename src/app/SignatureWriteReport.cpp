#include "app/SignatureWriteReport.h"

#include "signature/CurrentSignatureFileHelper.h"
#include "signature/SettingsKeys.h"
#include "signature/SignatureFileChooser.h"
#include "util/CommandResults.h"
#include "util/UserDefaults.h"
#include "util/UserMessages.h"

const QString QBSignatureWriteReport::kTopic = QStringLiteral("signatureWrite");

bool QBSignatureWriteReport::write(const QString& content, bool announceSuccess)
{
    const QBCurrentSignatureFileHelper::WriteResult result =
        QBCurrentSignatureFileHelper::writeSignature(content);
    QBCurrentSignatureFileHelper::logMessages(result.messages);
    if (result.written) {
        QBUserMessages::shared().dismiss(kTopic);
        if (announceSuccess)
            //% "Signature updated"
            QBCommandResults::report(qtTrId("SignatureUpdatedResult"));
        return true;
    }
    const QString path =
        QBUserDefaults::standardUserDefaults().stringForKey(QBDefaultsSignatureOutputPath);
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
