#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// The file that carries unsent signals from one run to the next.
namespace qbsignalcachefile {

// $XDG_CACHE_HOME/<bundle id>/telemetrysignalcache; stops the process when the caches
// folder cannot be determined, since nothing sensible can be done without it.
QString defaultLocation();

// Reads the whole file and deletes it at once, so a damaged file is never read twice.
// Nothing when the file is missing or unreadable, when it is not a regular file (a FIFO
// would block the read), or when it holds more than |maximumBytes|; except for a missing
// file, |problem| then says why.
std::optional<QByteArray> takeContents(const QString& path, qint64 maximumBytes, QString& problem);

// Deletes the file when it is a regular one (never a link, FIFO or device).
void remove(const QString& path);

// Replaces the file atomically (temporary file and rename); false on any failure, and
// when something other than a regular file (or a link to one) is at the path.
bool writeAtomically(const QString& path, const QByteArray& bytes);

} // namespace qbsignalcachefile
