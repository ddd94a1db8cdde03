#include "signature/SignatureSection.h"

#include "signature/SettingsKeys.h"
#include "util/UserDefaults.h"

#include <QComboBox>
#include <QFontDatabase>
#include <QFormLayout>
#include <QLabel>
#include <QPainter>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

constexpr int kTemplateVisibleLines = 3;
constexpr int kPreviewVisibleLines = 6;
constexpr int kLargestLineLimitOffered = 99;

QString wrapColumnText(int column)
{
    //% "%1 characters"
    return qtTrId("SettingsSignatureWrapColumns").arg(column);
}

int heightForLines(const QPlainTextEdit* edit, int lines)
{
    const int frame =
        edit->frameWidth() * 2 + static_cast<int>(edit->document()->documentMargin() * 2);
    return edit->fontMetrics().lineSpacing() * lines + frame;
}

} // namespace

QBSignaturePreview::QBSignaturePreview(QWidget* parent) : QPlainTextEdit(parent)
{
    setReadOnly(true);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

void QBSignaturePreview::setMarkerColumn(int column)
{
    mMarkerColumn = column;
    viewport()->update();
}

int QBSignaturePreview::markerX() const
{
    const qreal cell = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    return qRound(contentOffset().x() + document()->documentMargin() + mMarkerColumn * cell);
}

void QBSignaturePreview::paintEvent(QPaintEvent* event)
{
    QPlainTextEdit::paintEvent(event);
    if (mMarkerColumn <= 0) {
        return;
    }
    QPainter painter(viewport());
    painter.setPen(QPen(palette().color(QPalette::Mid), 1, Qt::DashLine));
    const int x = markerX();
    painter.drawLine(x, 0, x, viewport()->height());
}

QBSignatureSection::QBSignatureSection(QBUserDefaults& defaults, QWidget* parent)
    : QGroupBox(parent), mDefaults(defaults), mTemplateEdit(new QPlainTextEdit(this)),
      mTemplateProblemLabel(new QLabel(this)), mWrapColumnBox(new QComboBox(this)),
      mMaxLinesBox(new QSpinBox(this)), mPreview(new QBSignaturePreview(this)),
      mFitLabel(new QLabel(this))
{
    setObjectName(QStringLiteral("signatureSection"));
    //% "Signature"
    setTitle(qtTrId("SettingsSignatureSection"));

    mTemplateEdit->setObjectName(QStringLiteral("signatureTemplateEdit"));
    mTemplateEdit->setTabChangesFocus(true);
    mTemplateEdit->setFixedHeight(heightForLines(mTemplateEdit, kTemplateVisibleLines));
    //% "Your own lines, with {quote} where the quote goes"
    mTemplateEdit->setToolTip(qtTrId("SettingsSignatureTemplateToolTip"));
    mTemplateProblemLabel->setObjectName(QStringLiteral("signatureTemplateProblemLabel"));
    mTemplateProblemLabel->setWordWrap(true);
    mTemplateProblemLabel->setStyleSheet(QStringLiteral("color: #b00020"));
    mTemplateProblemLabel->hide();

    mWrapColumnBox->setObjectName(QStringLiteral("signatureWrapColumnBox"));
    //% "Off"
    const QString off = qtTrId("SettingsSignatureWrapOff");
    for (const int column : kWrapColumns) {
        mWrapColumnBox->addItem(column == 0 ? off : wrapColumnText(column), column);
    }
    mMaxLinesBox->setObjectName(QStringLiteral("signatureMaxLinesBox"));
    mMaxLinesBox->setRange(0, kLargestLineLimitOffered);
    //% "No limit"
    mMaxLinesBox->setSpecialValueText(qtTrId("SettingsSignatureNoLineLimit"));

    mPreview->setObjectName(QStringLiteral("signaturePreview"));
    mPreview->setFixedHeight(heightForLines(mPreview, kPreviewVisibleLines));
    //% "Exactly what the signature file receives for the selected quote"
    mPreview->setAccessibleDescription(qtTrId("SettingsSignaturePreviewDescription"));
    mFitLabel->setObjectName(QStringLiteral("signatureFitLabel"));
    mFitLabel->setWordWrap(true);

    auto* form = new QFormLayout;
    // In a narrow window the labels go above their fields.
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    //% "Te&mplate:"
    auto* templateLabel = new QLabel(qtTrId("SettingsSignatureTemplateLabel"), this);
    templateLabel->setBuddy(mTemplateEdit);
    form->addRow(templateLabel, mTemplateEdit);
    form->addRow(QString(), mTemplateProblemLabel);
    //% "&Wrap the quote at:"
    auto* wrapLabel = new QLabel(qtTrId("SettingsSignatureWrapLabel"), this);
    wrapLabel->setBuddy(mWrapColumnBox);
    form->addRow(wrapLabel, mWrapColumnBox);
    //% "&Longest quote, in lines:"
    auto* linesLabel = new QLabel(qtTrId("SettingsSignatureMaxLinesLabel"), this);
    linesLabel->setBuddy(mMaxLinesBox);
    form->addRow(linesLabel, mMaxLinesBox);
    //% "Preview:"
    form->addRow(qtTrId("SettingsSignaturePreviewLabel"), mPreview);
    form->addRow(QString(), mFitLabel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);

    connect(mTemplateEdit, &QPlainTextEdit::textChanged, this, &QBSignatureSection::templateEdited);
    connect(mWrapColumnBox, &QComboBox::activated, this, [this](int index) {
        mDefaults.setInteger(mWrapColumnBox->itemData(index).toInt(),
                             QBDefaultsSignatureWrapColumn);
    });
    connect(mMaxLinesBox, &QSpinBox::valueChanged, this, [this](int lines) {
        if (!mUpdating) {
            mDefaults.setInteger(lines, QBDefaultsSignatureMaxLines);
        }
    });
    updateFromDefaults();
}

void QBSignatureSection::setPreviewQuote(const QString& quote)
{
    mPreviewQuote = quote;
    refreshPreview();
}

void QBSignatureSection::updateFromDefaults()
{
    mUpdating = true;
    const QBSignatureSettings settings = QBSignatureSettings::fromDefaults(mDefaults);
    // A template being typed that cannot be stored yet stays as the user left it.
    const QString shown = mTemplateEdit->toPlainText();
    if (QBSignatureSettings::isUsableTemplate(shown) || shown.isEmpty()) {
        if (shown != settings.templateText) {
            mTemplateEdit->setPlainText(settings.templateText);
        }
    }
    int wrapIndex = mWrapColumnBox->findData(settings.wrapColumn);
    if (wrapIndex < 0) {
        // A column set outside the page: shown as it is rather than as another choice.
        mWrapColumnBox->addItem(wrapColumnText(settings.wrapColumn), settings.wrapColumn);
        wrapIndex = mWrapColumnBox->count() - 1;
    }
    mWrapColumnBox->setCurrentIndex(wrapIndex);
    mMaxLinesBox->setValue(settings.maxLines);
    mUpdating = false;
    refreshPreview();
}

void QBSignatureSection::templateEdited()
{
    if (mUpdating) {
        return;
    }
    const QString text = mTemplateEdit->toPlainText();
    const bool usable = QBSignatureSettings::isUsableTemplate(text);
    //% "The template needs {quote} where the quote goes; until then the last template "
    //% "with it stays in use."
    mTemplateProblemLabel->setText(usable ? QString() : qtTrId("SettingsSignatureTemplateRefused"));
    mTemplateProblemLabel->setVisible(!usable);
    if (usable && text != QBSignatureSettings::fromDefaults(mDefaults).templateText) {
        mDefaults.setObject(text, QBDefaultsSignatureTemplate);
    }
}

void QBSignatureSection::refreshPreview()
{
    const QBSignatureSettings settings = QBSignatureSettings::fromDefaults(mDefaults);
    //% "Select a quote in the list to see its signature here."
    const QString quote =
        mPreviewQuote.isEmpty() ? qtTrId("SettingsSignaturePreviewExample") : mPreviewQuote;
    const QBComposedSignature composed = QBSignatureComposer::compose(quote, settings);
    QString shown = QString::fromUtf8(composed.bytes);
    shown.chop(shown.endsWith(QLatin1Char('\n')) ? 1 : 0); // the final line break ends the file
    if (mPreview->toPlainText() != shown) {
        mPreview->setPlainText(shown);
    }
    mPreview->setMarkerColumn(settings.html ? 0 : settings.wrapColumn);
    //% "This quote takes %1 lines, more than %2: the automatic changes pass over it, and "
    //% "Use as Signature writes it all the same."
    const QString tooLong = qtTrId("SettingsSignatureQuoteTooLong");
    mFitLabel->setText(composed.fits ? QString()
                                     : tooLong.arg(composed.quoteLines).arg(settings.maxLines));
    mFitLabel->setVisible(!composed.fits);
}
