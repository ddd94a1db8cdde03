#pragma once

#include <QString>

class QSplitter;
class QWidget;

// Remembers the quotes window across launches: its size and place, the splitter between
// list and editor, and the selected quote. Kept in the application's own settings, not
// under "QBDefaults" keys: the helper process has no use for them.
namespace QBWindowMemory {

void rememberGeometry(const QWidget& window);
// False when nothing was stored or the stored state no longer fits.
bool restoreGeometry(QWidget& window);

void rememberSplitter(const QSplitter& splitter);
bool restoreSplitter(QSplitter& splitter);

void rememberSelectedQuote(const QString& quoteUID);
QString selectedQuote();

} // namespace QBWindowMemory
