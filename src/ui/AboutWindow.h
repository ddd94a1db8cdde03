#pragma once

#include <QDialog>

class QLabel;

// The About window: the program's name and version, what it does, and where the quotes
// of the sample collection come from. Not modal; one per application.
class QBAboutWindow : public QDialog
{
    Q_OBJECT
public:
    QBAboutWindow(const QString& applicationName, const QString& version,
                  QWidget* parent = nullptr);

    QString versionText() const;
    QString creditsText() const;

private:
    QLabel* mVersionLabel = nullptr;
    QLabel* mCreditsLabel = nullptr;
};
