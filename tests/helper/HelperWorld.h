#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QVariant>

// The helper's world in the current test home, and real helper processes.
namespace helperworld {

QString quotesDbPath();
// Writes quotes.db with one record per text; returns the records' UIDs.
QStringList writeQuotes(const QStringList& texts);
// What the signature file holds for |text|: UTF-8 with one final line break.
QByteArray signatureOf(const QString& text);
// Stores |value| in the suite file the way mirroring does (an invalid value removes).
void setSuiteValue(const QString& key, const QVariant& value);
// Creates <home>/Mail/sig.txt and stores its bookmark in the suite; returns its path.
QString makeBookmarkedSignatureFile();
QString helperLogText();
// What desktop-file-validate says about the entry at |path|: empty when it is valid.
QString desktopEntryProblems(const QString& path);

// Runs the helper with |arguments| to its end; exit code, standard output and error.
struct HelperRun
{
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};
HelperRun runHelper(const QStringList& arguments);

// A running helper, ended with SIGTERM (and waited for) when the object goes.
class RunningHelper
{
public:
    RunningHelper();
    ~RunningHelper();
    QProcess& process() { return mProcess; }
    qint64 pid() const { return mProcess.processId(); }
    // SIGTERM; true when it ended by itself with exit code 0 within 5 s.
    bool terminate();

private:
    QProcess mProcess;
};

} // namespace helperworld
