#include "localVclWidgetEdit.h"

#include "localContextUTF8.h"
#include "localServices.h"
#include "localInterpretatorUTF8.h"
#include "localOperatorCompiled.h"
#include "localString.h"
#include "localSxl.h"
#include "localSxlWidget.h"

#include <QCoreApplication>
#include <QInputDialog>
#include <QKeyEvent>
#include <QPushButton>

#include <algorithm>
#include <iostream>

// ---- the number line ----

localVclEditWidgetNumeric::localVclEditWidgetNumeric(int32_t length, int32_t decimals, bool withoutSign,
                                                     const QString &text, QWidget *parent)
    : QLineEdit(parent), len(length), dec(std::max(decimals, 0)), noSign(withoutSign)
{
    const int32_t minimal = noSign ? 1 : 2;
    int32_t total = 0;
    int32_t integerPositions = 0;
    if (dec > 0) {
        total = std::max(len, minimal + dec + 1);
        integerPositions = total - dec - 1;
    } else {
        total = std::max(len, minimal);
        integerPositions = total;
    }
    QString mask(integerPositions, QLatin1Char('#'));
    if (dec > 0)
        mask += QLatin1Char('.') + QString(dec, QLatin1Char('9'));
    setInputMask(mask);
    setFrame(false);
    resize(width(), fontMetrics().height());
    len = total;
    setText(text);
}

void localVclEditWidgetNumeric::setText(const QString &text)
{
    bool converted = false;
    double value = text.toDouble(&converted);
    if (!converted)
        value = 0;
    // Right-aligned; a number too long for the field loses its left digits.
    QLineEdit::setText((QString(len, QLatin1Char(' ')) + QString::number(value, 'f', dec)).right(len));
}

QString localVclEditWidgetNumeric::normalised(const QString &text) const
{
    QString result(len, QLatin1Char(' '));
    bool afterPoint = false;
    int32_t decimals = 0;
    for (const QChar c : text) {
        if (!afterPoint && c == QLatin1Char(' '))
            continue;
        if (!afterPoint && c == QLatin1Char('.')) {
            afterPoint = true;
        } else if (afterPoint) {
            ++decimals;
        }
        result += c;
    }
    if (dec > decimals)
        result += QString(dec - decimals, QLatin1Char('0'));
    return result.right(len);
}

void localVclEditWidgetNumeric::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_End:
        setCursorPosition(len);
        if (event->modifiers() & Qt::ShiftModifier)
            selectAll();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        emit editingFinished();
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        QCoreApplication::sendEvent(this, &tab);
        return;
    }
    case Qt::Key_Period:
        if (dec > 0) {
            if (hasSelectedText())
                setCursorPosition(0);
            // Typing the point in the integer part jumps to the decimals.
            if (cursorPosition() < len - dec - 1) {
                setText(normalised(text()));
                setCursorPosition(len - dec);
                return;
            }
        }
        break;
    default:
        break;
    }
    QLineEdit::keyPressEvent(event);
}

void localVclEditWidgetNumeric::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    setReadOnly(false);
    selectAll();
}

void localVclEditWidgetNumeric::focusOutEvent(QFocusEvent *event)
{
    // The line's own editingFinished is replaced by the one below, which
    // goes out whatever the input.
    blockSignals(true);
    QLineEdit::focusOutEvent(event);
    blockSignals(false);
    setText(normalised(text()));
    setReadOnly(true);
    emit editingFinished();
}

// ---- the field ----

