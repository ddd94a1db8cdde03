#pragma once

// Loads the user's translation of the program's texts from the bundle's translations
// folder, falling back to English. Without it qtTrId() would show bare text keys.
void installTranslations();
