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
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
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

QBTestHome* gProcessHome = nullptr;

void removeProcessHome()
{
    delete gProcessHome;
    gProcessHome = nullptr;
}

// Kills what a test started and left running (the application or the helper of a killed
// test): every process whose HOME or TMPDIR lies in |path|, which is where the tests point
// the programs they start.
void endProgramsLivingIn(const std::string& path)
{
    const std::string home = "HOME=" + path + "/";
    const std::string temporary = "TMPDIR=" + path;
    DIR* processes = ::opendir("/proc");
    if (!processes) {
        return;
    }
    while (const dirent* entry = ::readdir(processes)) {
        const pid_t pid = static_cast<pid_t>(std::atoi(entry->d_name));
        if (pid <= 0 || pid == ::getpid()) {
            continue;
        }
        std::ifstream environment("/proc/" + std::string(entry->d_name) + "/environ");
        std::string variable;
        while (std::getline(environment, variable, '\0')) {
            if (variable.starts_with(home) || variable == temporary ||
                variable.starts_with(temporary + "/")) {
                ::kill(pid, SIGKILL);
                break;
            }
        }
    }
    ::closedir(processes);
}

// Forks a process that waits until this one has ended, whatever way (a crash, SIGKILL from
// a timeout), and then removes |path|. It learns of the end from a pipe whose only writer
// is this process: the read returns when the kernel closes it. What the test started and
// left running is ended first, so it cannot write the tree again. It leaves the session so a
// Ctrl+C or a kill of the process group spares it, and keeps none of the caller's
// descriptors, so nobody waiting for the test's output waits for it.
void startRemoverAfterExit(const std::string& path)
{
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        return;
    }
    const pid_t child = ::fork();
    if (child != 0) {
        ::close(ends[0]); // the write end stays open, unseen by programs the tests start
        if (child > 0) {
            ::waitpid(child, nullptr, 0);
        }
        return;
    }
    // Forked once more and left by the first child, so it is no descendant of the test:
    // a runner ending a test that timed out kills the test's whole tree of processes.
    if (::fork() != 0) {
        ::_exit(0);
    }
    ::setsid();
    ::signal(SIGINT, SIG_IGN);
    ::signal(SIGHUP, SIG_IGN);
    const int null = ::open("/dev/null", O_RDWR);
    for (int descriptor = 0; descriptor <= 2; ++descriptor) {
        ::dup2(null, descriptor);
    }
    ::close_range(3, static_cast<unsigned>(ends[0]) - 1, 0);
    ::close_range(static_cast<unsigned>(ends[0]) + 1, ~0U, 0);
    char byte;
    while (::read(ends[0], &byte, 1) != 0 && errno == EINTR) {
    }
    endProgramsLivingIn(path);
    removeEntry(AT_FDCWD, path.c_str());
    ::_exit(0);
}

} // namespace

void installProcessTestHome()
{
    gProcessHome = new QBTestHome;
    ::setenv("TMPDIR", QFile::encodeName(gProcessHome->path()).constData(), 1);
    startRemoverAfterExit(QFile::encodeName(gProcessHome->path()).toStdString());
    // Registered before any static of the tests exists, so it runs after their
    // destructors, which may still write (settings flushed at exit).
    std::atexit(removeProcessHome);
}

void removeTree(const QString& path)
{
    removeEntry(AT_FDCWD, QFile::encodeName(path).constData());
}

QBTestHome::QBTestHome()
    // Short: the single-instance socket lies inside, and socket paths end at 107 bytes.
    : mDir(QDir::tempPath() + QStringLiteral("/qbtest-XXXXXX"))
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
