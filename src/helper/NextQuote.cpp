#include "helper/NextQuote.h"

#include "helper/QuoteSource.h"
#include "signature/CurrentSignatureFileHelper.h"

QBNextQuoteResult writeNextQuote()
{
    QBNextQuoteResult result;
    // Without a file to write to, the round keeps its quote for later.
    if (!QBCurrentSignatureFileHelper::hasStoredBookmark()) {
        result.messages = QBCurrentSignatureFileHelper::noBookmark().messages;
        return result;
    }
    // Copied, not mapped: the application must survive a file truncated under it. The
    // same composing and fit rules as the rotation and --print.
    QBHelperQuoteSource::Signature signature = QBHelperQuoteSource::nextSignature(
        QBHelperQuoteSource::Access::Copied, QBHelperQuoteSource::Output::SignatureFile);
    if (!signature.problem.isEmpty()) {
        result.messages.emplace_back(qblog::Level::Warning, signature.problem);
        return result;
    }
    result.uid = QString::fromStdString(signature.uid);
    result.bytes = std::move(signature.bytes);
    QBCurrentSignatureFileHelper::WriteResult write =
        QBCurrentSignatureFileHelper::writeSignatureBytes(result.bytes);
    result.written = write.written;
    result.messages = std::move(write.messages);
    return result;
}
