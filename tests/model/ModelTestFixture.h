#pragma once

#include "core/QuotesRepository.h"
#include "logging/Log.h"
#include "model/QuoteEditHelper.h"
#include "model/QuotesAutoSaver.h"
#include "util/UndoManager.h"
#include "util/UserDefaults.h"

#include "TestHome.h"

#include <QCoreApplication>
#include <QStringList>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

// Readable failure messages for texts and lists of texts.
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

// The process-wide repository pointed at a database file in a fresh temporary home,
// with an auto-saver and an undo manager, as the running application has them.
class ModelTest : public ::testing::Test
{
protected:
    ModelTest()
    {
        QBUserDefaults::resetStandardUserDefaults();
        repository().removeAllQuotes();
        repository().mFilePath = mHome.stdPath(QStringLiteral("quotes.db"));
        qblog::clearLogHistory();
    }

    ~ModelTest() override
    {
        QBQuoteEditHelper::setYesNoQuestion({});
        repository().removeAllQuotes();
        repository().mFilePath.clear();
        QBUserDefaults::resetStandardUserDefaults();
    }

    static CQuotesRepository& repository() { return CQuotesRepository::getInstance(); }

    // Fills the repository directly (no notifications, no undo steps).
    std::vector<std::string> seed(const QStringList& contents)
    {
        std::vector<std::string> uids;
        for (const QString& content : contents) {
            CQuoteRecord* record = repository().addNewQuote();
            record->mContent = content.toStdString();
            uids.push_back(record->mUID);
        }
        return uids;
    }

    static QString uidText(const std::string& uid) { return QString::fromStdString(uid); }

    static QStringList contentsOf(const std::vector<CQuoteRecord>& records)
    {
        QStringList contents;
        for (const CQuoteRecord& record : records)
            contents << QString::fromStdString(record.mContent);
        return contents;
    }
    static QStringList memoryContents() { return contentsOf(repository().mQuotes); }
    QStringList fileContents() const
    {
        std::vector<CQuoteRecord> records;
        readQuotesFile(repository().mFilePath, records);
        return contentsOf(records);
    }
    static std::vector<std::string> memoryUIDs()
    {
        std::vector<std::string> uids;
        for (const CQuoteRecord& record : repository().mQuotes)
            uids.push_back(record.mUID);
        return uids;
    }

    // "Saving quotes" lines logged since the last call (or the start of the test).
    static int takeSaveCount()
    {
        int saves = 0;
        for (const std::string& line :
             qblog::recentLogLines(qblog::kMaxHistoryLines, qblog::Level::Info))
            saves += line.ends_with("Saving quotes") ? 1 : 0;
        qblog::clearLogHistory();
        return saves;
    }

    static std::vector<std::string> loggedWarnings()
    {
        std::vector<std::string> messages;
        for (const std::string& line : qblog::recentLogLines(100, qblog::Level::Warning))
            messages.insert(messages.begin(), line.substr(line.find("] :  ") + 5));
        return messages;
    }

    // Control goes back to the event loop: the undo manager's automatic group closes.
    static void endOfEvent() { QCoreApplication::processEvents(); }

    QBTestHome mHome;
    QBQuotesAutoSaver mAutoSaver;
    QBUndoManager mUndoManager;
};
