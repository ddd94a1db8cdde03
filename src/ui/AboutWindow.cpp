#include "ui/AboutWindow.h"

#include "ui/LinkLabel.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
QLabel* centredLabel(const QString& text, QWidget* parent, const char* objectName = "")
{
    auto* label = new QLabel(text, parent);
    label->setObjectName(QString::fromLatin1(objectName));
    label->setAlignment(Qt::AlignHCenter);
    label->setWordWrap(true);
    return label;
}

// A label whose link opens in the user's browser.
QLabel* linkLabel(const QString& html, QWidget* parent, const char* objectName)
{
    auto* label = new QBLinkLabel(html, parent);
    label->setObjectName(QString::fromLatin1(objectName));
    label->setAlignment(Qt::AlignHCenter);
    label->setWordWrap(true);
    return label;
}

QString link(const char* url, const QString& text)
{
    return QStringLiteral("<a href=\"%1\">%2</a>")
        .arg(QString::fromLatin1(url), text.toHtmlEscaped());
}
} // namespace

QBAboutWindow::QBAboutWindow(const QString& applicationName, const QString& version,
                             QWidget* parent)
    : QDialog(parent)
{
    //% "About %1"
    setWindowTitle(qtTrId("AboutWindowTitle").arg(applicationName));

    auto* icon = new QLabel(this);
    icon->setObjectName(QStringLiteral("iconLabel"));
    icon->setPixmap(QApplication::windowIcon().pixmap(96, 96));
    icon->setAlignment(Qt::AlignHCenter);
    icon->setVisible(!QApplication::windowIcon().isNull());

    QLabel* name =
        centredLabel(QStringLiteral("<h2>%1</h2>").arg(applicationName.toHtmlEscaped()), this);
    //% "Version %1"
    mVersionLabel = centredLabel(qtTrId("AboutVersion").arg(version), this, "versionLabel");
    //% "Keeps your collection of quotes and turns one of them at a time into the "
    //% "plain-text signature file your mail client reads."
    QLabel* description = centredLabel(qtTrId("AboutDescription"), this);

    //% "Copyright © 2026 The Quillbox2 developers"
    QLabel* copyright = centredLabel(qtTrId("AboutCopyright"), this, "copyrightLabel");
    //% "GNU General Public License, version 3 or later"
    const QString licenseName = qtTrId("AboutLicenseName");
    //% "Free software under the %1 (GPL-3.0-or-later): you may share and change it "
    //% "under its terms. It comes without any warranty."
    const QString licenseText = qtTrId("AboutLicense").arg(link(kLicenseUrl, licenseName));
    QLabel* license = linkLabel(licenseText, this, "licenseLabel");
    QLabel* homepage =
        linkLabel(link(kHomepageUrl, QStringLiteral("quillbox2.org")), this, "homepageLabel");

    //% "The sample collection holds classic quotations in the public domain, by William "
    //% "Shakespeare, William Blake, Emily Dickinson, Walt Whitman, John Donne, William "
    //% "Wordsworth, John Keats, Alexander Pope, Jane Austen, Charles Dickens, Herman "
    //% "Melville, Henry David Thoreau, Benjamin Franklin, Abraham Lincoln, Patrick Henry, "
    //% "Francis Bacon, Johann Wolfgang von Goethe, René Descartes, Blaise Pascal, "
    //% "Jean-Jacques Rousseau, Voltaire, Dante Alighieri, Miguel de Cervantes, Julius "
    //% "Caesar, Horace, Terence, Augustus, Socrates and the Delphic maxims."
    mCreditsLabel = centredLabel(qtTrId("AboutSampleCredits"), this, "creditsLabel");

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    //% "About Qt"
    QPushButton* aboutQt =
        buttons->addButton(qtTrId("AboutQtButton"), QDialogButtonBox::ActionRole);
    aboutQt->setObjectName(QStringLiteral("aboutQtButton"));
    connect(aboutQt, &QPushButton::clicked, this, &QBAboutWindow::showAboutQt);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    // The links take Tab too; the window opens on its Close button all the same.
    buttons->button(QDialogButtonBox::Close)->setFocus();

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(icon);
    layout->addWidget(name);
    layout->addWidget(mVersionLabel);
    layout->addSpacing(8);
    layout->addWidget(description);
    layout->addSpacing(8);
    layout->addWidget(copyright);
    layout->addWidget(license);
    layout->addWidget(homepage);
    layout->addSpacing(8);
    layout->addWidget(mCreditsLabel);
    layout->addWidget(buttons);
    setMinimumWidth(460);
}

void QBAboutWindow::showAboutQt()
{
    // Qt's own About box runs a nested event loop; this one is window-modal and answered
    // like every other dialog of the program.
    auto* box = new QMessageBox(this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setObjectName(QStringLiteral("aboutQtBox"));
    box->setWindowTitle(qtTrId("AboutQtButton"));
    box->setIconPixmap(
        QPixmap(QStringLiteral(":/qt-project.org/qmessagebox/images/qtlogo-64.png")));
    box->setTextFormat(Qt::RichText);
    //% "<h3>About Qt</h3><p>This program uses Qt version %1.</p><p>Qt is a C++ toolkit "
    //% "for cross-platform application development, available under the GNU Lesser "
    //% "General Public License version 3 and under commercial licences. See "
    //% "<a href=\"https://www.qt.io/\">qt.io</a>.</p>"
    box->setText(qtTrId("AboutQtText").arg(QString::fromLatin1(qVersion())));
    box->setStandardButtons(QMessageBox::Ok);
    box->open();
}

QString QBAboutWindow::versionText() const
{
    return mVersionLabel->text();
}

QString QBAboutWindow::creditsText() const
{
    return mCreditsLabel->text();
}