localVclWidgetEdit::localVclWidgetEdit(const std::u16string &variableName, localContextUTF8 *owner, QWidget *parent)
    : QFrame(parent), identifier(localString::trim(variableName))
{
    setObjectName(QStringLiteral("localVclEditWidget ") + localToQString(identifier));
    setFrameStyle(QFrame::Panel | QFrame::Sunken);
    setLineWidth(2);
    setMidLineWidth(2);
    context = owner;
    if (context == nullptr) {
        std::cout << "start context = 0 !!!" << LOCAL_DIAG_TAIL;
        ownContext = new localContextUTF8(localContextUTF8::globalContext);
        context = ownContext;
    }
    localVariable *variable = context->variableFind(identifier);
    if (variable == nullptr) {
        variable = context->variableCreate(context->variableNormalName(identifier));
        variable->value->setString(std::u16string());
    }
    const localValueDescription *value = variable->value;
    const QString objectNameTail = localToQString(identifier);
    if (value->getType() == localValueTypeNUM) {
        localVclEditWidgetNumeric *line =
            new localVclEditWidgetNumeric(12, 3, false, localToQString(value->toString()), this);
        line->setObjectName(QStringLiteral("localVclEditWidget::localVclLineEditNumeric ") + objectNameTail);
        connect(line, &QLineEdit::editingFinished, this, &localVclWidgetEdit::editingFinishedSlot);
        editWidget = line;
        buttonEnable(buttonChoose, QStringLiteral("Choose"), QStringLiteral(".."),
                     &localVclWidgetEdit::buttonChooseClickSlot);
    } else if (localSxl *document = localSxl::fromValue(value)) {
        // The document lives inside the field.
        editWidget = new localSxlWidget(*document, this);
        editWidget->setFocusPolicy(Qt::WheelFocus);
    } else {
        QLineEdit *line = new QLineEdit(localToQString(value->toString()), this);
        line->setFrame(false);
        line->setObjectName(QStringLiteral("localVclEditWidget::QLineEdit ") + objectNameTail);
        // Only a string is written back: a field of any other kind shows its
        // value and keeps its edits to itself.
        if (value->getType() == localValueTypeSTR) {
            connect(line, &QLineEdit::editingFinished, this, &localVclWidgetEdit::editingFinishedSlot);
            line->setCursorPosition(0);
        }
        editWidget = line;
    }
    selectDialog = nullptr;
    editPlace();
}

localVclWidgetEdit::~localVclWidgetEdit()
{
    // Children (the document's window among them) go before the context they may use.
    delete editWidget;
    delete ownContext;
}

localValueDescription *localVclWidgetEdit::variableValue(const char *message) const
{
    localVariable *variable = context->variableFind(identifier);
    if (variable == nullptr)
        exit_FAILURE(message);
    return variable->value;
}

void localVclWidgetEdit::buttonEnable(QPushButton *&button, const QString &word, const QString &text,
                                      void (localVclWidgetEdit::*slot)())
{
    variableValue(" NULL==tmpVar in localVclWidgetEdit::buttonEnable()");
    button = new QPushButton(text, this);
    connect(button, &QPushButton::pressed, this, slot);
    button->setEnabled(true);
    button->setFont(font());
    button->setObjectName(QStringLiteral("localVclEditWidget::button") + word + localToQString(identifier));
    button->show();
}

void localVclWidgetEdit::editPlace()
{
    QRect area = contentsRect();
    for (QPushButton *button : {buttonChoose, buttonOpen}) {
        if (button == nullptr)
            continue;
        const int side = area.height();
        button->setGeometry(area.right() - side + 1, area.top(), side, side);
        area.setRight(area.right() - side);
    }
    if (editWidget != nullptr)
        editWidget->setGeometry(area);
}

void localVclWidgetEdit::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    editPlace();
}

void localVclWidgetEdit::varRead()
{
    const localValueDescription *value = variableValue(" NULL==tmpVar in localVclWidgetEdit::varRead()");
    // Numbers are not re-read: a number field keeps what it shows.
    if (value->getType() != localValueTypeSTR || editWidget->hasFocus() || identifier.empty())
        return;
    QLineEdit *line = qobject_cast<QLineEdit *>(editWidget);
    if (line == nullptr)
        return;
    const QString text = localToQString(value->localValueString);
    if (localVclEditWidgetNumeric *numeric = qobject_cast<localVclEditWidgetNumeric *>(line))
        numeric->setText(text);
    else if (line->text() != text)
        line->setText(text);
}

