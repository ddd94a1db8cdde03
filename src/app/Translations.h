#pragma once

class QTranslator;

// Loads the user's translation of the program's texts from the bundle's translations
// folder into |translator|, falling back to English; false when neither is there.
bool loadTranslation(QTranslator& translator);

// Installs that translation for the whole program. Without it qtTrId() would show bare
// text keys.
void installTranslations();
