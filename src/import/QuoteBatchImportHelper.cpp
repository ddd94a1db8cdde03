#include "import/QuoteBatchImportHelper.h"

#include "core/QuotesRepository.h"
#include "model/Actions.h"
#include "model/QuoteEditHelper.h"
#include "util/StringUtilities.h"
#include "util/UndoManager.h"

#include <QHash>
#include <QPointer>
#include <QStringView>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

QPointer<QBUndoManager>& importUndoManager()
{
    static QPointer<QBUndoManager> undoManager;
    return undoManager;
}

// Identifies the import steps on the undo manager.
const char kImportUndoTarget = 0;

const QString kNewline = QStringLiteral("\n");

struct LineTally
{
    qsizetype count = 0;
    qsizetype firstLine = 0;
};

} // namespace

QString QBQuoteBatchImportHelper::normalizedLineEnds(QString text)
{
    return text.replace(QStringLiteral("\r\n"), kNewline).replace(QLatin1Char('\r'), u'\n');
}

QStringList QBQuoteBatchImportHelper::detectCandidateSeparators(const QString& normalizedText)
{
    // Keys are views into the text: no line is copied while counting.
    QHash<QStringView, LineTally> histogram;
    qsizetype lineCount = 0;
    const auto countLine = [&](QStringView line) {
        QStringView key = line.trimmed();
        if (key.isEmpty())
            key = kNewline;
        LineTally& tally = histogram[key];
        if (tally.count++ == 0)
            tally.firstLine = lineCount;
        ++lineCount;
    };
    const QStringView text(normalizedText);
    qsizetype lineStart = 0;
    for (qsizetype index = 0; index < text.size(); ++index) {
        if (isNewline(text[index])) {
            countLine(text.sliced(lineStart, index - lineStart));
            lineStart = index + 1;
        }
    }
    countLine(text.sliced(lineStart));

    const qsizetype threshold = lineCount / 10;
    std::vector<std::pair<QStringView, LineTally>> kept;
    for (auto entry = histogram.cbegin(); entry != histogram.cend(); ++entry) {
        if (entry->count >= 2 && entry->count >= threshold)
            kept.emplace_back(entry.key(), entry.value());
    }
    std::sort(kept.begin(), kept.end(), [](const auto& left, const auto& right) {
        if (left.second.count != right.second.count)
            return left.second.count > right.second.count;
        return left.second.firstLine < right.second.firstLine;
    });
    QStringList candidates;
    candidates.reserve(static_cast<qsizetype>(kept.size()));
    for (const auto& [key, tally] : kept)
        candidates << key.toString();
    return candidates;
}

QString QBQuoteBatchImportHelper::separatorForSplitting(const QString& candidate)
{
    if (!candidate.endsWith(u'\n') || candidate == kNewline)
        return candidate + kNewline;
    return candidate;
}

QStringList QBQuoteBatchImportHelper::splitText(const QString& text, const QString& separator)
{
    return text.split(separator, Qt::KeepEmptyParts);
}

void QBQuoteBatchImportHelper::setUndoManager(QBUndoManager* undoManager)
{
    importUndoManager() = undoManager;
}

void QBQuoteBatchImportHelper::addQuotes(const QStringList& pieces)
{
    QBUndoManager* undoManager = importUndoManager();
    // Blank pieces are skipped, so a file of nothing but blanks leaves no step to undo.
    const bool addsAny = std::any_of(pieces.cbegin(), pieces.cend(), [](const QString& piece) {
        return !stringByStrippingWhitespace(piece).isEmpty();
    });
    if (undoManager != nullptr && addsAny) {
        // Undo puts the whole collection back as it was before the import, and redo
        // as it was after it: the remove-all and add-all actions register each other.
        undoManager->registerUndoWithTarget(
            &kImportUndoTarget, [undoManager, before = CQuotesRepository::getInstance().mQuotes] {
                const auto clearImported = std::make_shared<QBAddAllQuotesAction>(
                    undoManager, CQuotesRepository::getInstance().mQuotes);
                const auto restoreEarlier =
                    std::make_shared<QBRemoveAllQuotesAction>(undoManager, before);
                clearImported->performUndo();
                restoreEarlier->performUndo();
            });
    }
    QBQuoteEditHelper::addQuotesFromStringArray(pieces);
}
