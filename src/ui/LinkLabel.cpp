#include "ui/LinkLabel.h"

#include <QAccessibleWidget>
#include <QDesktopServices>
#include <QRegularExpression>
#include <QTextDocument>
#include <QUrl>

namespace {

class LinkLabelAccessible : public QAccessibleWidget
{
public:
    explicit LinkLabelAccessible(QBLinkLabel* label) : QAccessibleWidget(label, QAccessible::Link)
    {
        addControllingSignal(QStringLiteral("linkActivated(QString)"));
    }

    QString text(QAccessible::Text kind) const override
    {
        const auto* label = static_cast<const QBLinkLabel*>(widget());
        switch (kind) {
        case QAccessible::Name:
            if (!label->accessibleName().isEmpty())
                return label->accessibleName();
            {
                QTextDocument document;
                document.setHtml(label->text());
                return document.toPlainText().simplified();
            }
        case QAccessible::Value:
            return label->linkAddress();
        default:
            return QAccessibleWidget::text(kind);
        }
    }

    QStringList actionNames() const override { return {pressAction()}; }

    void doAction(const QString& action) override
    {
        if (action == pressAction())
            QDesktopServices::openUrl(
                QUrl(static_cast<const QBLinkLabel*>(widget())->linkAddress()));
    }
};

QAccessibleInterface* linkLabelFactory(const QString& className, QObject* object)
{
    if (className == QLatin1String("QBLinkLabel") && object != nullptr && object->isWidgetType())
        return new LinkLabelAccessible(static_cast<QBLinkLabel*>(object));
    return nullptr;
}

} // namespace

QBLinkLabel::QBLinkLabel(const QString& html, QWidget* parent) : QLabel(html, parent)
{
    static const bool installed = [] {
        QAccessible::installFactory(linkLabelFactory);
        return true;
    }();
    Q_UNUSED(installed);
    setTextFormat(Qt::RichText);
    setOpenExternalLinks(true);
    // Keyboard users reach the link with Tab and follow it with Return.
    setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
}

QString QBLinkLabel::linkAddress() const
{
    static const QRegularExpression href(QStringLiteral("href\\s*=\\s*\"([^\"]*)\""));
    return href.match(text()).captured(1);
}
