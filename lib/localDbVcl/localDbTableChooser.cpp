#include "localDbTableChooser.h"

#include "localDb.h"
#include "localString.h"

#include <QDialogButtonBox>
#include <QListWidget>
#include <QVBoxLayout>

#include <iostream>

localDbTableChooser::localDbTableChooser(const std::u16string &dbName, QWidget *parent)
    : QDialog(parent), list(new QListWidget)
{
    setWindowTitle(QStringLiteral("Выбор таблицы из БД ") + localToQString(dbName));
    QSqlDatabase db;
    if (localDb::connectionFind(dbName, db))
        list->addItems(db.tables(QSql::Tables));
    if (list->count() > 0)
        list->setCurrentRow(0);
    QDialogButtonBox *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(list, &QListWidget::itemActivated, this, &QDialog::accept);
    QVBoxLayout *layout = new QVBoxLayout(this);
    layout->addWidget(list, 1);
    layout->addWidget(buttons);
}

std::u16string localDbTableChooser::tableChosen() const
{
    const QListWidgetItem *item = list->currentItem();
    return item == nullptr ? std::u16string() : localFromQString(item->text());
}

std::u16string localDbTableChooser::tableChoose(const std::u16string &dbName, QWidget *parent)
{
    localDbTableChooser chooser(dbName, parent);
    const int result = chooser.exec();
    switch (result) {
    case QDialog::Accepted:
        std::cout << "Accepted\n";
        return chooser.tableChosen();
    case QDialog::Rejected:
        std::cout << "Rejected\n";
        return std::u16string();
    default:
        std::cout << "Unexpected\n";
        return std::u16string();
    }
}
