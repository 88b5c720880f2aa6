// Helpers of the widget tests: answering the modal boxes and dialogs that a
// case opens, without a person at the screen.
#ifndef LOCALWIDGETTESTSUPPORT_H
#define LOCALWIDGETTESTSUPPORT_H

#include <QAbstractButton>
#include <QApplication>
#include <QPushButton>
#include <QDialog>
#include <QMessageBox>
#include <QTimer>

#include <functional>

namespace localTest {

// Waits for the next modal widget, notes what it showed and lets `act`
// close it. Lives for the duration of one case.
class modalAnswer : public QObject {
public:
    QString title;
    QString text;
    QString objectName;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
    int answered = 0;

    explicit modalAnswer(std::function<void(QWidget *)> act) : handler(std::move(act))
    {
        connect(&timer, &QTimer::timeout, this, &modalAnswer::look);
        timer.start(20);
    }

    // Presses a button of a message box.
    static std::function<void(QWidget *)> press(QMessageBox::StandardButton button)
    {
        return [button](QWidget *widget) {
            if (QMessageBox *box = qobject_cast<QMessageBox *>(widget))
                box->button(button)->click();
        };
    }
    // Closes any dialog with the given result code.
    static std::function<void(QWidget *)> finish(int code)
    {
        return [code](QWidget *widget) {
            if (QDialog *dialog = qobject_cast<QDialog *>(widget))
                dialog->done(code);
        };
    }

private:
    std::function<void(QWidget *)> handler;
    QTimer timer;

    void look()
    {
        QWidget *modal = QApplication::activeModalWidget();
        if (modal == nullptr)
            return;
        title = modal->windowTitle();
        objectName = modal->objectName();
        if (QMessageBox *box = qobject_cast<QMessageBox *>(modal)) {
            text = box->text();
            if (box->defaultButton() != nullptr)
                defaultButton = box->standardButton(box->defaultButton());
        }
        ++answered;
        handler(modal);
    }
};

} // namespace localTest

#endif
