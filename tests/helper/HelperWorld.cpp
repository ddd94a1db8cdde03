#include "HelperWorld.h"

#include "core/QuoteRecord.h"
#include "core/QuotesDBHelper.h"
#include "core/QuotesRepository.h"
#include "signature/FileBookmark.h"
#include "signature/SettingsKeys.h"
#include "signature/SharedUserDefaults.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <csignal>

namespace helperworld {

QString quotesDbPath()
{
    return QString::fromStdString(QBQuotesDBHelper::getPathToQuotesDb().value());
}

QByteArray signatureOf(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    return bytes.isEmpty() || bytes.endsWith('\n') ? bytes : bytes + '\n';
}

QStringList writeQuotes(const QStringList& texts)
{
    std::vector<CQuoteRecord> records;
    QStringList uids;
    for (const QString& text : texts) {
        records.emplace_back(text.toStdString(), std::string());
        uids.append(QString::fromStdString(records.back().mUID));
    }
    QDir().mkpath(QFileInfo(quotesDbPath()).absolutePath());
    writeQuotesFile(quotesDbPath().toStdString(), records);
    return uids;
}

void setSuiteValue(const QString& key, const QVariant& value)
{
    QBSharedUserDefaults(QBSharedUserDefaults::suitePath()).setObject(value, key);
}

QString makeBookmarkedSignatureFile()
{
    const QString path = QDir::homePath() + QStringLiteral("/Mail/sig.txt");
    QDir().mkpath(QFileInfo(path).absolutePath());
    setSuiteValue(QBPrivateDefaultsOutputFileSSB,
                  QBFileBookmark::create(path, quotesDbPath()).data);
    return path;
}

QString helperLogText()
{
    QFile log(qEnvironmentVariable("XDG_STATE_HOME") +
              QStringLiteral("/Logs/quillbox2-helper.log"));
    return log.open(QIODevice::ReadOnly) ? QString::fromUtf8(log.readAll()) : QString();
}

QString desktopEntryProblems(const QString& path)
{
    QProcess validator;
    validator.setProcessChannelMode(QProcess::MergedChannels);
    validator.start(QStringLiteral("desktop-file-validate"), {path});
    const bool valid = validator.waitForFinished(10000) && validator.exitCode() == 0;
    const QString output = QString::fromUtf8(validator.readAll());
    return valid ? output : QStringLiteral("invalid: ") + output;
}

HelperRun runHelper(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(QB_HELPER_PATH), arguments);
    HelperRun run;
    if (process.waitForFinished(10000)) {
        run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    return run;
}

RunningHelper::RunningHelper()
{
    mProcess.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    mProcess.setStandardOutputFile(QProcess::nullDevice());
    mProcess.start(QStringLiteral(QB_HELPER_PATH), {});
    mProcess.waitForStarted();
}

RunningHelper::~RunningHelper()
{
    if (mProcess.state() != QProcess::NotRunning) {
        terminate();
    }
}

bool RunningHelper::terminate()
{
    ::kill(static_cast<pid_t>(mProcess.processId()), SIGTERM);
    return mProcess.waitForFinished(5000) && mProcess.exitStatus() == QProcess::NormalExit &&
           mProcess.exitCode() == 0;
}

} // namespace helperworld
