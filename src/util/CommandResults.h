#pragma once

#include <QString>

class QBUndoManager;

// Tells the user what a command did, through QBUserMessages. An undoable result carries
// an "Undo" button that runs the ordinary undo, and is taken back as soon as Undo would
// take back something else (the user undid it another way, or did something new).
// Main thread only.
class QBCommandResults
{
public:
    QBCommandResults() = delete;

    // Topic of the results: a new result replaces the one shown.
    static const QString kTopic;

    static void report(const QString& text);
    // To be called right after the command registered its undo steps on |undoManager|.
    static void reportUndoable(const QString& text, QBUndoManager* undoManager);
};
