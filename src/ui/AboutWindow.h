#pragma once

#include <QDialog>

class QLabel;

// The About window: the program's icon, name and version, what it does, copyright and
// licence, the home page, where the quotes of the sample collection come from, and
// Qt's own About box. Not modal; one per application.
class QBAboutWindow : public QDialog
{
    Q_OBJECT
public:
    QBAboutWindow(const QString& applicationName, const QString& version,
                  QWidget* parent = nullptr);

    QString versionText() const;
    // Qt's version and licence, in a window-modal box over this window.
    void showAboutQt();
    QString creditsText() const;

    static constexpr const char* kHomepageUrl = "https://quillbox2.org/";
    static constexpr const char* kLicenseUrl = "https://www.gnu.org/licenses/gpl-3.0.html";

private:
    QLabel* mVersionLabel = nullptr;
    QLabel* mCreditsLabel = nullptr;
};
