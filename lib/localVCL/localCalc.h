// A pocket calculator: a display line over a grid of keys, and the dialog
// with OK and Cancel that carries it.
#ifndef LOCALCALC_H
#define LOCALCALC_H

#include <QDialog>
#include <QFrame>

class QLineEdit;
class QPushButton;

class localCalc : public QFrame {
    Q_OBJECT
public:
    explicit localCalc(QWidget *parent = nullptr);

    // Presses the key labelled `text` ("7", "+", "1/x", "=", ...).
    void keyPress(const QString &text);
    QString displayText() const;

    QLineEdit *display;

private slots:
    void buttonClicked();

private:
    double accumulator = 0.0;
    QString pendingOperator;
    // The next digit starts a new number.
    bool startNew = true;
    // The display holds the right operand of the pending operator.
    bool operandReady = false;
    bool failed = false;

    double displayValue() const;
    void displaySet(double value);
    void fail();
    bool pendingApply();
};

class localCalcDialog : public QDialog {
    Q_OBJECT
public:
    explicit localCalcDialog(QWidget *parent = nullptr);
    localCalc *calc;
};

#endif
