#include "util/ProcessSafety.h"

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

void makeProcessSafe()
{
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (::fcntl(descriptor, F_GETFD) == -1) {
            // open() returns the lowest free number, which is |descriptor| itself.
            const int opened =
                ::open("/dev/null", descriptor == STDIN_FILENO ? O_RDONLY : O_WRONLY);
            if (opened >= 0 && opened != descriptor) {
                ::dup2(opened, descriptor);
                ::close(opened);
            }
        }
    }
    std::signal(SIGPIPE, SIG_IGN);
    ::umask(077);
}
