#include "ui/AppearanceHelper.h"

#include "core/Bundle.h"
#include "ui/NamedColors.h"

#include <QEvent>
#include <QFileInfo>
#include <QIcon>
#include <QLinearGradient>
#include <QPainter>
#include <QWidget>

namespace {

// Paints the gradient in the view's paint event, before the view paints itself, with
// the view's current palette: a theme change repaints with the new colours.
class GradientPainter : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            auto* view = static_cast<QWidget*>(watched);
            QPainter painter(view);
            QLinearGradient gradient(0, 0, 0, view->height());
            gradient.setColorAt(
                0, QBNamedColors::color(QBNamedColors::Name::GradientTop, view->palette()));
            gradient.setColorAt(
                1, QBNamedColors::color(QBNamedColors::Name::GradientBottom, view->palette()));
            painter.fillRect(view->rect(), gradient);
        }
        return false;
    }
};

} // namespace

void QBAppearanceHelper::setGradientBackground(QWidget* view)
{
    static const char* const kMarker = "QBGradientBackground";
    if (view == nullptr || view->property(kMarker).toBool())
        return;
    view->setProperty(kMarker, true);
    view->setAttribute(Qt::WA_StyledBackground, false);
    view->setAutoFillBackground(false);
    view->installEventFilter(new GradientPainter(view));
    view->update();
}

QString QBAppearanceHelper::imagePath(const QString& name)
{
    const QString folder =
        QString::fromStdString((QBBundle::mainBundle().resourcePath() / "images").string());
    for (const char* suffix : {".svg", ".png"}) {
        const QString path = folder + QLatin1Char('/') + name + QLatin1String(suffix);
        if (QFileInfo::exists(path))
            return path;
    }
    return QString();
}

QImage QBAppearanceHelper::tintedImage(const QString& name, const QWidget* view, int size,
                                       qreal alpha)
{
    const QString path = imagePath(name);
    if (path.isEmpty() || view == nullptr)
        return QImage();
    const qreal ratio = view->devicePixelRatioF();
    QImage image = QIcon(path)
                       .pixmap(QSize(size, size), ratio)
                       .toImage()
                       .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    QColor tint = QBNamedColors::color(QBNamedColors::Name::OverlayTint, view->palette());
    tint.setAlphaF(alpha);
    painter.fillRect(image.rect(), tint);
    return image;
}
