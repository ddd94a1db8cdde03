// The accessibility check that the window tests rely on finds each kind of fault, and
// nothing once they are mended.
#include "AccessibilityAudit.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace {

QString faultsAbout(const QStringList& faults, const QString& objectName)
{
    return faults.filter(QLatin1Char('"') + objectName + QLatin1Char('"')).join(QLatin1Char('|'));
}

TEST(AccessibilityAuditTest, ReportsUnnamedUnreachableAndClashingControlsUntilMended)
{
    QDialog window;
    auto* layout = new QVBoxLayout(&window);
    const auto add = [&](auto* widget, const char* name) {
        widget->setObjectName(QString::fromLatin1(name));
        layout->addWidget(widget);
        return widget;
    };
    auto* symbol = add(new QToolButton, "symbol");
    symbol->setText(QStringLiteral("+"));
    symbol->setFocusPolicy(Qt::NoFocus);
    auto* combo = add(new QComboBox, "combo");
    combo->addItem(QStringLiteral("Serif"));
    auto* field = add(new QLineEdit, "field");
    auto* label = add(new QLabel(QStringLiteral("&Find:")), "label");
    auto* list = add(new QListWidget, "list");
    list->addItem(QString());
    list->setAccessibleName(QStringLiteral("Things"));
    add(new QPushButton(QStringLiteral("&Open")), "open");
    auto* other = add(new QPushButton(QStringLiteral("&Other")), "other");
    add(new QRadioButton(QStringLiteral("One")), "one")->setChecked(true);
    add(new QRadioButton(QStringLiteral("Two")), "two");
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));

    QStringList faults = accessibilityFaults(&window);
    EXPECT_TRUE(faultsAbout(faults, QStringLiteral("symbol")).contains(QStringLiteral("no name")));
    EXPECT_TRUE(faultsAbout(faults, QStringLiteral("symbol")).contains(QStringLiteral("Tab")));
    EXPECT_TRUE(faultsAbout(faults, QStringLiteral("combo")).contains(QStringLiteral("no name")))
        << "named only by the item it shows";
    EXPECT_TRUE(faultsAbout(faults, QStringLiteral("field")).contains(QStringLiteral("no name")));
    EXPECT_TRUE(faultsAbout(faults, QStringLiteral("list")).contains(QStringLiteral("row 0")));
    EXPECT_EQ(faults.filter(QStringLiteral("share the mnemonic o")).size(), 1);
    // One stop for the pair of radio buttons is enough; the labelled field is named.
    EXPECT_EQ(faultsAbout(faults, QStringLiteral("two")), QString());
    EXPECT_EQ(faults.size(), 6) << faults.join(QLatin1Char('\n')).toStdString();

    symbol->setAccessibleName(QStringLiteral("Add"));
    symbol->setFocusPolicy(Qt::TabFocus);
    combo->setAccessibleName(QStringLiteral("Font"));
    label->setBuddy(field);
    list->item(0)->setText(QStringLiteral("A thing"));
    other->setText(QStringLiteral("O&ther"));
    faults = accessibilityFaults(&window);
    // Qt's AT-SPI bridge reads a pop-up by the label standing for it, never by its own name.
    EXPECT_EQ(faults.size(), 1) << faults.join(QLatin1Char('\n')).toStdString();
    EXPECT_TRUE(faultsAbout(faults, QStringLiteral("combo")).contains(QStringLiteral("no name")));
    add(new QLabel(QStringLiteral("Fo&nt:")), "fontLabel")->setBuddy(combo);
    faults = accessibilityFaults(&window);
    EXPECT_TRUE(faults.isEmpty()) << faults.join(QLatin1Char('\n')).toStdString();
}

} // namespace
