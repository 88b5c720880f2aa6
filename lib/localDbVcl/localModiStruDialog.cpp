#include "localModiStruDialog.h"

#include "localDb.h"
#include "localServices.h"
#include "localString.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

#include <unordered_set>

namespace {

const char *const fieldHeads[] = {"Name", "Type", "Width", "Decimal", "NULL", "comment"};
const char16_t *const fieldTypes[] = {u"CHAR", u"INT", u"NUMERIC"};
// The default arrow is wider than the short type words it opens.
const char *const narrowArrow = "QComboBox::drop-down { width: 12px; }";

QString lineToolTip(const localDbFieldDescription &field)
{
    return QStringLiteral(" sqlName: ") + localToQString(field.sqlName) + QStringLiteral(" sqlType: ")
           + localToQString(field.sqlType) + QStringLiteral(" sqlLen: ") + QString::number(field.sqlLen);
}

QSpinBox *numberEdit(int value)
{
    QSpinBox *edit = new QSpinBox;
    edit->setRange(0, 9999);
    edit->setValue(value);
    return edit;
}

} // namespace

localModiStruDialog::localModiStruDialog(const std::u16string &db, const std::u16string &table,
                                         const localDbFieldDescriptionVector &fields, QWidget *parent)
    : QDialog(parent), dbName(db), tableName(table), fieldsRead(fields), tabWidget(new QTabWidget)
{
    title = localToQString(tableName) + QStringLiteral(" [") + localToQString(dbName) + QStringLiteral("]");
    setWindowTitle(title);
    tabWidget->addTab(getScrollAreaFields(), QStringLiteral("Fields"));
    tabWidget->addTab(indexesPage(), QStringLiteral("Indexes"));
    tabWidget->addTab(tablePage(), QStringLiteral("Table"));

    QPushButton *add = new QPushButton(QStringLiteral("Add field"));
    connect(add, &QPushButton::clicked, this, [this] { fieldAdd(); });
    QDialogButtonBox *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->addButton(add, QDialogButtonBox::ActionRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &localModiStruDialog::slotOk);
    connect(buttons, &QDialogButtonBox::rejected, this, &localModiStruDialog::slotCancel);

    QVBoxLayout *layout = new QVBoxLayout(this);
    layout->addWidget(tabWidget, 1);
    layout->addWidget(buttons);
    resize(640, 400);
}

QScrollArea *localModiStruDialog::getScrollAreaFields()
{
    if (fieldsArea != nullptr)
        return fieldsArea;
    QWidget *page = new QWidget;
    fieldsGrid = new QGridLayout(page);
    fieldsGrid->setAlignment(Qt::AlignTop);
    for (int column = 0; column < int(std::size(fieldHeads)); ++column)
        fieldsGrid->addWidget(new QLabel(QStringLiteral("<b>%1</b>").arg(QLatin1String(fieldHeads[column]))), 0,
                              column);
    for (const localDbFieldDescription &field : fieldsRead)
        lineAdd(field);
    fieldsArea = new QScrollArea;
    fieldsArea->setWidgetResizable(true);
    fieldsArea->setWidget(page);
    return fieldsArea;
}

void localModiStruDialog::lineAdd(const localDbFieldDescription &field)
{
    fieldLine line{field,
                   new QLineEdit(localToQString(field.name)),
                   new QComboBox,
                   numberEdit(field.len),
                   numberEdit(field.dec),
                   new QCheckBox,
                   new QLineEdit};
    const bool key = field.name == localDbFieldDescription::PrimaryKeyName;
    if (key) {
        line.type->addItem(QStringLiteral("primary key"));
        // The key as the layer describes it names no source column.
        line.original.sqlName = localDbFieldDescription::PrimaryKeyName;
    } else {
        for (const char16_t *type : fieldTypes)
            line.type->addItem(localToQString(type));
        // A type outside the list stays selectable, so an untouched line
        // keeps it.
        const QString current = localToQString(field.myType);
        if (line.type->findText(current) < 0)
            line.type->addItem(current);
        line.type->setCurrentText(current);
    }
    line.type->setStyleSheet(QLatin1String(narrowArrow));
    QWidget *const widgets[] = {line.name, line.type, line.width, line.decimals, line.null, line.comment};
    const int row = int(lines.size()) + 1;
    for (int column = 0; column < int(std::size(widgets)); ++column) {
        widgets[column]->setEnabled(!key);
        widgets[column]->setToolTip(lineToolTip(line.original));
        fieldsGrid->addWidget(widgets[column], row, column);
    }
    connect(line.name, &QLineEdit::textEdited, this, &localModiStruDialog::changedMark);
    connect(line.comment, &QLineEdit::textEdited, this, &localModiStruDialog::changedMark);
    connect(line.type, QOverload<int>::of(&QComboBox::activated), this, &localModiStruDialog::changedMark);
    connect(line.width, QOverload<int>::of(&QSpinBox::valueChanged), this, &localModiStruDialog::changedMark);
    connect(line.decimals, QOverload<int>::of(&QSpinBox::valueChanged), this, &localModiStruDialog::changedMark);
    connect(line.null, &QCheckBox::toggled, this, &localModiStruDialog::changedMark);
    lines.push_back(line);
}

