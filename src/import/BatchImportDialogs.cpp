#include "import/BatchImportDialogs.h"

#include "import/QuoteFile.h"
#include "logging/ULog.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDebug>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

using Kind = QBSeparatorChoice::Kind;
using Format = QBQuoteExport::Format;

QPointer<QWidget>& mainWindow()
{
    static QPointer<QWidget> window;
    return window;
}

// What a screen reader says for a separator: its symbols alone say nothing. Empty where
// the button's own title already reads well.
QString spokenForm(const QBSeparatorChoice& choice)
{
    switch (choice.kind) {
    case Kind::BlankLine:
        //% "Blank line"
        return qtTrId("BatchImportSeparatorBlankLine");
    case Kind::Line:
        if (choice.line == QStringLiteral("%"))
            //% "Percent sign line"
            return qtTrId("BatchImportSeparatorPercentLine");
        //% "Line “%1”"
        return qtTrId("BatchImportSeparatorOtherLine").arg(choice.line);
    default:
        return {};
    }
}

QString describe(const QObject* object)
{
    QString description;
    QDebug(&description).nospace() << object;
    return description;
}

// The first quotes |choice| makes of |text|, each cut short, with a rule between them.
QString preview(const QBQuoteFile& file, const QBSeparatorChoice& choice)
{
    constexpr qsizetype kPreviewQuotes = 3;
    constexpr qsizetype kLongestPreviewQuote = 400;
    const QStringList quotes = file.quotes(choice).mid(0, kPreviewQuotes);
    QStringList shown;
    for (const QString& quote : quotes)
        shown << (quote.size() > kLongestPreviewQuote ? quote.left(kLongestPreviewQuote) + u'…'
                                                      : quote);
    return shown.join(QStringLiteral("\n――――――――\n"));
}

QDialog* newDialog(QWidget* window, const QString& title)
{
    auto* dialog = new QDialog(window);
    dialog->setWindowTitle(title);
    dialog->setWindowModality(Qt::WindowModal);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    return dialog;
}

QDialogButtonBox* addImportButtons(QDialog* dialog, QLayout* layout)
{
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, dialog);
    //% "Import"
    QPushButton* import =
        buttons->addButton(qtTrId("BatchImportImportButton"), QDialogButtonBox::AcceptRole);
    import->setDefault(true);
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    layout->addWidget(buttons);
    return buttons;
}

QPlainTextEdit* addPreview(QDialog* dialog, QLayout* layout)
{
    auto* shown = new QPlainTextEdit(dialog);
    shown->setObjectName(QStringLiteral("separatorPreview"));
    shown->setReadOnly(true);
    // Tab reaches it so that a screen reader can read the quotes out; it never keeps Tab.
    shown->setFocusPolicy(Qt::TabFocus);
    shown->setTabChangesFocus(true);
    //% "Preview of the first quotes"
    shown->setAccessibleName(qtTrId("BatchImportPreviewAccessibleName"));
    shown->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    shown->setMinimumSize(shown->fontMetrics().averageCharWidth() * 60,
                          shown->fontMetrics().lineSpacing() * 10);
    layout->addWidget(shown);
    return shown;
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
    std::function<void(const QStringList&)> handler)
{
    QWidget* window = parentWindow();
    if (window == nullptr)
        return;
    auto* dialog = new QFileDialog(window);
    //% "Import Quotes from a Text File"
    dialog->setWindowTitle(qtTrId("BatchImportChooseFileTitle"));
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setWindowModality(Qt::WindowModal);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    // Qt's own dialog starts so small that sizes, types and dates are cut off.
    dialog->resize(dialog->sizeHint().expandedTo(window->size() * 3 / 4));
    QObject::connect(dialog, &QFileDialog::finished, dialog,
                     [dialog, handler = std::move(handler)](int result) {
                         QStringList paths;
                         for (const QUrl& url : dialog->selectedUrls())
                             paths << url.toLocalFile();
                         if (result == QDialog::Accepted && !paths.isEmpty() && handler)
                             handler(paths);
                     });
    dialog->open();
}

QProgressDialog* QBBatchImportDialogs::openImportProgress(qsizetype fileCount,
                                                          std::function<void()> cancelHandler)
{
    QWidget* window = parentWindow();
    if (window == nullptr)
        return nullptr;
    auto* dialog = new QProgressDialog(window);
    dialog->setObjectName(QStringLiteral("importProgress"));
    dialog->setWindowModality(Qt::WindowModal);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    // The run decides when the dialog goes; a finished bar must not close or reset it.
    dialog->setAutoClose(false);
    dialog->setAutoReset(false);
    //% "Importing Quotes"
    dialog->setWindowTitle(qtTrId("ImportProgressTitle"));
    //% "Reading %Ln file(s)…"
    dialog->setLabelText(qtTrId("ImportProgressReading", static_cast<int>(fileCount)));
    dialog->setRange(0, static_cast<int>(fileCount));
    dialog->setValue(0);
    QObject::connect(dialog, &QProgressDialog::canceled, dialog,
                     [handler = std::move(cancelHandler)] {
                         if (handler)
                             handler();
                     });
    dialog->open();
    return dialog;
}

