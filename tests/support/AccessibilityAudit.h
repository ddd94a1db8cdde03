#pragma once

#include <QStringList>

class QWidget;

// What a keyboard-only or screen-reader user would stumble on in |window|, one line per
// fault, read through Qt's accessibility interfaces (what AT-SPI hands a screen reader):
// - an interactive control whose name is empty or holds no letter (a bare symbol, say);
// - a combo box named only by the item it shows;
// - a list whose rows have no text;
// - a visible, enabled control that pressing Tab from the first one never reaches
//   (an exclusive group of radio buttons counts as one stop, as Qt's Tab treats it);
// - two mnemonics on the same letter among the window's menu titles, buttons and labels,
//   or among the items of one menu.
// The window must be shown; it is activated so that Tab moves the focus as for a user.
QStringList accessibilityFaults(QWidget* window);
