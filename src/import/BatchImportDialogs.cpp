#include "import/BatchImportDialogs.h"

#include "logging/ULog.h"

#include <QButtonGroup>
#include <QDebug>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

QPointer<QWidget>& mainWindow()
{
    static QPointer<QWidget> window;
    return window;
}

// Puts |accessory| between the message box's texts and its buttons.
void addAccessoryView(QMessageBox* box, QWidget* accessory)
{
    auto* grid = qobject_cast<QGridLayout*>(box->layout());
    auto* buttons = box->findChild<QDialogButtonBox*>();
    if (grid == nullptr || buttons == nullptr || grid->indexOf(buttons) < 0) {
        box->layout()->addWidget(accessory);
        return;
    }
    int row = 0;
    int column = 0;
    int rowSpan = 0;
    int columnSpan = 0;
    grid->getItemPosition(grid->indexOf(buttons), &row, &column, &rowSpan, &columnSpan);
    grid->removeWidget(buttons);
    // Column 1 is the texts' column, beside the icon.
    grid->addWidget(accessory, row, 1, 1, std::max(1, grid->columnCount() - 1));
    grid->addWidget(buttons, row + 1, column, rowSpan, columnSpan);
}

// What a screen reader says for a separator line: its symbols alone say nothing.
QString spokenForm(const QString& candidate)
{
    if (candidate == QStringLiteral("\n"))
        //% "Blank line"
        return qtTrId("BatchImportSeparatorBlankLine");
    if (candidate == QStringLiteral("%"))
        //% "Percent sign line"
        return qtTrId("BatchImportSeparatorPercentLine");
    //% "Line “%1”"
    return qtTrId("BatchImportSeparatorOtherLine").arg(candidate);
}

QString describe(const QObject* object)
{
    QString description;
    QDebug(&description).nospace() << object;
    return description;
}

} // namespace

void QBBatchImportDialogs::setParentWindow(QWidget* window)
{
    mainWindow() = window;
}

QWidget* QBBatchImportDialogs::parentWindow()
{
    return mainWindow();
}

void QBBatchImportDialogs::askForBatchImportFileWithHandler(
    std::function<void(const QUrl&)> handler)
{
    QWidget* window = parentWindow();
    if (window == nullptr)
        return;
    auto* dialog = new QFileDialog(window);
    //% "Import Quotes from a Text File"
    dialog->setWindowTitle(qtTrId("BatchImportChooseFileTitle"));
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setWindowModality(Qt::WindowModal);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    // Qt's own dialog starts so small that sizes, types and dates are cut off.
    dialog->resize(dialog->sizeHint().expandedTo(window->size() * 3 / 4));
    QObject::connect(dialog, &QFileDialog::finished, dialog,
                     [dialog, handler = std::move(handler)](int result) {
                         const QList<QUrl> urls = dialog->selectedUrls();
                         if (result == QDialog::Accepted && !urls.isEmpty() && handler)
                             handler(urls.first());
                     });
    dialog->open();
}

void QBBatchImportDialogs::askUserForSeparatorToUse(
    const QStringList& candidates, std::function<void(const QString&)> completionHandler)
{
    QWidget* window = parentWindow();
    if (window == nullptr)
        return;
    //% "Select the Separator"
    const QString title = qtTrId("BatchImportSelectSeparatorTitle");
    auto* box = new QMessageBox(QMessageBox::Question, title, title, QMessageBox::NoButton, window);
    box->setInformativeText(
        //% "Which line separates one quote from the next? These lines occur most often in "
        //% "the file (⏎ stands for a blank line)."
        qtTrId("BatchImportSelectSeparatorDescription"));
    box->setWindowModality(Qt::WindowModal);
    box->setAttribute(Qt::WA_DeleteOnClose);
    //% "Import"
    QPushButton* import =
        box->addButton(qtTrId("BatchImportImportButton"), QMessageBox::AcceptRole);
    box->addButton(QMessageBox::Cancel);
    box->setDefaultButton(import);

    auto* choices = new QWidget(box);
    choices->setObjectName(QStringLiteral("separatorChoices"));
    // Wide enough that the description does not wrap into a narrow column.
    choices->setMinimumWidth(choices->fontMetrics().averageCharWidth() * 48);
    auto* column = new QVBoxLayout(choices);
    column->setContentsMargins(0, 0, 0, 0);
    auto* group = new QButtonGroup(choices);
    for (qsizetype index = 0; index < candidates.size(); ++index) {
        auto* button = new QRadioButton(visibleForm(candidates[index]), choices);
        button->setAccessibleName(spokenForm(candidates[index]));
        group->addButton(button, static_cast<int>(index));
        column->addWidget(button);
        QObject::connect(button, &QAbstractButton::clicked, button,
                         [button] { radioButtonSelected(button); });
    }
    addAccessoryView(box, choices);

    QObject::connect(
        box, &QMessageBox::finished, box,
        [box, import, group, choices, candidates, handler = std::move(completionHandler)] {
            const int tag = group->checkedId();
            QString separator;
            if (box->clickedButton() == import && tag >= 0) {
                logDebugMessage(QStringLiteral("Selected button: %1").arg(tag));
                separator = candidates.value(tag);
            } else {
                logWarningMessage(QStringLiteral("No choice selected in ") + describe(choices));
            }
            if (handler)
                handler(separator);
        });
    box->open();
}

void QBBatchImportDialogs::radioButtonSelected(QAbstractButton* button)
{
    const auto* group = button->group();
    logDebugMessage(QStringLiteral("Separator button selected: '%1' (tag %2)")
                        .arg(button->text())
                        .arg(group != nullptr ? group->id(button) : -1));
}

QString QBBatchImportDialogs::visibleForm(const QString& candidate)
{
    QString shown = candidate;
    return shown.replace(QLatin1Char('\n'), QStringLiteral("⏎"));
}
