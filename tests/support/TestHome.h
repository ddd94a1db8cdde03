#pragma once

#include <QByteArray>
#include <QString>
#include <QStringConverter>
#include <QTemporaryDir>

#include <map>
#include <optional>
#include <string>

// A fresh temporary folder that HOME and every XDG_* variable point into while the
// object lives; the previous values come back afterwards, and the folder is removed. Every fixture
// that touches files owns one, so no test ever reads or writes the real user's files.
class QBTestHome
{
public:
    QBTestHome();
    ~QBTestHome();
    QBTestHome(const QBTestHome&) = delete;
    QBTestHome& operator=(const QBTestHome&) = delete;

    QString path() const { return mDir.path(); }
    // Absolute path of |relative| inside the temporary folder.
    QString filePath(const QString& relative) const { return mDir.filePath(relative); }
    std::string stdPath(const QString& relative) const { return filePath(relative).toStdString(); }

private:
    QTemporaryDir mDir;
    std::map<std::string, std::optional<std::string>> mSaved;
};

// Gives the whole test process a QBTestHome, with TMPDIR inside it so that every temporary
// folder the tests (and the programs they start) make goes with it. It is removed when the
// process ends, however it ends: at exit, and by a small watcher process when the test
// crashes or is killed. Call it first thing in main(), before any static is made.
void installProcessTestHome();

// Removes |path| and everything below it, whatever the tests did to it: folders without
// permissions, immutable entries (as root), paths longer than the system's limit.
void removeTree(const QString& path);

// Whole content of a file as bytes (empty when it cannot be read).
QByteArray readFileBytes(const QString& path);
// Writes |bytes| to |path|, creating missing folders; returns false on failure.
bool writeFileBytes(const QString& path, const QByteArray& bytes);
// |text| in |encoding|, with a byte-order mark when asked.
QByteArray encodedText(const QString& text, QStringConverter::Encoding encoding,
                       bool byteOrderMark = false);
