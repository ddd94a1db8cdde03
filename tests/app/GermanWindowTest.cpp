// The launched application and the command lines of both executables under LANGUAGE=de.
#include "app/EditorAreaViewController.h"
#include "core/QuotesRepository.h"
#include "ui/ElidedLabel.h"
#include "ui/MessageBar.h"

#include "LaunchedAppFixture.h"

#include <QAction>
#include <QCheckBox>
#include <QListView>
#include <QMenuBar>
#include <QMessageBox>
#include <QProcess>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

// Standard output and error of |program| with |arguments| under LANGUAGE=de.
QString runGerman(const QString& program, const QStringList& arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LANGUAGE"), QStringLiteral("de"));
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.waitForFinished(20000);
    return QString::fromUtf8(process.readAllStandardOutput() + process.readAllStandardError());
}

class GermanWindowTest : public LaunchedAppFixture
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(qEnvironmentVariable("LANGUAGE"), QStringLiteral("de"));
        LaunchedAppFixture::SetUp();
    }
};

TEST_F(GermanWindowTest, MenusButtonsAlertsAndTheSettingsPageReadGerman)
{
    QStringList menus;
    for (const QAction* menu : mWindow->menuBar()->actions())
        menus << menu->text();
    EXPECT_EQ(menus, (QStringList{u"&Datei"_s, u"&Bearbeiten"_s, u"&Zitate"_s, u"&Hilfe"_s}));
    EXPECT_EQ(child<QAbstractButton>("removeAllButton")->text(), u"Alle e&ntfernen"_s);

    // Remove All asks first, with the count; the first-run hint reads German too.
    const auto count = qsizetype(CQuotesRepository::getInstance().mQuotes.size());
    child<QAction>("removeAllQuotesAction")->trigger();
    auto* question = mWindow->findChild<QMessageBox*>();
    ASSERT_NE(question, nullptr);
    EXPECT_EQ(question->windowTitle(), u"Alle %1 Zitate entfernen?"_s.arg(count));
    question->done(0);
    const QBMessageItem* hint = mWindow->findChild<QBMessageItem*>();
    ASSERT_NE(hint, nullptr);
    EXPECT_TRUE(hint->text().startsWith(u"Wählen Sie zuerst"_s)) << hint->text().toStdString();

    // The settings page, built from its form with text ids.
    QWidget* settings = mWindow->editorAreaViewController()->settingsViewController();
    ASSERT_NE(settings, nullptr);
    EXPECT_EQ(settings->findChild<QCheckBox*>(u"shareUsageStatisticsCheckBox"_s)->text(),
              u"Anonyme Nutzungsstatistiken &teilen"_s);

    // The status bar reads German and its longer texts do not widen the window.
    mWindow->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(mWindow));
    EXPECT_EQ(child<LMElidedLabel>("signaturePathLabel")->fullText(),
              u"Keine Signaturdatei ausgewählt"_s);
    EXPECT_EQ(child<LMElidedLabel>("rotationLabel")->fullText(),
              u"Automatischer Zitatwechsel ist aus"_s);
    EXPECT_EQ(child<QToolButton>("nextQuoteButton")->text(), u"Nächstes Zitat jetzt"_s);
    EXPECT_LE(mWindow->minimumSizeHint().width(), mWindow->width());
}

TEST(GermanCommandLineTest, HelpAndErrorsOfBothExecutablesReadGerman)
{
    const QString app = QStringLiteral(QB_APP_PATH);
    const QString help = runGerman(app, {u"--help"_s});
    EXPECT_TRUE(help.contains(u"Die Version anzeigen und beenden."_s)) << help.toStdString();
    EXPECT_TRUE(help.contains(u"Optionen:"_s)) << help.toStdString(); // Qt's own text
    const QString error = runGerman(app, {u"--bogus"_s});
    EXPECT_TRUE(error.contains(u"Unbekannte Option"_s)) << error.toStdString(); // Qt's own
    EXPECT_TRUE(error.contains(u"„quillbox2 --help“ zeigt weitere Informationen."_s))
        << error.toStdString();
    const QString helperHelp = runGerman(QStringLiteral(QB_HELPER_PATH), {u"--help"_s});
    EXPECT_TRUE(helperHelp.contains(u"Das nächste Zitat auf der Standardausgabe ausgeben"_s))
        << helperHelp.toStdString();
}

} // namespace