void QBBatchImportDialogs::closeImportProgress(QProgressDialog* dialog)
{
    if (dialog == nullptr)
        return;
    // Its close event would report a cancel.
    QObject::disconnect(dialog, &QProgressDialog::canceled, nullptr, nullptr);
    dialog->close();
}

void QBBatchImportDialogs::askUserForSeparatorToUse(
    const QBQuoteFile& file,
    std::function<void(std::optional<QBSeparatorChoice>)> completionHandler)
{
    QWidget* window = parentWindow();
    if (window == nullptr || file.analysis.choices.isEmpty())
        return;
    const QString fileName = QFileInfo(file.path).fileName();
    const QList<QBSeparatorChoice> choices = file.analysis.choices;
    const bool single = file.analysis.isSingleQuote();
    QString heading;
    QString description;
    if (single) {
        //% "Import a Single Quote"
        heading = qtTrId("BatchImportSingleQuoteTitle");
        //% "“%1” holds a single quote. Import it?"
        description = qtTrId("BatchImportSingleQuoteDescription").arg(fileName);
    } else {
        //% "Select the Separator"
        heading = qtTrId("BatchImportSelectSeparatorTitle");
        //% "How are the quotes in “%1” separated? The first quotes of the chosen way are "
        //% "shown below."
        description = qtTrId("BatchImportSelectSeparatorDescription").arg(fileName);
    }
    QDialog* dialog = newDialog(window, heading);
    auto* layout = new QVBoxLayout(dialog);
    auto* question = new QLabel(description, dialog);
    question->setWordWrap(true);
    layout->addWidget(question);

    auto* choiceList = new QWidget(dialog);
    choiceList->setObjectName(QStringLiteral("separatorChoices"));
    auto* column = new QVBoxLayout(choiceList);
    column->setContentsMargins(0, 0, 0, 0);
    auto* group = new QButtonGroup(choiceList);
    if (!single) {
        for (qsizetype index = 0; index < choices.size(); ++index) {
            auto* button = new QRadioButton(title(choices[index]), choiceList);
            if (const QString spoken = spokenForm(choices[index]); !spoken.isEmpty()) {
                // The name says what the separator is; the description keeps the count.
                button->setAccessibleName(spoken);
                button->setAccessibleDescription(button->text());
            }
            group->addButton(button, static_cast<int>(index));
            column->addWidget(button);
            QObject::connect(button, &QAbstractButton::clicked, button,
                             [button] { radioButtonSelected(button); });
        }
    }
    layout->addWidget(choiceList);
    QPlainTextEdit* shown = addPreview(dialog, layout);
    addImportButtons(dialog, layout);

    // The file is copied into the dialog: the preview and the answer outlive the caller.
    const auto showChoice = [shown, file](const QBSeparatorChoice& choice) {
        shown->setPlainText(preview(file, choice));
    };
    QObject::connect(group, &QButtonGroup::idToggled, shown,
                     [showChoice, choices](int id, bool checked) {
                         if (checked)
                             showChoice(choices.at(id));
                     });
    if (!single && !group->buttons().isEmpty())
        group->buttons().first()->setChecked(true);
    else
        showChoice(choices.first());

    QObject::connect(
        dialog, &QDialog::finished, dialog,
        [group, choiceList, choices, single, handler = std::move(completionHandler)](int result) {
            const int tag = single ? 0 : group->checkedId();
            std::optional<QBSeparatorChoice> choice;
            if (result == QDialog::Accepted && tag >= 0) {
                logDebugMessage(QStringLiteral("Selected button: %1").arg(tag));
                choice = choices.value(tag);
            } else {
                logWarningMessage(QStringLiteral("No choice selected in ") + describe(choiceList));
            }
            if (handler)
                handler(choice);
        });
    dialog->open();
}

void QBBatchImportDialogs::radioButtonSelected(QAbstractButton* button)
{
    const auto* group = button->group();
    logDebugMessage(QStringLiteral("Separator button selected: '%1' (tag %2)")
                        .arg(button->text())
                        .arg(group != nullptr ? group->id(button) : -1));
}

QString QBBatchImportDialogs::title(const QBSeparatorChoice& choice)
{
    const auto count = static_cast<int>(choice.quoteCount);
    switch (choice.kind) {
    case Kind::Line:
        //% "Lines “%1” — %Ln quote(s)"
        return qtTrId("BatchImportChoiceLine", count).arg(choice.line);
    case Kind::BlankLine:
        //% "Blank lines — %Ln quote(s)"
        return qtTrId("BatchImportChoiceBlankLine", count);
    case Kind::OnePerLine:
        //% "One quote per line — %Ln quote(s)"
        return qtTrId("BatchImportChoiceOnePerLine", count);
    case Kind::WholeFile:
        break;
    }
    //% "The whole file as one quote"
    return qtTrId("BatchImportChoiceWholeFile");
}

