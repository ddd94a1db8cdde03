#include "ui/AboutWindow.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTranslator>

#include <gtest/gtest.h>

namespace {

TEST(AboutWindowTest, ShowsIconAndVersionAndOpensAboutQtWindowModal)
{
    QTranslator english; // the window's texts, as the program shows them
    ASSERT_TRUE(english.load(QStringLiteral(QB_BUILD_SHARE_DIR "/translations/quillbox2_en.qm")));
    QApplication::installTranslator(&english);
    QApplication::setWindowIcon(
        QIcon(QStringLiteral(QB_ICONS_DIR "/hicolor/48x48/apps/org.quillbox2.Quillbox2.png")));
    QBAboutWindow window(QStringLiteral("Quillbox2"), QStringLiteral("1.2.3"));
    window.show();
    const auto* icon = window.findChild<QLabel*>(QStringLiteral("iconLabel"));
    ASSERT_NE(icon, nullptr);
    EXPECT_TRUE(icon->isVisible());
    EXPECT_FALSE(icon->pixmap().isNull());
    EXPECT_TRUE(window.versionText().contains(QStringLiteral("1.2.3")));

    // The About Qt box is window-modal over the About window and names Qt's version.
    auto* aboutQt = window.findChild<QPushButton*>(QStringLiteral("aboutQtButton"));
    ASSERT_NE(aboutQt, nullptr);
    QTest::mouseClick(aboutQt, Qt::LeftButton);
    QMessageBox* box = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        box = window.findChild<QMessageBox*>(QStringLiteral("aboutQtBox"));
        return box && box->isVisible();
    }));
    EXPECT_EQ(box->windowModality(), Qt::WindowModal);
    EXPECT_EQ(box->windowTitle(), QStringLiteral("About Qt"));
    EXPECT_TRUE(box->text().contains(QString::fromLatin1(qVersion())));
    QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return !window.findChild<QMessageBox*>(QStringLiteral("aboutQtBox")); }));
    QApplication::setWindowIcon(QIcon());
    QApplication::removeTranslator(&english);
}

} // namespace
