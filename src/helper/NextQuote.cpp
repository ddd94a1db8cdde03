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
    // Copied, not mapped: the application must survive a file truncated under it.
    const QBHelperQuoteSource::Pick pick =
        QBHelperQuoteSource::nextQuote(QBHelperQuoteSource::Access::Copied);
    if (!pick.content) {
        result.messages.emplace_back(qblog::Level::Warning,
                                     pick.problem.isEmpty() ? QStringLiteral("No quote to write")
                                                            : pick.problem);
        return result;
    }
    result.uid = QString::fromStdString(pick.uid);
    result.content = QString::fromStdString(*pick.content);
    QBCurrentSignatureFileHelper::WriteResult write =
        QBCurrentSignatureFileHelper::writeSignature(result.content);
    result.written = write.written;
    result.messages = std::move(write.messages);
    return result;
}