void QBBatchImportDialogs::askForExportFile(bool canExportSelection,
                                            std::function<void(const ExportRequest&)> handler)
{
    QWidget* window = parentWindow();
    if (window == nullptr)
        return;
    auto* dialog = new QFileDialog(window);
    //% "Export Quotes"
    dialog->setWindowTitle(qtTrId("ExportChooseFileTitle"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    // Qt's own dialog, so that the selection switch can sit in it.
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setWindowModality(Qt::WindowModal);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    const QList<std::pair<Format, QString>> filters{
        //% "Fortune file, quotes between “%” lines (*.fortune *)"
        {Format::Fortune, qtTrId("ExportFormatFortune")},
        //% "Plain text, quotes between blank lines (*.txt)"
        {Format::Text, qtTrId("ExportFormatText")},
        //% "Quillbox2 collection (*.json)"
        {Format::Json, qtTrId("ExportFormatJson")},
    };
    QStringList filterTexts;
    for (const auto& [format, text] : filters)
        filterTexts << text;
    dialog->setNameFilters(filterTexts);
    //% "quotes"
    dialog->selectFile(qtTrId("ExportDefaultFileName") + QStringLiteral(".fortune"));
    QCheckBox* selectionOnly = nullptr;
    if (canExportSelection) {
        //% "Only the selected quotes"
        selectionOnly = new QCheckBox(qtTrId("ExportSelectionOnly"), dialog);
        selectionOnly->setObjectName(QStringLiteral("exportSelectionOnly"));
        if (auto* grid = qobject_cast<QGridLayout*>(dialog->layout()))
            grid->addWidget(selectionOnly, grid->rowCount(), 0, 1, grid->columnCount());
    }
    dialog->resize(dialog->sizeHint().expandedTo(window->size() * 3 / 4));
    QObject::connect(
        dialog, &QFileDialog::finished, dialog,
        [dialog, filters, selectionOnly, handler = std::move(handler)](int result) {
            const QStringList files = dialog->selectedFiles();
            if (result != QDialog::Accepted || files.isEmpty() || !handler)
                return;
            ExportRequest request;
            request.path = files.first();
            const qsizetype filter = dialog->nameFilters().indexOf(dialog->selectedNameFilter());
            request.format =
                filter >= 0 ? filters.at(filter).first : QBQuoteExport::formatForPath(request.path);
            request.selectionOnly = selectionOnly != nullptr && selectionOnly->isChecked();
            handler(request);
        });
    dialog->open();
}

void QBBatchImportDialogs::askAboutLosingExport(qsizetype lost, qsizetype total, Format format,
                                                std::function<void(LosingExportAnswer)> handler)
{
    QWidget* window = parentWindow();
    if (window == nullptr)
        return;
    auto* box = new QMessageBox(window);
    box->setObjectName(QStringLiteral("losingExport"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setIcon(QMessageBox::Warning);
    //% "Some Quotes Would Change"
    box->setWindowTitle(qtTrId("ExportLosingTitle"));
    const QString totalText = QLocale().toString(total);
    const auto count = static_cast<int>(lost);
    if (format == Format::Fortune) {
        //% "%Ln of the %1 quotes would not read back as they are from a fortune file, where a "
        //% "line “%” separates quotes."
        box->setText(qtTrId("ExportLosingFortune", count).arg(totalText));
    } else {
        //% "%Ln of the %1 quotes would not read back as they are from plain text, where blank "
        //% "lines (or another line repeated between quotes) separate quotes."
        box->setText(qtTrId("ExportLosingText", count).arg(totalText));
    }
    //% "The Quillbox2 collection format (JSON) keeps every quote exactly."
    box->setInformativeText(qtTrId("ExportLosingJsonKeepsAll"));
    //% "Export as &JSON"
    QPushButton* asJson = box->addButton(qtTrId("ExportLosingAsJson"), QMessageBox::AcceptRole);
    //% "Export &Anyway"
    QPushButton* anyway =
        box->addButton(qtTrId("ExportLosingAnyway"), QMessageBox::DestructiveRole);
    box->addButton(QMessageBox::Cancel);
    box->setDefaultButton(asJson);
    QObject::connect(
        box, &QMessageBox::finished, box, [box, asJson, anyway, handler = std::move(handler)] {
            const QAbstractButton* clicked = box->clickedButton();
            const LosingExportAnswer answer = clicked == asJson   ? LosingExportAnswer::ExportAsJson
                                              : clicked == anyway ? LosingExportAnswer::ExportAnyway
                                                                  : LosingExportAnswer::Cancel;
            if (handler)
                handler(answer);
        });
    box->open();
}
