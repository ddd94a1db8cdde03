#include "app/WindowMemory.h"

#include "util/UserDefaults.h"

#include <QSplitter>
#include <QWidget>

namespace {

const QString kGeometryKey = QStringLiteral("QBQuotesWindowGeometry");
const QString kSplitterStateKey = QStringLiteral("QBQuotesWindowSplitterState");
const QString kSelectedQuoteKey = QStringLiteral("QBQuotesWindowSelectedQuote");

QByteArray storedBytes(const QString& key)
{
    return QBUserDefaults::standardUserDefaults().objectForKey(key).toByteArray();
}

} // namespace

void QBWindowMemory::rememberGeometry(const QWidget& window)
{
    QBUserDefaults::standardUserDefaults().setObject(window.saveGeometry(), kGeometryKey);
}

bool QBWindowMemory::restoreGeometry(QWidget& window)
{
    const QByteArray geometry = storedBytes(kGeometryKey);
    return !geometry.isEmpty() && window.restoreGeometry(geometry);
}

void QBWindowMemory::rememberSplitter(const QSplitter& splitter)
{
    QBUserDefaults::standardUserDefaults().setObject(splitter.saveState(), kSplitterStateKey);
}

bool QBWindowMemory::restoreSplitter(QSplitter& splitter)
{
    const QByteArray state = storedBytes(kSplitterStateKey);
    return !state.isEmpty() && splitter.restoreState(state);
}

void QBWindowMemory::rememberSelectedQuote(const QString& quoteUID)
{
    QBUserDefaults::standardUserDefaults().setObject(quoteUID, kSelectedQuoteKey);
}

QString QBWindowMemory::selectedQuote()
{
    return QBUserDefaults::standardUserDefaults().stringForKey(kSelectedQuoteKey);
}
