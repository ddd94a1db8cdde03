#include "app/SignatureStatusBar.h"

#include "model/SignatureState.h"
#include "ui/ElidedLabel.h"

#include <QAction>
#include <QDir>
#include <QToolButton>

QBSignatureStatusBar::QBSignatureStatusBar(QBSignatureState* state, QAction* nextQuoteAction,
                                           QWidget* parent)
    : QStatusBar(parent), mState(state), mPathLabel(new LMElidedLabel(Qt::ElideMiddle, this)),
      mChooseButton(new QToolButton(this)), mRotationLabel(new LMElidedLabel(Qt::ElideRight, this))
{
    setObjectName(QStringLiteral("signatureStatusBar"));
    setSizeGripEnabled(false);
    mPathLabel->setObjectName(QStringLiteral("signaturePathLabel"));
    mRotationLabel->setObjectName(QStringLiteral("rotationLabel"));
    mChooseButton->setObjectName(QStringLiteral("chooseSignatureFileButton"));
    //% "Choose…"
    mChooseButton->setText(qtTrId("StatusBarChooseSignatureFile"));
    //% "Choose the file your mail program reads as its signature"
    mChooseButton->setToolTip(qtTrId("StatusBarChooseSignatureFileTip"));
    mChooseButton->setFocusPolicy(Qt::TabFocus);
    connect(mChooseButton, &QToolButton::clicked, this, &QBSignatureStatusBar::chooseFileRequested);

    // Like the list's buttons: Tab reaches both, a click takes no focus, so an open edit
    // stays open.
    auto* nextButton = new QToolButton(this);
    nextButton->setObjectName(QStringLiteral("nextQuoteButton"));
    nextButton->setDefaultAction(nextQuoteAction);
    nextButton->setFocusPolicy(Qt::TabFocus);

    // The path and the rotation share what room there is; the buttons keep theirs.
    addWidget(mPathLabel, 3);
    addWidget(mChooseButton);
    addWidget(mRotationLabel, 2);
    addPermanentWidget(nextButton);
    connect(mState, &QBSignatureState::changed, this, &QBSignatureStatusBar::showState);
    showState();
}

void QBSignatureStatusBar::showState()
{
    const QString path = mState->signaturePath();
    mChooseButton->setVisible(path.isEmpty());
    //% "No signature file chosen"
    mPathLabel->setFullText(path.isEmpty() ? qtTrId("StatusBarNoSignatureFile")
                                           : QDir::toNativeSeparators(path));
    // Without a file, "Choose…" follows the short text instead of the middle of the bar;
    // the text may still shrink, so it never widens the window either.
    const QMargins margins = mPathLabel->contentsMargins();
    const int textWidth = mPathLabel->fontMetrics().horizontalAdvance(mPathLabel->fullText()) +
                          margins.left() + margins.right() + 2 * mPathLabel->margin() + 1;
    mPathLabel->setMaximumWidth(path.isEmpty() ? textWidth : QWIDGETSIZE_MAX);
    mRotationLabel->setFullText(mState->rotationDescription());
}
