#pragma once

#include <QStatusBar>

class LMElidedLabel;
class QAction;
class QBSignatureState;
class QToolButton;

// The window's status bar: where the signature file is (or a way to choose one), whether
// and when the helper changes it, and Next Quote Now. It only shows the signature state;
// it keeps none of its own.
class QBSignatureStatusBar : public QStatusBar
{
    Q_OBJECT
public:
    QBSignatureStatusBar(QBSignatureState* state, QAction* nextQuoteAction,
                         QWidget* parent = nullptr);

signals:
    // "Choose…" was clicked: no signature file is chosen yet.
    void chooseFileRequested();

private:
    void showState();

    QBSignatureState* mState;
    LMElidedLabel* mPathLabel;
    QToolButton* mChooseButton;
    LMElidedLabel* mRotationLabel;
};
