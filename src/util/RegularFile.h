#pragma once

#include <QFile>
#include <QString>

#include <sys/types.h>

// Opens |path| for reading without blocking and keeps it open in |file| only when the
// opened descriptor is a regular file. A check of the path before a blocking open loses
// to a FIFO swapped in between, and the open then waits for a writer for ever. On
// failure |file| stays closed and |error| holds the system's reason (or "not a regular
// file"), and errno the error number (0 for "not a regular file").
bool openRegularFileForReading(QFile& file, const QString& path, QString& error);
