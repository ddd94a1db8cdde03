// The batch import flow: the part of QBQuoteBatchImportHelper that shows dialogs and
// alerts, so it lives in the widgets library.
#include "core/QuotesRepository.h"
#include "import/BatchImportDialogs.h"
#include "import/QuoteBatchImportHelper.h"
#include "import/QuoteFile.h"
#include "logging/ULog.h"
#include "ui/Alert.h"
#include "util/UserMessages.h"

#include <QDir>
#include <QFileInfo>
#include <QFutureWatcher>
#include <QPointer>
#include <QProgressDialog>
#include <QTimer>
#include <QtConcurrent/QtConcurrentMap>
#include <QtConcurrent/QtConcurrentRun>

#include <chrono>
#include <memory>

namespace {

// Long enough for the file dialog to be gone when the alert comes up.
constexpr std::chrono::milliseconds kReadFailureAlertDelay(750);

void alertReadFailureLater(QBQuoteFile::Status status)
{
    QTimer::singleShot(kReadFailureAlertDelay, [status] {
        if (status == QBQuoteFile::Status::TooLarge) {
            QBAlert::shared().warningWithTitle(
                //% "File Too Large"
                qtTrId("FileTooLarge"),
                //% "The provided file is larger than 64 MiB. Split it into smaller files and "
                //% "import them one by one."
                qtTrId("TheProvidedFileIsTooLargeToImport"));
            return;
        }
        QBAlert::shared().warningWithTitle(
            //% "File not Text"
            qtTrId("FileNotText"),
            //% "The provided file does not look like a text file"
            qtTrId("TheProvidedFileDoesNotLookLikeTextFile"));
    });
}

// A file as the reading threads leave it: read, analysed and, when no question is needed
// (a collection, a clear separator, or one given), already cut into its quotes.
struct ReadFile
{
    QBQuoteFile file;
    qsizetype characters = 0; // of the text, which goes once it is cut
    std::optional<QStringList> quotes;

    static ReadFile read(const QString& path, const std::optional<QBSeparatorChoice>& separator)
    {
        ReadFile read{QBQuoteFile::load(path), 0, std::nullopt};
        read.characters = read.file.text.size();
        const QBQuoteFile& file = read.file;
        if (!file.ok() || (!file.isCollection && file.analysis.choices.isEmpty()))
            return read;
        if (file.isCollection)
            read.quotes = file.collectionQuotes;
        else if (separator)
            read.quotes = file.quotes(*separator);
        else if (file.analysis.clear)
            read.quotes = file.quotes(file.analysis.choices.first());
        if (read.quotes)
            read.file.text.clear(); // only a question needs the text
        return read;
    }
};

std::chrono::milliseconds& progressDelay()
{
    static std::chrono::milliseconds delay(400);
    return delay;
}

int& runsReading()
{
    static int count = 0;
    return count;
}

// One import of one or more files. The files are read and analysed on the thread pool,
// so that hundreds of them keep the window responsive (with progress and Cancel once it
// takes a while); then, on the main thread and in order, each is taken, asking where its
// separator is unclear, and the quotes of all of them are added at the end, as one undo
// step with one summary.
class ImportRun : public std::enable_shared_from_this<ImportRun>
{
public:
    ImportRun(QStringList paths, std::optional<QBSeparatorChoice> separator)
        : mPaths(std::move(paths)), mSeparator(std::move(separator))
    {}

    void start()
    {
        ++runsReading();
        mWatcher = new QFutureWatcher<ReadFile>;
        const auto self = shared_from_this();
        QObject::connect(mWatcher, &QFutureWatcherBase::finished, mWatcher,
                         [self] { self->readingFinished(); });
        QObject::connect(mWatcher, &QFutureWatcherBase::progressValueChanged, mWatcher,
                         [self](int done) {
                             if (self->mProgress != nullptr)
                                 self->mProgress->setValue(done);
                         });
        mWatcher->setFuture(
            QtConcurrent::mapped(mPaths, [separator = mSeparator](const QString& path) {
                return ReadFile::read(path, separator);
            }));
        QTimer::singleShot(progressDelay(), mWatcher, [self] { self->showProgress(); });
    }

private:
    void showProgress()
    {
        // The timer may come in the same round of events as the end of the reading.
        if (mWatcher == nullptr || mWatcher->isFinished())
            return;
        mProgress =
            QBBatchImportDialogs::openImportProgress(mPaths.size(), [watcher = QPointer(mWatcher)] {
                if (watcher != nullptr)
                    watcher->cancel();
            });
        if (mProgress != nullptr)
            mProgress->setValue(mWatcher->progressValue());
    }

