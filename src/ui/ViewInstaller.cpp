#include "ui/ViewInstaller.h"

#include <QLayout>
#include <QVBoxLayout>
#include <QWidget>

namespace {

// A margin-free layout, so the installed view takes the container's whole size.
QLayout& fillingLayoutOf(QWidget* container)
{
    if (QLayout* layout = container->layout())
        return *layout;
    auto* layout = new QVBoxLayout(container);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    return *layout;
}

} // namespace

void LMViewInstaller::installViewSameSizeAsSuperInto(QWidget* view, QWidget* container)
{
    if (view == nullptr || container == nullptr)
        return;
    fillingLayoutOf(container).addWidget(view);
    view->show();
}

void LMViewInstaller::replaceChildView(QWidget* oldView, QWidget* newView, QWidget* superView)
{
    if (newView == nullptr || superView == nullptr || oldView == newView)
        return;
    QLayout& layout = fillingLayoutOf(superView);
    if (oldView != nullptr) {
        layout.removeWidget(oldView);
        oldView->hide();
    }
    layout.addWidget(newView);
    newView->show();
}
