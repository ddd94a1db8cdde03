#include "util/RegularFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

bool openRegularFileForReading(QFile& file, const QString& path, QString& error)
{
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) {
        error = QString::fromLocal8Bit(std::strerror(errno));
        return false;
    }
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0) {
        const int fstatError = errno;
        error = QString::fromLocal8Bit(std::strerror(fstatError));
        ::close(descriptor);
        errno = fstatError;
        return false;
    }
    if (!S_ISREG(status.st_mode)) {
        error = QStringLiteral("not a regular file");
        ::close(descriptor);
        errno = 0;
        return false;
    }
    if (!file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        error = file.errorString();
        ::close(descriptor);
        return false;
    }
    return true;
}
