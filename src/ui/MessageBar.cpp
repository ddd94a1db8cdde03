#include "ui/MessageBar.h"

#include "ui/HelpBook.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

const QString kItemClassName = QStringLiteral("QBMessageItem");

// Screen readers read a widget of the alert role out when it appears.
QAccessibleInterface* alertAccessible(const QString& className, QObject* object)
{
    if (className == kItemClassName && object != nullptr && object->isWidgetType())
        return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::AlertMessage);
    return nullptr;
}

void installAccessibleFactoryOnce()
{
    static const bool installed = [] {
        QAccessible::installFactory(alertAccessible);
        return true;
    }();
    Q_UNUSED(installed);
}

QColor mixed(const QColor& base, const QColor& tint, qreal amount)
{
    return QColor::fromRgbF(base.redF() + (tint.redF() - base.redF()) * amount,
                            base.greenF() + (tint.greenF() - base.greenF()) * amount,
                            base.blueF() + (tint.blueF() - base.blueF()) * amount);
}

QStyle::StandardPixmap iconOf(QBUserMessage::Kind kind)
{
    switch (kind) {
    case QBUserMessage::Kind::Success:
        return QStyle::SP_DialogApplyButton;
    case QBUserMessage::Kind::Warning:
        return QStyle::SP_MessageBoxWarning;
    case QBUserMessage::Kind::Error:
        return QStyle::SP_MessageBoxCritical;
    case QBUserMessage::Kind::Information:
        break;
    }
    return QStyle::SP_MessageBoxInformation;
}

} // namespace

QBMessageItem::QBMessageItem(const QBUserMessage& message, QWidget* parent)
    : QFrame(parent), mMessage(message)
{
    installAccessibleFactoryOnce();
    setAccessibleName(message.text);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 6, 6, 6);
    layout->setSpacing(8);

    auto* icon = new QLabel(this);
    const int iconSize = style()->pixelMetric(QStyle::PM_SmallIconSize);
    icon->setPixmap(style()->standardIcon(iconOf(message.kind)).pixmap(iconSize));
    icon->setAlignment(Qt::AlignTop);
    layout->addWidget(icon);

    mText = new QLabel(this);
    mText->setObjectName(QStringLiteral("messageText"));
    mText->setWordWrap(true);
    mText->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    if (message.helpAnchor.isEmpty()) {
        mText->setTextFormat(Qt::PlainText);
        mText->setText(message.text);
        mText->setTextInteractionFlags(Qt::TextSelectableByMouse);
    } else {
        mText->setTextFormat(Qt::RichText);
        mText->setText(QStringLiteral("%1 <a href=\"#%2\">%3</a>")
                           .arg(message.text.toHtmlEscaped(), message.helpAnchor.toHtmlEscaped(),
                                message.linkText.toHtmlEscaped()));
        mText->setTextInteractionFlags(Qt::TextBrowserInteraction);
        connect(mText, &QLabel::linkActivated, this,
                [](const QString& link) { QBHelpBook::openHelpAnchor(link.mid(1)); });
    }
    layout->addWidget(mText, 1);

    if (!message.actionText.isEmpty()) {
        auto* action = new QPushButton(message.actionText, this);
        action->setObjectName(QStringLiteral("messageAction"));
        // Clicking it must not end an edit open in the editor.
        action->setFocusPolicy(Qt::TabFocus);
        connect(action, &QPushButton::clicked, this, [this] {
            const std::function<void()> run = mMessage.action;
            close();
            if (run)
                run();
        });
        layout->addWidget(action, 0, Qt::AlignVCenter);
    }

    auto* closeButton = new QToolButton(this);
    closeButton->setObjectName(QStringLiteral("messageClose"));
    closeButton->setAutoRaise(true);
    closeButton->setFocusPolicy(Qt::TabFocus);
    closeButton->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    //% "Close"
    closeButton->setToolTip(qtTrId("MessageCloseButton"));
    closeButton->setAccessibleName(closeButton->toolTip());
    connect(closeButton, &QToolButton::clicked, this, &QBMessageItem::close);
    layout->addWidget(closeButton, 0, Qt::AlignTop);
}

