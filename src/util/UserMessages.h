#pragma once

#include <QObject>
#include <QString>

#include <functional>

// One message for the user: a failure, a warning or the result of a command. Texts are
// already localised by the sender.
struct QBUserMessage
{
    enum class Kind
    {
        Information,
        Success,
        Warning,
        Error
    };

    Kind kind = Kind::Information;
    QString text;
    // A button beside the text ("Try Again", "Undo"); none when the text is empty.
    QString actionText;
    std::function<void()> action;
    // A link after the text to this page of the help book (an anchor), e.g. "How?".
    QString linkText;
    QString helpAnchor;
    // A message with the same topic replaces the one shown (a second failed save does not
    // stack a second bar); an empty topic replaces only messages without a topic.
    QString topic;
};

// Where every part of the program hands messages for the user. The window shows them in
// its message bar; with no window (tests, the helper) they are only kept as the last one.
// Main thread only.
class QBUserMessages : public QObject
{
    Q_OBJECT
public:
    static QBUserMessages& shared();

    void show(const QBUserMessage& message);
    // Takes back the message of |topic| if it is still shown (the fault went away).
    void dismiss(const QString& topic);

    const QBUserMessage& lastMessage() const { return mLast; }

signals:
    void messageShown(const QBUserMessage& message);
    void messageDismissed(const QString& topic);

private:
    QBUserMessages() = default;
    QBUserMessage mLast;
};
