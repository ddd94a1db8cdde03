#pragma once

#include <QTranslator>

// The program's texts in the user's first language that has a translation (English
// when none has), and Qt's own texts (standard buttons, command-line errors) in that
// same language, so one window never mixes two languages. The user's languages come
// from the system locale: LANGUAGE, then LC_ALL, LC_MESSAGES and LANG.
class QBTranslations
{
public:
    QBTranslations();

    // False when not even the English table is in the bundle.
    bool isLoaded() const { return !mProgram.isEmpty(); }
    // "de", "en" ...: the language of the program's table that was loaded.
    QString language() const { return mProgram.language(); }
    // Installs both tables in the running application; they stay installed while this
    // object lives.
    void install();

private:
    QTranslator mProgram;
    QTranslator mQt;
};

// Installs the translations for the whole process, once. Without them qtTrId() would
// show bare text keys.
void installTranslations();
