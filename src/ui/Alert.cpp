#include "ui/Alert.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace {

QMessageBox::Icon iconForStyle(int style)
{
    switch (style) {
    case QBAlert::Informational:
        return QMessageBox::Information;
    case QBAlert::Critical:
        return QMessageBox::Critical;
    default:
        return QMessageBox::Warning;
    }
}

} // namespace

QBAlert& QBAlert::shared()
{
    static QBAlert alert;
    return alert;
}

QMessageBox* QBAlert::openBox(int style, const QString& title, const QString& message)
{
    QWidget* parent = mParentWindow ? mParentWindow.data() : QApplication::activeWindow();
    auto* box = new QMessageBox(iconForStyle(style), title, message, QMessageBox::NoButton, parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(parent != nullptr ? Qt::WindowModal : Qt::ApplicationModal);
    return box;
}

QMessageBox* QBAlert::infoWithTitle(const QString& title, const QString& message)
{
    QMessageBox* box = openBox(Informational, title, message);
    box->addButton(QMessageBox::Ok);
    box->open();
    return box;
}

QMessageBox* QBAlert::warningWithTitle(const QString& title, const QString& message)
{
    QMessageBox* box = openBox(Warning, title, message);
    box->addButton(QMessageBox::Ok);
    box->open();
    return box;
}

QMessageBox* QBAlert::showYesNoAlertWithLocalizedTitle(const QString& title, const QString& message,
                                                       int style, std::function<void()> onOK,
                                                       std::function<void()> onCancel)
{
    QMessageBox* box = openBox(style, title, message);
    //: Yes field in dialog
    //% "Yes"
    QPushButton* yes = box->addButton(qtTrId("AlertYesButton"), QMessageBox::YesRole);
    //: No field in dialog
    //% "No"
    QPushButton* no = box->addButton(qtTrId("AlertNoButton"), QMessageBox::NoRole);
    box->setDefaultButton(yes);
    box->setEscapeButton(no);
    QObject::connect(box, &QMessageBox::finished, box,
                     [box, yes, onOK = std::move(onOK), onCancel = std::move(onCancel)] {
                         const auto& handler = box->clickedButton() == yes ? onOK : onCancel;
                         if (handler)
                             handler();
                     });
    box->open();
    return box;
}