    void readingFinished()
    {
        --runsReading();
        QBBatchImportDialogs::closeImportProgress(mProgress);
        const bool cancelled = mWatcher->isCanceled();
        if (!cancelled)
            mRead = mWatcher->future().results();
        // The watcher's connections hold this run; letting it go ends the cycle.
        mWatcher->disconnect();
        mWatcher->deleteLater();
        mWatcher = nullptr;
        if (cancelled) {
            logInfoMessage(QStringLiteral("Import of %1 files cancelled").arg(mPaths.size()));
            return;
        }
        next();
    }

    void next()
    {
        if (mNext == mRead.size()) {
            finish();
            return;
        }
        ReadFile& read = mRead[mNext++];
        const QBQuoteFile& file = read.file;
        logInfoMessage(QStringLiteral("Importing data from '") + file.path);
        if (file.status == QBQuoteFile::Status::Empty) {
            logWarningMessage("Failed to import: Contents of file empty?");
            ++mFailed;
            next();
            return;
        }
        if (!file.ok()) {
            logWarningMessage(QStringLiteral("Failed to read file: ") + file.error);
            // One file: the alert says why. Several: the summary counts it.
            if (mPaths.size() == 1)
                alertReadFailureLater(file.status);
            ++mFailed;
            next();
            return;
        }
        logDebugMessage(
            QStringLiteral("Read %1 characters as %2").arg(read.characters).arg(file.encoding));
        if (file.isCollection) {
            logInfoMessage(QStringLiteral("Importing %1 quotes from an exported collection")
                               .arg(file.collectionQuotes.size()));
            take(*read.quotes);
            return;
        }
        if (file.analysis.choices.isEmpty()) {
            logWarningMessage("Failed to import: Quotes found in input file = 0");
            ++mFailed;
            next();
            return;
        }
        if (!mSeparator) {
            logInfoMessage(
                QStringLiteral("Automatically detected %1 likely separators in input file")
                    .arg(file.analysis.choices.size()));
        }
        if (read.quotes) {
            take(*read.quotes);
            return;
        }
        QBBatchImportDialogs::askUserForSeparatorToUse(
            file, [self = shared_from_this(), &file](std::optional<QBSeparatorChoice> choice) {
                if (!choice) {
                    logInfoMessage("No separator specified - Aborting import.");
                    self->next();
                    return;
                }
                self->take(file.quotes(*choice));
            });
    }

    void take(const QStringList& quotes)
    {
        logInfoMessage(QStringLiteral("Importing %1 quotes from input file").arg(quotes.size()));
        mQuotes << quotes;
        if (mImported++ == 0)
            mFirstImported = mRead[mNext - 1].file.path;
        next();
    }

    void finish()
    {
        if (mImported == 0 && mFailed == mPaths.size() && mPaths.size() == 1)
            return; // the single file's own message says it all
        if (mImported == 0 && mFailed == 0)
            return; // cancelled
        const QBImportResult result =
            mImported > 0 ? QBQuoteBatchImportHelper::addQuotes(mQuotes) : QBImportResult{};
        QBQuoteBatchImportHelper::postSummary(result, mImported, mFirstImported, mFailed);
    }

    QStringList mPaths;
    std::optional<QBSeparatorChoice> mSeparator;
    QFutureWatcher<ReadFile>* mWatcher = nullptr;
    QPointer<QProgressDialog> mProgress;
    QList<ReadFile> mRead;
    qsizetype mNext = 0;
    qsizetype mImported = 0; // files whose quotes were taken
    qsizetype mFailed = 0;
    QString mFirstImported;
    QStringList mQuotes;
};

} // namespace

void QBQuoteBatchImportHelper::importFromTextFile()
{
    logInfoMessage("Initiating batch import.");
    QBBatchImportDialogs::askForBatchImportFileWithHandler(
        [](const QStringList& paths) { importFiles(paths); });
}

void QBQuoteBatchImportHelper::importFiles(const QStringList& paths,
                                           const std::optional<QBSeparatorChoice>& separator)
{
    if (!paths.isEmpty())
        std::make_shared<ImportRun>(paths, separator)->start();
}

