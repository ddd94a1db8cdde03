#include "ui/AboutWindow.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTranslator>

#include <gtest/gtest.h>

namespace {

QString labelText(const QBAboutWindow& window, const char* name)
{
    const auto* label = window.findChild<QLabel*>(QString::fromLatin1(name));
    return label ? label->text() : QString();
}

TEST(AboutWindowTest, ShowsIconVersionLicenceAndHomepageAndOpensAboutQt)
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
    EXPECT_TRUE(labelText(window, "copyrightLabel").contains(QStringLiteral("2026")));
    const QString license = labelText(window, "licenseLabel");
    EXPECT_TRUE(
        license.contains(QStringLiteral("<a href=\"https://www.gnu.org/licenses/gpl-3.0.html\">")));
    EXPECT_TRUE(license.contains(QStringLiteral("GPL-3.0-or-later")));
    EXPECT_TRUE(labelText(window, "homepageLabel")
                    .contains(QStringLiteral("href=\"https://quillbox2.org/\"")));
    for (const char* name : {"licenseLabel", "homepageLabel"}) {
        EXPECT_TRUE(window.findChild<QLabel*>(QString::fromLatin1(name))->openExternalLinks())
            << name;
    }

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
