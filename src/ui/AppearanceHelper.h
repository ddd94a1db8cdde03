#pragma once

#include <QImage>
#include <QString>

class QWidget;

// Gives views the program's look: the vertical gradient background and the tinted
// decorative drawings, both following the palette when the desktop theme changes.
class QBAppearanceHelper
{
public:
    QBAppearanceHelper() = delete;

    // Paints a vertical gradient (QBNamedColors GradientTop to GradientBottom) behind
    // |view|'s own painting from now on.
    static void setGradientBackground(QWidget* view);
    // The drawing |name| (an SVG or PNG of the bundle's images folder) at |size|
    // device-independent pixels, recoloured to |view|'s OverlayTint at |alpha|.
    // A null image when the bundle has no such drawing.
    static QImage tintedImage(const QString& name, const QWidget* view, int size, qreal alpha);
    // Where the bundle's drawings live.
    static QString imagePath(const QString& name);
};
