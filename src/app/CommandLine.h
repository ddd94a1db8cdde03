#pragma once

#include <QStringList>

#include <optional>

// What the command line asks of this launch.
struct QBLaunchRequest
{
    // Set when the program ends here, with this exit code.
    std::optional<int> exitCode;
    // Files named on the command line, to import into the window (absolute paths).
    QStringList filesToImport;
};

// Reads quillbox2's command line before the GUI starts, so that --help, --version,
// mistakes and the scripted --import and --export are answered on the terminal, even
// without a display. Qt's own GUI options (-style, -platform, ...) pass through
// untouched for QApplication to take.
QBLaunchRequest handleCommandLine(int argc, char* argv[]);
