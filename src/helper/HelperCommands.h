#pragma once

// The two ways the helper runs; each returns the process's exit code.
namespace qbhelper {

// Keeps changing the signature until auto-randomize is turned off or a signal ends it.
// Only one runs per user: a second one says so and returns at once.
int runRotation();

// Writes the next quote of the cycle to standard output (for mail clients that run a
// command for every message); log lines go to standard error meanwhile.
int printNextQuote();

// Writes the next quote of the cycle into the signature file and prints it (for a desktop
// keyboard shortcut or a terminal); log lines go to standard error.
int writeNextQuoteAndPrint();

} // namespace qbhelper