QString QBMessageItem::text() const
{
    return mMessage.text;
}

void QBMessageItem::close()
{
    emit closed(this);
}

QColor QBMessageItem::tint() const
{
    switch (mMessage.kind) {
    case QBUserMessage::Kind::Success:
        return QColor(0x2e, 0x9e, 0x4f);
    case QBUserMessage::Kind::Warning:
        return QColor(0xe0, 0x8a, 0x00);
    case QBUserMessage::Kind::Error:
        return QColor(0xd8, 0x33, 0x33);
    case QBUserMessage::Kind::Information:
        break;
    }
    return palette().color(QPalette::Highlight);
}

void QBMessageItem::paintEvent(QPaintEvent*)
{
    // A light wash of the kind's colour over the window colour: it reads in light and dark
    // themes alike, with the theme's own text colour.
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor colour = tint();
    painter.setPen(QPen(colour, 1));
    painter.setBrush(mixed(palette().color(QPalette::Window), colour, 0.18));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
}

void QBMessageItem::resizeEvent(QResizeEvent* event)
{
    QFrame::resizeEvent(event);
    // The main window's layout knows no height for width: the wrapped text's height at
    // the width it got is set here, so the message is as tall as its lines, no taller.
    const int wanted = layout()->heightForWidth(width());
    if (wanted > 0 && wanted != height()) {
        setFixedHeight(wanted);
        // Not yet visible (a message shown before the bar has laid it out), the widget
        // gets no resize event for that height: the one being handled is its pending
        // one. Left at the old size, the text's box stays taller than the message and
        // its centred lines fall below the edge, an empty-looking message.
        layout()->setGeometry(contentsRect());
    }
}

void QBMessageItem::showEvent(QShowEvent* event)
{
    QFrame::showEvent(event);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

QBMessageBar::QBMessageBar(QBUserMessages& messages, QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("messageBar"));
    mLayout = new QVBoxLayout(this);
    mLayout->setContentsMargins(8, 8, 8, 0);
    mLayout->setSpacing(4);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    hide();
    connect(&messages, &QBUserMessages::messageShown, this, &QBMessageBar::showMessage);
    connect(&messages, &QBUserMessages::messageDismissed, this, &QBMessageBar::dismiss);
}

QList<QBMessageItem*> QBMessageBar::items() const
{
    QList<QBMessageItem*> shown;
    for (int index = 0; index < mLayout->count(); ++index) {
        if (auto* item = qobject_cast<QBMessageItem*>(mLayout->itemAt(index)->widget()))
            shown << item;
    }
    return shown;
}

QBMessageItem* QBMessageBar::item(const QString& topic) const
{
    for (QBMessageItem* shown : items()) {
        if (shown->message().topic == topic)
            return shown;
    }
    return nullptr;
}

void QBMessageBar::showMessage(const QBUserMessage& message)
{
    if (QBMessageItem* old = item(message.topic))
        remove(old);
    auto* added = new QBMessageItem(message, this);
    connect(added, &QBMessageItem::closed, this, &QBMessageBar::remove);
    mLayout->insertWidget(0, added);
    while (mLayout->count() > kMaxShown)
        remove(items().constLast());
    if (message.kind == QBUserMessage::Kind::Success)
        QTimer::singleShot(kResultTimeoutMs, added, &QBMessageItem::close);
    show();
    added->show(); // now, not at the next turn of the loop: the alert goes out with it
}

void QBMessageBar::dismiss(const QString& topic)
{
    if (QBMessageItem* shown = item(topic))
        remove(shown);
}

void QBMessageBar::remove(QBMessageItem* item)
{
    mLayout->removeWidget(item);
    item->hide();
    item->deleteLater();
    if (mLayout->count() == 0)
        hide();
}
