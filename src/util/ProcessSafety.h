#pragma once

// Makes the process safe against how it may be started, before anything else opens a
// file: standard input, output and error are open (on /dev/null when they were closed,
// so no later file or connection takes their numbers and receives log lines), SIGPIPE
// is ignored (a log line to a pipe whose reader has gone must not end the process before
// it saves), and files and folders are created readable by the user only (the umask
// 077), as they hold the user's quotes, settings and habits.
// Call first thing in main() of every executable.
void makeProcessSafe();
