#pragma once

class QWidget;

// Files dropped on |window| (from a file manager) are imported, all of them as one import.
void installFileDropImport(QWidget* window);
