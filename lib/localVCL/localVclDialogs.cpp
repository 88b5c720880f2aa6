#include "localVclDialogs.h"

#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

QDialogButtonBox *okCancel(QDialog *dialog)
{
    QDialogButtonBox *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    return buttons;
}

const QString dateFormat = QStringLiteral("yyyyMMdd");

} // namespace

localDialogFindString::localDialogFindString(const QStringList &history, QWidget *parent) : QDialog(parent)
{
    combo = new QComboBox();
    combo->setEditable(true);
    combo->addItems(history);
    caseCheck = new QCheckBox(QStringLiteral("Учитывать регистр"));
    forwardButton = new QRadioButton(QStringLiteral("Вперёд"));
    backwardButton = new QRadioButton(QStringLiteral("Назад"));
    forwardButton->setChecked(true);

    QGroupBox *direction = new QGroupBox(QStringLiteral("Направление"));
    QHBoxLayout *directionLayout = new QHBoxLayout(direction);
    directionLayout->addWidget(forwardButton);
    directionLayout->addWidget(backwardButton);

    QFormLayout *form = new QFormLayout();
    form->addRow(QStringLiteral("Искать"), combo);
    QVBoxLayout *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(caseCheck);
    layout->addWidget(direction);
    layout->addWidget(okCancel(this));
}

QString localDialogFindString::text() const
{
    return combo->currentText();
}

bool localDialogFindString::caseSensitive() const
{
    return caseCheck->checkState() == Qt::Checked;
}

bool localDialogFindString::forward() const
{
    return forwardButton->isChecked();
}

localCalendar::localCalendar(const QString &date, QWidget *parent) : QDialog(parent)
{
    calendar = new QCalendarWidget();
    const QDate start = QDate::fromString(date, dateFormat);
    if (start.isValid())
        calendar->setSelectedDate(start);
    connect(calendar, &QCalendarWidget::activated, this, &localCalendar::dateSelected);
    QVBoxLayout *layout = new QVBoxLayout(this);
    layout->addWidget(calendar);
}

void localCalendar::dateSelected()
{
    accept();
}

QString localCalendar::dateText() const
{
    if (result() != QDialog::Accepted)
        return QString();
    return calendar->selectedDate().toString(dateFormat);
}

localDialogFormSettingsSave::localDialogFormSettingsSave(QWidget *parent) : QDialog(parent)
{
    QVBoxLayout *layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Это диалог сохранения настроек")));
}

localVclQStringListGetItemDialog::localVclQStringListGetItemDialog(const QString &title, const QStringList &items,
                                                                   int startRow, QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(title);
    list = new QListWidget();
    list->addItems(items);
    // Without a start row the first item is current from the start, not
    // only once the list happens to get the focus.
    if (startRow >= 0 && startRow < items.size())
        list->setCurrentRow(startRow);
    else if (!items.isEmpty())
        list->setCurrentRow(0);
    connect(list, &QListWidget::itemActivated, this, &QDialog::accept);
    QVBoxLayout *layout = new QVBoxLayout(this);
    layout->addWidget(list);
    layout->addWidget(okCancel(this));
}

int localVclQStringListGetItemDialog::exec()
{
    const int code = QDialog::exec();
    if (code == QDialog::Accepted)
        resultText = QStringLiteral("Accepted");
    else if (code == QDialog::Rejected)
        resultText = QStringLiteral("Rejected");
    else
        resultText = QStringLiteral("Unexpected");
    return code == QDialog::Accepted ? list->currentRow() : -1;
}

DemoDialogForListOfValuesChange::DemoDialogForListOfValuesChange(const QString &caption, const QStringList &items,
                                                                 QWidget *parent)
    : QDialog(parent), values(items)
{
    list = new QListWidget();
    for (const QString &value : items) {
        QListWidgetItem *item = new QListWidgetItem(value, list);
        item->setFlags(item->flags() | Qt::ItemIsEditable);
    }
    QPushButton *apply = new QPushButton(QStringLiteral("Apply"));
    QPushButton *cancel = new QPushButton(QStringLiteral("Cancel"));
    connect(apply, &QPushButton::clicked, this, &DemoDialogForListOfValuesChange::applied1Slot);
    connect(cancel, &QPushButton::clicked, this, &DemoDialogForListOfValuesChange::okSlot);
    QHBoxLayout *buttons = new QHBoxLayout();
    buttons->addWidget(apply);
    buttons->addWidget(cancel);
    QVBoxLayout *layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("<B>") + caption.toHtmlEscaped() + QStringLiteral("</B>")));
    layout->addWidget(list);
    layout->addLayout(buttons);
}

// Leaves the list as it came.
void DemoDialogForListOfValuesChange::okSlot()
{
    reject();
}

void DemoDialogForListOfValuesChange::applied1Slot()
{
    values.clear();
    for (int row = 0; row < list->count(); ++row)
        values << list->item(row)->text();
    accept();
}
