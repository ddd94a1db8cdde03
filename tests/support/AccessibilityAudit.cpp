#include "AccessibilityAudit.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QButtonGroup>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>
#include <QSet>
#include <QTest>

namespace {

bool isInteractive(QAccessible::Role role)
{
    switch (role) {
    case QAccessible::Button:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::List:
    case QAccessible::Table:
    case QAccessible::Tree:
    case QAccessible::SpinBox:
    case QAccessible::Slider:
    case QAccessible::Link:
    case QAccessible::PageTab:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropDown:
        return true;
    default:
        return false;
    }
}

// Parts that Qt builds into another control (a line edit's clear button, a combo box's
// field, a scroll area's bars) are announced with their owner.
bool isInnerPart(const QWidget* widget)
{
    for (const QWidget* parent = widget->parentWidget(); parent != nullptr;
         parent = parent->parentWidget()) {
        if (qobject_cast<const QLineEdit*>(parent) || qobject_cast<const QComboBox*>(parent) ||
            qobject_cast<const QAbstractSpinBox*>(parent))
            return true;
        if (parent->isWindow())
            break;
    }
    return false;
}

QString describe(const QWidget* widget)
{
    return QStringLiteral("%1 \"%2\"")
        .arg(QString::fromLatin1(widget->metaObject()->className()), widget->objectName());
}

bool hasLetter(const QString& text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
}

// The name a screen reader announces: the control's own name, else that of the label
// that stands for it (on Linux a combo box's Name is its current item, so the labelled-by
// relation is what orca reads).
QString spokenName(QAccessibleInterface* iface)
{
    QWidget* widget = qobject_cast<QWidget*>(iface->object());
    // Qt's AT-SPI bridge ignores a combo box's own accessible name.
    if (widget != nullptr && !widget->accessibleName().isEmpty() &&
        iface->role() != QAccessible::ComboBox)
        return widget->accessibleName();
    for (const auto& [label, relation] : iface->relations(QAccessible::Label)) {
        Q_UNUSED(relation);
        const QString text = label->text(QAccessible::Name);
        if (!text.isEmpty())
            return text;
    }
    if (iface->role() == QAccessible::ComboBox || iface->role() == QAccessible::EditableText ||
        iface->role() == QAccessible::List)
        return QString();
    return iface->text(QAccessible::Name);
}

void checkNames(QWidget* widget, QAccessibleInterface* iface, QStringList& faults)
{
    const QString name = spokenName(iface);
    if (!hasLetter(name))
        faults << QStringLiteral("%1 has no name that says what it does (\"%2\")")
                      .arg(describe(widget), name);
    if (iface->role() == QAccessible::List || iface->role() == QAccessible::Table) {
        for (int row = 0; row < iface->childCount(); ++row) {
            QAccessibleInterface* item = iface->child(row);
            if (item != nullptr && item->role() != QAccessible::ScrollBar &&
                item->text(QAccessible::Name).trimmed().isEmpty())
                faults << QStringLiteral("%1: row %2 has no text").arg(describe(widget)).arg(row);
        }
    }
}

QList<QWidget*> interactiveControls(QWidget* window)
{
    QList<QWidget*> controls;
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        if (widget->window() != window || !widget->isVisible() || isInnerPart(widget))
            continue;
        QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(widget);
        if (iface != nullptr && isInteractive(iface->role()))
            controls << widget;
    }
    return controls;
}

// The controls Tab visits, in order, starting from the window's first focus stop.
QList<QWidget*> tabCycle(QWidget* window, QStringList& faults)
{
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window))
        faults << QStringLiteral("%1 could not be activated").arg(describe(window));
    QList<QWidget*> visited;
    QWidget* start = window->focusWidget();
    if (start == nullptr) {
        window->setFocus(Qt::TabFocusReason);
        QTest::keyClick(window, Qt::Key_Tab);
        start = window->focusWidget();
    }
    QWidget* current = start;
    // Tab may stay in a widget a while (a label steps through its links); a chain longer
    // than twice the window's widgets has cycled already.
    const qsizetype limit = 2 * window->findChildren<QWidget*>().size() + 2;
    for (qsizetype presses = 0; current != nullptr && presses < limit; ++presses) {
        if (!visited.contains(current))
            visited << current;
        QWidget* previous = current;
        QTest::keyClick(current, Qt::Key_Tab);
        current = window->focusWidget();
        if (current == start && previous != start)
            break;
    }
    return visited;
}

