#include "helper/HelperCommands.h"

#include "core/AppIdentity.h"
#include "core/FolderHelper.h"
#include "core/QuotesDBHelper.h"
#include "helper/NextQuote.h"
#include "helper/QuoteSource.h"
#include "helper/SignatureRotator.h"
#include "logging/Log.h"
#include "logging/ULog.h"
#include "signature/CurrentSignatureFileHelper.h"
#include "signature/LoginItemService.h"
#include "util/UnixSignalWatcher.h"

#include <QCoreApplication>
#include <QFile>
#include <QLockFile>
#include <QTimer>

#include <cstdio>
#include <unistd.h>

namespace {

// Standard output belongs to the quote: log lines go to standard error, and the
// returned descriptor is where the quote is written.
int reserveStandardOutputForQuote()
{
    const int quoteOutput = ::dup(STDOUT_FILENO);
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    return quoteOutput;
}

bool writeQuoteTo(int output, const QByteArray& bytes)
{
    QFile file;
    return file.open(output, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle) &&
           file.write(bytes) == bytes.size() && file.flush();
}

QString helperLogFilePath()
{
    const std::optional<std::string> folder = QBFolderHelper::getPathToLogsFolder();
    return folder ? QString::fromStdString(*folder) + QLatin1Char('/') +
                        QString::fromUtf8(qbidentity::kHelperProcessName) + QStringLiteral(".log")
                  : QString();
}

} // namespace

int qbhelper::runRotation()
{
    qblog::setupLogging(helperLogFilePath().toStdString());
    logInfoMessage(QStringLiteral("Launch of %1 %2 completed (process %3).")
                       .arg(QCoreApplication::applicationName(),
                            QCoreApplication::applicationVersion(),
                            QString::number(QCoreApplication::applicationPid())));

    // Before the lock: once the pid file names this process, a SIGTERM from unregistering
    // must already end it through the event loop, with its log lines.
    QBUnixSignalWatcher signalWatcher;
    QObject::connect(
        &signalWatcher, &QBUnixSignalWatcher::terminationRequested, [](int signalNumber) {
            logInfoMessage(
                QStringLiteral("Stopping on signal %1").arg(QString::number(signalNumber)));
            QCoreApplication::quit();
        });
    QBQuotesDBHelper::createApplicationGroupAppSupportFolder();
    const QString pidFile = QBLoginItemService::pidFilePath();
    if (pidFile.isEmpty()) {
        logErrorMessage("No application group container ($XDG_DATA_HOME and $HOME are "
                        "unusable); the helper exits");
        return 1;
    }
    // The lock file holds this process's id: it is the pid file that unregistering reads.
    QLockFile lock(pidFile);
    lock.setStaleLockTime(0); // a long-running helper's lock never turns stale by age
    if (!lock.tryLock(0)) {
        qint64 pid = 0;
        QString host;
        QString application;
        lock.getLockInfo(&pid, &host, &application);
        logInfoMessage(
            QStringLiteral("Another %1 is already running (process %2); exiting")
                .arg(QString::fromUtf8(qbidentity::kHelperProcessName), QString::number(pid)));
        return 0;
    }

    QBSignatureRotator rotator;
    QObject::connect(&rotator, &QBSignatureRotator::stopRequested, QCoreApplication::instance(),
                     &QCoreApplication::quit, Qt::QueuedConnection);
    QTimer::singleShot(0, &rotator, &QBSignatureRotator::start);
    const int code = QCoreApplication::exec();
    logInfoMessage("Helper stopped.");
    return code;
}

int qbhelper::printNextQuote()
{
    const int quoteOutput = reserveStandardOutputForQuote();

    const QBHelperQuoteSource::Signature signature = QBHelperQuoteSource::nextSignature(
        QBHelperQuoteSource::Access::Mapped, QBHelperQuoteSource::Output::StandardOutput);
    if (!signature.problem.isEmpty()) {
        logWarningMessage(signature.problem);
        return 1;
    }
    return writeQuoteTo(quoteOutput, signature.bytes) ? 0 : 1;
}

int qbhelper::writeNextQuoteAndPrint()
{
    const int quoteOutput = reserveStandardOutputForQuote();
    const QBNextQuoteResult result = writeNextQuote();
    QBCurrentSignatureFileHelper::logMessages(result.messages);
    if (!result.written) {
        ::close(quoteOutput);
        return 1;
    }
    return writeQuoteTo(quoteOutput, result.bytes) ? 0 : 1;
}
