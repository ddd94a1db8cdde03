#pragma once

#include "import/QuoteExport.h"
#include "import/QuoteTextAnalysis.h"

#include <QString>
#include <QStringList>

#include <cstdio>
#include <optional>

// Import and export for scripts: no window and no question. Results go to |out|, faults
// to |err| (one line each, "quillbox2: FILE: reason"), and the return value is the
// process's exit code: 0 when everything worked, 1 when anything failed, in which case
// nothing was changed.
class QBQuoteFileCommands
{
public:
    QBQuoteFileCommands(std::FILE* out, std::FILE* err) : mOut(out), mErr(err) {}

    // Says for each file how it would be cut and how many quotes it holds.
    int dryRunImport(const QStringList& paths, const std::optional<QBSeparatorChoice>& separator);
    // Adds the quotes of |paths| to the collection file and saves it. Where the separator
    // is unclear, the most likely one is used (the one --dry-run shows).
    int importIntoCollection(const QStringList& paths,
                             const std::optional<QBSeparatorChoice>& separator);
    // Writes the saved collection to |path|.
    int exportCollection(const QString& path, QBQuoteExport::Format format);

private:
    // The quotes of every file, or nothing after saying which file failed.
    std::optional<QStringList> quotesOf(const QStringList& paths,
                                        const std::optional<QBSeparatorChoice>& separator,
                                        bool report);
    // Loads the collection as the app does at start (creating it on first use).
    bool loadCollection();
    void say(const QString& line);
    void complain(const QString& line);

    std::FILE* mOut;
    std::FILE* mErr;
};
