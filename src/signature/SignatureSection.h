#pragma once

#include "signature/SignatureComposer.h"

#include <QGroupBox>
#include <QPlainTextEdit>

class QComboBox;
class QLabel;
class QSpinBox;
class QBUserDefaults;

// A read-only text in a fixed-width font with a dashed line at a column, so the user
// sees where the quote's lines are wrapped.
class QBSignaturePreview : public QPlainTextEdit
{
    Q_OBJECT
public:
    explicit QBSignaturePreview(QWidget* parent = nullptr);
    // 0: no marker.
    void setMarkerColumn(int column);
    int markerColumn() const { return mMarkerColumn; }
    // Where the marker is drawn, in viewport coordinates.
    int markerX() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int mMarkerColumn = 0;
};

// The "Signature" part of the settings page: the template around the quote, the wrap
// column and the line limit, bound to the application's defaults, and a live preview of
// exactly what the signature file will receive for the selected quote. A template
// without "{quote}" is not stored; the section says why.
class QBSignatureSection : public QGroupBox
{
    Q_OBJECT
public:
    static constexpr int kWrapColumns[] = {0, 72, 80};

    explicit QBSignatureSection(QBUserDefaults& defaults, QWidget* parent = nullptr);

    // The quote the preview shows; an empty text shows an example.
    void setPreviewQuote(const QString& quote);
    // Shows the stored settings and refreshes the preview.
    void updateFromDefaults();

private:
    void templateEdited();
    void refreshPreview();

    QBUserDefaults& mDefaults;
    QPlainTextEdit* mTemplateEdit;
    QLabel* mTemplateProblemLabel;
    QComboBox* mWrapColumnBox;
    QSpinBox* mMaxLinesBox;
    QBSignaturePreview* mPreview;
    QLabel* mFitLabel;
    QString mPreviewQuote;
    bool mUpdating = false;
};
