#include "TestHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringEncoder>

#include <dirent.h>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace {
const char* const kVariables[] = {"HOME",           "XDG_DATA_HOME",  "XDG_CONFIG_HOME",
                                  "XDG_STATE_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"};

QString subfolderFor(const std::string& variable)
{
    if (variable == "HOME") {
        return QStringLiteral("home");
    }
    return QString::fromStdString(variable).toLower();
}
// Clears the immutable flag a test may have set (as root) so that |name| can go.
void makeMutable(int folder, const char* name)
{
    const int descriptor = ::openat(folder, name, O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0) {
        return;
    }
    int flags = 0;
    if (::ioctl(descriptor, FS_IOC_GETFLAGS, &flags) == 0 && (flags & FS_IMMUTABLE_FL)) {
        flags &= ~FS_IMMUTABLE_FL;
        (void)::ioctl(descriptor, FS_IOC_SETFLAGS, &flags);
    }
    ::close(descriptor);
}

// Removes |name| in |folder| and everything below it. Names are opened relative to their
// folder, so paths past the system's limit go too, and folders are first given back the
// permissions a test took away.
void removeEntry(int folder, const char* name)
{
    struct stat status = {};
    if (::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return;
    }
    if (S_ISDIR(status.st_mode)) {
        makeMutable(folder, name);
        if (::fchmodat(folder, name, 0700, 0) != 0) {
            // Not ours to open up; removing what is inside may still work.
        }
        const int descriptor =
            ::openat(folder, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (DIR* entries = descriptor >= 0 ? ::fdopendir(descriptor) : nullptr) {
            while (const dirent* entry = ::readdir(entries)) {
                const std::string child = entry->d_name;
                if (child != "." && child != "..") {
                    removeEntry(::dirfd(entries), child.c_str());
                }
            }
            ::closedir(entries);
        }
        ::unlinkat(folder, name, AT_REMOVEDIR);
        return;
    }
    if (::unlinkat(folder, name, 0) != 0 && errno == EPERM) {
        makeMutable(folder, name);
        ::unlinkat(folder, name, 0);
    }
}

} // namespace

void removeTree(const QString& path)
{
    removeEntry(AT_FDCWD, QFile::encodeName(path).constData());
}

QBTestHome::QBTestHome()
{
    // QTemporaryDir gives up on what a test made unwritable or too deep; removeTree does not.
    mDir.setAutoRemove(false);
    if (!mDir.isValid()) {
        throw std::runtime_error("cannot create a temporary folder for the test home");
    }
    for (const char* variable : kVariables) {
        const char* previous = std::getenv(variable);
        mSaved[variable] = previous ? std::optional<std::string>(previous) : std::nullopt;
        const QString folder = mDir.filePath(subfolderFor(variable));
        QDir().mkpath(folder);
        QFile::setPermissions(folder, QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                          QFileDevice::ExeOwner);
        ::setenv(variable, folder.toLocal8Bit().constData(), 1);
    }
}

QBTestHome::~QBTestHome()
{
    removeTree(mDir.path());
    for (const auto& [variable, value] : mSaved) {
        if (value) {
            ::setenv(variable.c_str(), value->c_str(), 1);
        } else {
            ::unsetenv(variable.c_str());
        }
    }
}

QByteArray readFileBytes(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return file.readAll();
}

bool writeFileBytes(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(bytes) == bytes.size();
}

QByteArray encodedText(const QString& text, QStringConverter::Encoding encoding, bool byteOrderMark)
{
    QStringEncoder encoder(encoding, byteOrderMark ? QStringConverter::Flag::WriteBom
                                                   : QStringConverter::Flag::Default);
    QByteArray bytes = encoder.encode(text);
    return bytes;
}