void localModiStruDialog::fieldAdd(const std::u16string &name)
{
    localDbFieldDescription field(name, u"CHAR", 10, 0);
    field.sqlName = newFieldSource;
    lineAdd(field);
    lines.back().name->setFocus();
    changedMark();
}

void localModiStruDialog::changedMark()
{
    if (isChanged)
        return;
    isChanged = true;
    setWindowTitle(QStringLiteral("[ * ] ") + title);
}

localDbFieldDescriptionVector localModiStruDialog::fieldsEdited() const
{
    localDbFieldDescriptionVector fields;
    fields.reserve(lines.size());
    for (const fieldLine &line : lines) {
        localDbFieldDescription field = line.original;
        if (field.name != localDbFieldDescription::PrimaryKeyName) {
            field.name = localFromQString(line.name->text().trimmed());
            field.myType = localFromQString(line.type->currentText());
            field.len = line.width->value();
            field.dec = line.decimals->value();
        }
        fields.push_back(field);
    }
    return fields;
}

std::u16string localModiStruDialog::fieldsProblem() const
{
    std::unordered_set<std::u16string> names;
    for (const localDbFieldDescription &field : fieldsEdited()) {
        if (field.name.empty())
            return u"A field has no name.";
        // SQLite compares column names without case.
        if (!names.insert(localFromQString(localToQString(field.name).toLower())).second)
            return u"The field " + field.name + u" is there twice.";
    }
    return std::u16string();
}

void localModiStruDialog::slotOk()
{
    const std::u16string problem = fieldsProblem();
    if (!problem.empty()) {
        localServices::instance().messageBox(localServices::boxWarning, u"localModiStruDialog", problem);
        return;
    }
    accept();
}

void localModiStruDialog::slotCancel()
{
    reject();
}

QWidget *localModiStruDialog::indexesPage()
{
    QWidget *page = new QWidget;
    QVBoxLayout *layout = new QVBoxLayout(page);
    QListWidget *list = new QListWidget;
    for (const std::u16string &index : localDb::dbtGetIdxNames(dbName, tableName)) {
        QStringList keys;
        for (const std::u16string &key : localDb::idxKeyFieldNamesGet(dbName, index))
            keys << localToQString(key);
        list->addItem(localToQString(index) + QStringLiteral(" (") + keys.join(QStringLiteral(", "))
                      + QStringLiteral(")"));
    }
    layout->addWidget(list, 1);
    layout->addWidget(new QLabel(QStringLiteral("A change of the fields rebuilds the table without these indexes.")));
    return page;
}

QWidget *localModiStruDialog::tablePage()
{
    QWidget *page = new QWidget;
    QFormLayout *layout = new QFormLayout(page);
    layout->addRow(QStringLiteral("Table"), new QLabel(localToQString(tableName)));
    layout->addRow(QStringLiteral("Database"), new QLabel(localToQString(dbName)));
    layout->addRow(QStringLiteral("Rows"),
                   new QLabel(QString::number(qlonglong(localDb::dbtRecordCount(dbName, tableName)))));
    layout->addRow(QStringLiteral("Fields"), new QLabel(QString::number(qulonglong(fieldsRead.size()))));
    return page;
}
