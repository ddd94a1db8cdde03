#pragma once

#include "util/UserMessages.h"

#include <QFrame>
#include <QPointer>
#include <QWidget>

#include <vector>

class QLabel;
class QPushButton;
class QTimer;
class QVBoxLayout;

// One message of the bar: an icon and a tint by kind, the text, an optional action
// button and a close button. Screen readers see it as an alert.
class QBMessageItem : public QFrame
{
    Q_OBJECT
public:
    QBMessageItem(const QBUserMessage& message, QWidget* parent = nullptr);

    const QBUserMessage& message() const { return mMessage; }
    QString text() const;

    // The close button, or the action button after its action ran.
    void close();

signals:
    void closed(QBMessageItem* item);

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QColor tint() const;

    QBUserMessage mMessage;
    QLabel* mText = nullptr;
};

// The bar above the window's content where failures and the results of commands show,
// in place of modal boxes: whatever any part of the program hands to QBUserMessages. A
// small stack with one message per topic (a message replaces the one of its topic) and
// at most kMaxShown, the newest on top. Failures stay until closed or taken back;
// results of commands hide after a while.
class QBMessageBar : public QWidget
{
    Q_OBJECT
public:
    static constexpr int kMaxShown = 3;
    static constexpr int kResultTimeoutMs = 12000;

    explicit QBMessageBar(QBUserMessages& messages = QBUserMessages::shared(),
                          QWidget* parent = nullptr);

    void showMessage(const QBUserMessage& message);
    void dismiss(const QString& topic);

    // Newest first.
    QList<QBMessageItem*> items() const;
    // The shown message of |topic|, or null.
    QBMessageItem* item(const QString& topic) const;

private:
    void remove(QBMessageItem* item);

    QVBoxLayout* mLayout = nullptr;
};