bool QBQuoteBatchImportHelper::isReadingFiles()
{
    return runsReading() > 0;
}

void QBQuoteBatchImportHelper::setProgressDelay(std::chrono::milliseconds delay)
{
    progressDelay() = delay;
}

namespace {

void writeExportAndReport(const QString& path, const std::vector<CQuoteRecord>& quotes,
                          QBQuoteExport::Format format, qsizetype notReadingBack)
{
    logInfoMessage(QStringLiteral("Exporting %1 quotes as %2 to '%3'")
                       .arg(quotes.size())
                       .arg(QBQuoteExport::fileSuffix(format), path));
    QBUserMessage message;
    message.topic = QStringLiteral("export");
    if (const std::optional<QString> error = QBQuoteExport::writeExport(path, quotes, format)) {
        logWarningMessage(QStringLiteral("Failed to export: ") + *error);
        message.kind = QBUserMessage::Kind::Error;
        //% "The quotes could not be exported to “%1”: %2"
        message.text = qtTrId("ExportFailed").arg(path, *error);
    } else {
        message.kind = QBUserMessage::Kind::Success;
        message.text = qtTrId("ExportSummary", static_cast<int>(quotes.size()))
                           .arg(QFileInfo(path).fileName());
        if (notReadingBack > 0) {
            //% "%Ln of them will not read back as they are."
            message.text +=
                u' ' + qtTrId("ExportQuotesNotReadingBack", static_cast<int>(notReadingBack));
        }
    }
    QBUserMessages::shared().show(message);
}

// |path| with the JSON export's suffix instead of its own, numbered rather than
// replacing a file the user did not choose.
QString jsonPathFor(const QString& path)
{
    const QFileInfo info(path);
    QString candidate = info.dir().filePath(info.completeBaseName() + QStringLiteral(".json"));
    for (int number = 2; QFileInfo::exists(candidate); ++number) {
        candidate = info.dir().filePath(
            QStringLiteral("%1 %2.json").arg(info.completeBaseName()).arg(number));
    }
    return candidate;
}

void askAboutLossThenExport(const QBBatchImportDialogs::ExportRequest& request,
                            const std::vector<CQuoteRecord>& quotes, qsizetype lost)
{
    if (lost == 0) {
        writeExportAndReport(request.path, quotes, request.format, 0);
        return;
    }
    logInfoMessage(QStringLiteral("%1 of %2 quotes would not read back from %3")
                       .arg(lost)
                       .arg(quotes.size())
                       .arg(QBQuoteExport::fileSuffix(request.format)));
    using Answer = QBBatchImportDialogs::LosingExportAnswer;
    QBBatchImportDialogs::askAboutLosingExport(
        lost, static_cast<qsizetype>(quotes.size()), request.format,
        [request, lost, quotes](Answer answer) {
            if (answer == Answer::ExportAsJson)
                writeExportAndReport(jsonPathFor(request.path), quotes, QBQuoteExport::Format::Json,
                                     0);
            else if (answer == Answer::ExportAnyway)
                writeExportAndReport(request.path, quotes, request.format, lost);
        });
}

} // namespace

void QBQuoteBatchImportHelper::exportFromWindow(std::vector<CQuoteRecord> selection)
{
    const bool canExportSelection = !selection.empty();
    QBBatchImportDialogs::askForExportFile(
        canExportSelection,
        [selection = std::move(selection)](const QBBatchImportDialogs::ExportRequest& request) {
            const auto quotes = std::make_shared<const std::vector<CQuoteRecord>>(
                request.selectionOnly ? selection : CQuotesRepository::getInstance().mQuotes);
            if (request.format == QBQuoteExport::Format::Json) {
                writeExportAndReport(request.path, *quotes, request.format, 0);
                return;
            }
            // Said before writing, while the JSON format can still keep every quote. Reading
            // a large export back takes a while, so it runs on the thread pool.
            auto* watcher = new QFutureWatcher<qsizetype>;
            QObject::connect(watcher, &QFutureWatcherBase::finished, watcher,
                             [watcher, request, quotes] {
                                 watcher->deleteLater();
                                 askAboutLossThenExport(request, *quotes, watcher->result());
                             });
            watcher->setFuture(QtConcurrent::run([quotes, format = request.format] {
                return QBQuoteExport::quotesNotReadingBack(*quotes, format);
            }));
        });
}