void localVclWidgetEdit::editingFinishedSlot()
{
    localValueDescription *value = variableValue(" NULL==tmpVar in localVclWidgetEdit::editingFinishedSlot()");
    const QLineEdit *line = qobject_cast<QLineEdit *>(editWidget);
    const QString text = line != nullptr ? line->text() : QString();
    if (value->getType() == localValueTypeNUM) {
        const double number = text.toDouble();
        if (number == value->localValueNumber)
            return;
        value->setVal(number);
    } else if (value->getType() == localValueTypeSTR) {
        const std::u16string wide = localFromQString(text);
        if (!identifier.empty() && wide != value->localValueString) {
            localValueDescription typed;
            typed.setString(wide);
            context->variableSet(identifier, &typed);
        }
    } else {
        return;
    }
    if (!formula.empty()) {
        localWaitCursor wait;
        localErrorType status = localErrorTypeOK;
        size_t position = 0;
        if (!localInterpretatorUTF8::scanStringGetOperatorAndExec(status, formula, position, context, false)
            || position < formula.size())
            std::cout << "Error!!! " << LOCAL_DIAG_TAIL;
    }
    emit varValueChanged();
}

void localVclWidgetEdit::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_F4 && event->modifiers() == Qt::NoModifier) {
        std::cout << "Qt::NoModifier" << LOCAL_DIAG_TAIL;
        choose();
    } else if (event->key() != Qt::Key_Return) {
        QFrame::keyPressEvent(event);
        return;
    }
    emit varValueChanged();
    editingFinishedSlot();
}

void localVclWidgetEdit::focusOutEvent(QFocusEvent *event)
{
    logWrite(u"localVclWidgetEdit::focusOutEvent()");
    QFrame::focusOutEvent(event);
}

void localVclWidgetEdit::paintEvent(QPaintEvent *event)
{
    varRead();
    QFrame::paintEvent(event);
}

void localVclWidgetEdit::choose()
{
    const localValueDescription *value = variableValue(" NULL==tmpVar in localVclWidgetEdit::choose()");
    // The chooser exists for numbers only.
    if (value->getType() != localValueTypeNUM)
        return;
    QInputDialog *dialog = new QInputDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setInputMode(QInputDialog::DoubleInput);
    dialog->setDoubleMaximum(1999999999);
    dialog->setDoubleValue(value->localValueNumber);
    dialog->setWindowTitle(QStringLiteral("Введте число:"));
    dialog->setLabelText(QStringLiteral("Введте число:"));
    connect(dialog, &QInputDialog::accepted, this, &localVclWidgetEdit::SelectFormSignalAppliedSlot);
    connect(dialog, &QInputDialog::finished, dialog, &QObject::deleteLater);
    connect(dialog, &QObject::destroyed, this, &localVclWidgetEdit::SelectFormSignalDestroyedSlot);
    selectDialog = dialog;
    dialog->show();
    dialog->setFocus(Qt::OtherFocusReason);
}

void localVclWidgetEdit::open()
{
    logWrite(u"localVclWidgetEdit::open()");
}

void localVclWidgetEdit::buttonChooseClickSlot()
{
    choose();
}

void localVclWidgetEdit::buttonOpenClickSlot()
{
    if (selectDialog == nullptr) {
        open();
        return;
    }
    const localValueDescription *value = variableValue("  NULL==tmpVar in localVclWidgetEdit::buttonOpenClickSlot()");
    selectDialog->setDoubleValue(value->localValueNumber);
    selectDialog->show();
    selectDialog->activateWindow();
}

void localVclWidgetEdit::SelectFormSignalAppliedSlot()
{
    const localValueDescription *value = variableValue(" NULL==tmpVar in localVclWidgetEdit::SelectFormSignalAppliedSlot()");
    QLineEdit *line = qobject_cast<QLineEdit *>(editWidget);
    if (selectDialog != nullptr && line != nullptr) {
        if (value->getType() == localValueTypeNUM) {
            const QString text = QString::number(selectDialog->doubleValue(), 'g', 6);
            if (localVclEditWidgetNumeric *numeric = qobject_cast<localVclEditWidgetNumeric *>(line))
                numeric->setText(text);
            else
                line->setText(text);
            line->selectAll();
        } else if (value->getType() == localValueTypeSTR) {
            line->setText(selectDialog->textValue());
            line->selectAll();
        }
    }
    editWidget->setFocus();
    editingFinishedSlot();
}

void localVclWidgetEdit::SelectFormSignalDestroyedSlot()
{
    selectDialog = nullptr;
}
