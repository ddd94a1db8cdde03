#pragma once

#include <QColor>
#include <QPalette>

// The program's own colours by name. Each is derived from the palette in use, so the
// windows look right in a light and in a dark desktop theme alike.
class QBNamedColors
{
public:
    enum class Name
    {
        GradientTop,    // top of the background behind lists and editors
        GradientBottom, // its bottom: a touch of the highlight colour
        OverlayTint,    // the decorative feather drawing behind the text
        QuietText       // secondary texts such as counts and hints
    };

    QBNamedColors() = delete;

    static QColor color(Name name, const QPalette& palette);
    // A dark theme shows light text on a dark window background.
    static bool isDark(const QPalette& palette);
};
