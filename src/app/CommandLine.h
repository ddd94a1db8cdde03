#pragma once

#include <optional>

// Reads quillbox2's command line before the GUI starts, so that --help, --version and
// mistakes are answered on the terminal, even without a display. Qt's own GUI options
// (-style, -platform, ...) pass through untouched for QApplication to take.
// Returns the exit code when the program ends here, nothing when it goes on to its window.
std::optional<int> handleCommandLine(int argc, char* argv[]);
