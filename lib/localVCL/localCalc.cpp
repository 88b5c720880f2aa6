#include "localCalc.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRegExp>
#include <QVBoxLayout>

#include <cmath>

namespace {

const QString errorText = QStringLiteral(" error ");

struct keyPlace {
    const char *text;
    int row;
    int column;
    int columnSpan;
};

// Row 0 is the display, across all seven columns.
const keyPlace keys[] = {
    {"7", 1, 0, 1}, {"8", 1, 1, 1}, {"9", 1, 2, 1}, {"+", 1, 3, 1}, {"-", 1, 4, 1}, {"C", 1, 5, 1},
    {"+/-", 1, 6, 1}, {"4", 2, 0, 1}, {"5", 2, 1, 1}, {"6", 2, 2, 1}, {"*", 2, 3, 1}, {"/", 2, 4, 1},
    {".", 2, 5, 1}, {"1/x", 2, 6, 1}, {"1", 3, 0, 1}, {"2", 3, 1, 1}, {"3", 3, 2, 1}, {"0", 3, 3, 1},
    {"=", 3, 4, 3},
};

} // namespace

localCalc::localCalc(QWidget *parent) : QFrame(parent)
{
    setFrameShape(QFrame::StyledPanel);
    display = new QLineEdit(QStringLiteral("0"));
    display->setReadOnly(true);
    display->setAlignment(Qt::AlignRight);
    QGridLayout *grid = new QGridLayout(this);
    grid->addWidget(display, 0, 0, 1, 7);
    for (const keyPlace &key : keys) {
        QPushButton *button = new QPushButton(QString::fromLatin1(key.text));
        connect(button, &QPushButton::clicked, this, &localCalc::buttonClicked);
        grid->addWidget(button, key.row, key.column, 1, key.columnSpan);
    }
}

QString localCalc::displayText() const
{
    return display->text();
}

double localCalc::displayValue() const
{
    return display->text().toDouble();
}

void localCalc::displaySet(double value)
{
    if (!std::isfinite(value)) {
        fail();
        return;
    }
    display->setText(QString::number(value, 'g', 15));
}

void localCalc::fail()
{
    display->setText(errorText);
    failed = true;
    pendingOperator.clear();
    startNew = true;
    operandReady = false;
}

bool localCalc::pendingApply()
{
    const double operand = displayValue();
    double value = operand;
    if (pendingOperator == QLatin1String("+"))
        value = accumulator + operand;
    else if (pendingOperator == QLatin1String("-"))
        value = accumulator - operand;
    else if (pendingOperator == QLatin1String("*"))
        value = accumulator * operand;
    else if (pendingOperator == QLatin1String("/")) {
        if (operand == 0.0) {
            fail();
            return false;
        }
        value = accumulator / operand;
    }
    accumulator = value;
    displaySet(value);
    return !failed;
}

void localCalc::buttonClicked()
{
    if (QPushButton *button = qobject_cast<QPushButton *>(sender()))
        keyPress(button->text());
}

void localCalc::keyPress(const QString &text)
{
    static const QRegExp digit(QStringLiteral("[0-9]"));
    if (text == QLatin1String("C")) {
        accumulator = 0.0;
        pendingOperator.clear();
        failed = false;
        startNew = true;
        operandReady = false;
        display->setText(QStringLiteral("0"));
        return;
    }
    if (digit.exactMatch(text) || text == QLatin1String(".")) {
        if (startNew || failed) {
            display->setText(text == QLatin1String(".") ? QStringLiteral("0") : QString());
            startNew = false;
            failed = false;
        }
        operandReady = true;
        if (text == QLatin1String(".") && display->text().contains(QLatin1Char('.')))
            return;
        display->setText(display->text() + text);
        return;
    }
    if (failed)
        return;
    if (text == QLatin1String("+/-")) {
        displaySet(-displayValue());
        operandReady = true;
        return;
    }
    if (text == QLatin1String("1/x")) {
        if (displayValue() == 0.0)
            fail();
        else
            displaySet(1.0 / displayValue());
        startNew = true;
        operandReady = true;
        return;
    }
    // "=" or an operator: finish what is pending first.
    if ((operandReady || pendingOperator.isEmpty()) && !pendingApply())
        return;
    pendingOperator = text == QLatin1String("=") ? QString() : text;
    startNew = true;
    operandReady = false;
}

localCalcDialog::localCalcDialog(QWidget *parent) : QDialog(parent)
{
    calc = new localCalc();
    QDialogButtonBox *buttons = new QDialogButtonBox();
    connect(buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole), &QPushButton::clicked, this,
            &QDialog::accept);
    connect(buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole), &QPushButton::clicked, this,
            &QDialog::reject);
    QVBoxLayout *layout = new QVBoxLayout(this);
    layout->addWidget(calc);
    layout->addWidget(buttons);
}
