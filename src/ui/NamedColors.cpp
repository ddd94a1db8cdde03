#include "ui/NamedColors.h"

namespace {

QColor mix(const QColor& from, const QColor& to, qreal amount)
{
    const auto channel = [amount](int a, int b) { return qRound(a + (b - a) * amount); };
    return QColor(channel(from.red(), to.red()), channel(from.green(), to.green()),
                  channel(from.blue(), to.blue()));
}

} // namespace

bool QBNamedColors::isDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

QColor QBNamedColors::color(Name name, const QPalette& palette)
{
    const QColor base = palette.color(QPalette::Base);
    const QColor highlight = palette.color(QPalette::Highlight);
    const bool dark = isDark(palette);
    switch (name) {
    case Name::GradientTop:
        // Light: the text background itself; dark: a shade lifted off it.
        return dark ? mix(base, palette.color(QPalette::Text), 0.04) : base;
    case Name::GradientBottom:
        return mix(base, highlight, dark ? 0.22 : 0.14);
    case Name::OverlayTint:
        return mix(palette.color(QPalette::Text), highlight, 0.35);
    case Name::QuietText:
        return mix(palette.color(QPalette::WindowText), palette.color(QPalette::Window), 0.4);
    }
    return base;
}
