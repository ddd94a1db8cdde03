#pragma once

#include <QString>

// The help pages under share/quillbox2/help/, opened in the desktop's browser.
class QBHelpBook
{
public:
    // Opens index.html at |anchor|; false when the help is missing.
    static bool openHelpAnchor(const QString& anchor = {});
};
