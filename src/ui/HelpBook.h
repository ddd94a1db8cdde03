#pragma once

#include <QString>
#include <QUrl>

#include <optional>

// The application's help: HTML pages in a folder of the bundle's resources, opened in
// the user's browser, or in the program's own help window where no browser opens them.
// Which folder, if any, is the bundle's "CFBundleHelpBookName".
// Main thread only.
class QBHelpBook
{
public:
    QBHelpBook() = delete;

    // Opens the bundle's help book in the browser (in the help window, with a message,
    // when that fails); an empty anchor opens the index. False (nothing shown) when the bundle
    // names no help book or it is missing.
    static bool openHelpAnchor(const QString& anchor = {});

    // The address openHelpAnchor() opens: the page holding an element with the id
    // |anchor| (the index when no page does), with the anchor as fragment. Empty
    // without a help book.
    static QUrl helpURL(const QString& anchor = {});

    // The bundle's "CFBundleHelpBookName": the help folder's name among its resources,
    // "help"; std::nullopt stands for a bundle without the key.
    static std::optional<QString> bundleHelpBookName();
    static void setBundleHelpBookName(std::optional<QString> name);
};
