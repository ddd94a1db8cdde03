#pragma once

#include <QIcon>
#include <QString>

// The application's icon from the bundle's hicolor tree (share/icons/hicolor beside
// share/quillbox2), so that a relocated or uninstalled build shows it too. The icon
// theme is asked only when the bundle has none.
QIcon applicationIcon();

// The icon from the hicolor folder |hicolorFolder|: the scalable SVG when Qt can draw
// SVG, otherwise every PNG size there, because a system without Qt's SVG plugin would
// show no icon at all.
QIcon applicationIconFromFolder(const QString& hicolorFolder, bool svgSupported);
