#include "ui/AboutWindow.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

QBAboutWindow::QBAboutWindow(const QString& applicationName, const QString& version,
                             QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(tr("About %1").arg(applicationName));

    auto* icon = new QLabel(this);
    icon->setPixmap(QApplication::windowIcon().pixmap(96, 96));
    icon->setAlignment(Qt::AlignHCenter);
    icon->setVisible(!QApplication::windowIcon().isNull());

    auto* name =
        new QLabel(QStringLiteral("<h2>%1</h2>").arg(applicationName.toHtmlEscaped()), this);
    name->setAlignment(Qt::AlignHCenter);
    mVersionLabel = new QLabel(tr("Version %1").arg(version), this);
    mVersionLabel->setAlignment(Qt::AlignHCenter);

    auto* description =
        new QLabel(tr("Keeps your collection of quotes and turns one of them at a time into the "
                      "plain-text signature file your mail client reads."),
                   this);
    description->setWordWrap(true);
    description->setAlignment(Qt::AlignHCenter);

    mCreditsLabel = new QLabel(
        tr("The sample collection holds classic quotations in the public domain, by William "
           "Shakespeare, William Blake, Emily Dickinson, Walt Whitman, John Donne, William "
           "Wordsworth, John Keats, Alexander Pope, Jane Austen, Charles Dickens, Herman "
           "Melville, Henry David Thoreau, Benjamin Franklin, Abraham Lincoln, Patrick Henry, "
           "Francis Bacon, Johann Wolfgang von Goethe, Ren\u00e9 Descartes, Blaise Pascal, "
           "Jean-Jacques Rousseau, Voltaire, Dante Alighieri, Miguel de Cervantes, Julius "
           "Caesar, Horace, Terence, Augustus, Socrates and the Delphic maxims."),
        this);
    mCreditsLabel->setWordWrap(true);
    mCreditsLabel->setAlignment(Qt::AlignHCenter);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(icon);
    layout->addWidget(name);
    layout->addWidget(mVersionLabel);
    layout->addSpacing(8);
    layout->addWidget(description);
    layout->addSpacing(8);
    layout->addWidget(mCreditsLabel);
    layout->addWidget(buttons);
    setMinimumWidth(420);
}

QString QBAboutWindow::versionText() const
{
    return mVersionLabel->text();
}

QString QBAboutWindow::creditsText() const
{
    return mCreditsLabel->text();
}