bool reachedByTab(QWidget* control, const QList<QWidget*>& cycle)
{
    if (cycle.contains(control))
        return true;
    // Tab stops once in an exclusive group; the arrow keys move inside it.
    auto* radio = qobject_cast<QRadioButton*>(control);
    if (radio != nullptr && radio->autoExclusive()) {
        return std::any_of(cycle.begin(), cycle.end(), [radio](QWidget* stop) {
            auto* other = qobject_cast<QRadioButton*>(stop);
            return other != nullptr && other->parentWidget() == radio->parentWidget() &&
                   (radio->group() == nullptr || other->group() == radio->group());
        });
    }
    return false;
}

// Every control a user can operate, and whatever else asks for the Tab focus.
QList<QWidget*> tabStops(QWidget* window, const QList<QWidget*>& controls)
{
    QList<QWidget*> stops = controls;
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        if (widget->window() == window && widget->isVisible() && !isInnerPart(widget) &&
            (widget->focusPolicy() & Qt::TabFocus) && widget->focusProxy() == nullptr &&
            !stops.contains(widget))
            stops << widget;
    }
    return stops;
}

void checkTabOrder(QWidget* window, const QList<QWidget*>& controls, QStringList& faults)
{
    const QList<QWidget*> cycle = tabCycle(window, faults);
    for (QWidget* control : tabStops(window, controls)) {
        if (!control->isEnabled() || reachedByTab(control, cycle))
            continue;
        faults << QStringLiteral("%1 cannot be reached with Tab").arg(describe(control));
    }
}

QChar mnemonic(const QString& text)
{
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != QLatin1Char('&'))
            continue;
        if (text[i + 1] != QLatin1Char('&'))
            return text[i + 1].toLower();
        ++i;
    }
    return QChar();
}

void checkMnemonics(const QString& where, const QStringList& texts, QStringList& faults)
{
    QHash<QChar, QString> seen;
    for (const QString& text : texts) {
        const QChar key = mnemonic(text);
        if (key.isNull())
            continue;
        if (seen.contains(key))
            faults << QStringLiteral("%1: \"%2\" and \"%3\" share the mnemonic %4")
                          .arg(where, seen.value(key), text, key);
        else
            seen.insert(key, text);
    }
}

void checkMenuMnemonics(QMenu* menu, QStringList& faults)
{
    QStringList texts;
    for (QAction* action : menu->actions()) {
        if (!action->isSeparator() && action->isVisible())
            texts << action->text();
        if (action->menu() != nullptr)
            checkMenuMnemonics(action->menu(), faults);
    }
    checkMnemonics(QStringLiteral("menu \"%1\"").arg(menu->title()), texts, faults);
}

void checkAllMnemonics(QWidget* window, const QList<QWidget*>& controls, QStringList& faults)
{
    QStringList texts;
    for (QWidget* control : controls) {
        if (auto* button = qobject_cast<QAbstractButton*>(control))
            texts << button->text();
    }
    for (QLabel* label : window->findChildren<QLabel*>()) {
        if (label->window() == window && label->isVisible() && label->buddy() != nullptr)
            texts << label->text();
    }
    // Alt and a menu's letter open the menu from anywhere in the window.
    for (QMenuBar* bar : window->findChildren<QMenuBar*>()) {
        for (QAction* action : bar->actions()) {
            texts << action->text();
            if (action->menu() != nullptr)
                checkMenuMnemonics(action->menu(), faults);
        }
    }
    checkMnemonics(describe(window), texts, faults);
}

} // namespace

QStringList accessibilityFaults(QWidget* window)
{
    QStringList faults;
    if (window == nullptr || !window->isVisible())
        return {QStringLiteral("the window to check is not shown")};
    const QList<QWidget*> controls = interactiveControls(window);
    if (controls.isEmpty())
        faults << QStringLiteral("%1 exposes no control at all").arg(describe(window));
    for (QWidget* control : controls)
        checkNames(control, QAccessible::queryAccessibleInterface(control), faults);
    checkTabOrder(window, controls, faults);
    checkAllMnemonics(window, controls, faults);
    return faults;
}
