#pragma once

class QWidget;

// Puts child views into container views so that they follow the container's size.
class LMViewInstaller
{
public:
    LMViewInstaller() = delete;

    // Makes |view| a child of |container| filling it edge to edge, now and after every
    // resize of the container.
    static void installViewSameSizeAsSuperInto(QWidget* view, QWidget* container);
    // Shows |newView| where |oldView| was inside |superView| (installs it when |oldView|
    // is null). The old view is hidden and kept, so it can come back later.
    static void replaceChildView(QWidget* oldView, QWidget* newView, QWidget* superView);
};
