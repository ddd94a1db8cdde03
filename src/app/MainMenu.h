#pragma once

class QMainWindow;
class QBAppDelegate;

// The application's menu bar: File > Save (Ctrl+S) and Quit (Ctrl+Q), Edit > Undo
// (Ctrl+Z) and Redo (Ctrl+Shift+Z) on the delegate's undo manager, Help > About.
// Installed on whichever window is the main window.
void installMainMenu(QMainWindow& window, QBAppDelegate& delegate);
