#include "localDbtQTableView.h"

#include "localDb.h"
#include "localServices.h"
#include "localString.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlQueryModel>
#include <QVBoxLayout>

namespace {

const char16_t *const keyTitle = u"localDbTableView::keyPressEvent";

} // namespace

localDbRecordEditor::localDbRecordEditor(const QSqlRecord &record, QWidget *parent) : QDialog(parent)
{
    setWindowTitle(QStringLiteral("localDbTableView::activatedSlot()"));
    log = QStringLiteral("<B>localDbTableView::activatedSlot()</B> <BR/><BR/>");
    QWidget *form = new QWidget;
    QFormLayout *formLayout = new QFormLayout(form);
    const int count = record.count();
    fields.reserve(size_t(count));
    edits.reserve(size_t(count));
    for (int i = 0; i < count; ++i) {
        const QSqlField field = record.field(i);
        const QVariant value = field.value();
        localDbFieldDescription description;
        description.name = localFromQString(field.name());
        // A NULL carries no value type; the column's declared one stands in.
        description.myType = fieldTypeWord(value.isNull() ? field.type() : value.type());
        description.sqlName = description.name;
        fields.push_back(description);
        log += QStringLiteral("fieldName: ") + field.name() + QStringLiteral(" fieldType: ")
               + localToQString(description.myType) + QStringLiteral(" fieldValue: |") + value.toString()
               + QStringLiteral("|<BR/>");
        QLineEdit *edit = new QLineEdit(value.toString());
        edits.push_back(edit);
        formLayout->addRow(field.name(), edit);
    }
    QScrollArea *scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setWidget(form);
    QLabel *head = new QLabel(log);
    head->setTextFormat(Qt::RichText);
    QDialogButtonBox *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    QVBoxLayout *layout = new QVBoxLayout(this);
    layout->addWidget(head);
    layout->addWidget(scroll, 1);
    layout->addWidget(buttons);
}

std::u16string localDbRecordEditor::fieldTypeWord(QVariant::Type type)
{
    if (type == QVariant::Double)
        return u"NUME";
    if (type == QVariant::String)
        return u"CHAR";
    return u"unkn";
}

localDbFieldDescriptionVector localDbRecordEditor::fieldsEdited() const
{
    localDbFieldDescriptionVector edited = fields;
    for (size_t i = 0; i < edited.size(); ++i) {
        const QString text = edits[i]->text();
        // Anything but text goes into the statement unquoted, where an empty
        // value would break it.
        const bool emptyNumber = edited[i].myType != u"CHAR" && text.trimmed().isEmpty();
        edited[i].value = emptyNumber ? std::string("NULL") : text.toStdString();
    }
    return edited;
}

localDbtQTableView::localDbtQTableView(const std::u16string &db, const std::u16string &table, QWidget *parent)
    : QTableView(parent), dbName(db), tableName(table), model(new QSqlQueryModel(this))
{
    QSqlDatabase connection;
    localDb::connectionFind(dbName, connection);
    model->setQuery(localToQString(u"select * from " + tableName + u";"), connection);
    setModel(model);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setWordWrap(false);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setStretchLastSection(true);
    connect(this, &QTableView::activated, this, &localDbtQTableView::activatedSlot);
}

int64_t localDbtQTableView::rowId(int row) const
{
    if (row < 0 || row >= model->rowCount())
        return -1;
    return model->data(model->index(row, 0)).toLongLong();
}

void localDbtQTableView::requery()
{
    const int row = currentIndex().row();
    model->setQuery(model->query().lastQuery(), QSqlDatabase::database(localToQString(dbName), false));
    if (model->rowCount() > 0)
        setCurrentIndex(model->index(std::min(row, model->rowCount() - 1), 0));
}

void localDbtQTableView::activatedSlot(const QModelIndex &index)
{
    const int64_t id = rowId(index.row());
    QSqlRecord record;
    if (id < 0 || !localDb::dbtRecordGetById(dbName, tableName, id, record))
        return;
    localDbRecordEditor editor(record, this);
    if (editor.exec() != QDialog::Accepted)
        return;
    if (localDb::d1btRecordUpdate(dbName, tableName, editor.fieldsEdited(),
                                  localDbFieldDescription::PrimaryKeyName))
        requery();
}

void localDbtQTableView::fetchAll()
{
    const localWaitCursor wait;
    while (model->canFetchMore())
        model->fetchMore();
}

void localDbtQTableView::currentRecordDelete()
{
    const int64_t id = rowId(currentIndex().row());
    if (id < 0 || !localDb::dbtRecordDelete(dbName, tableName, id))
        return;
    localServices &services = localServices::instance();
    services.messageBox(localServices::boxInformation, keyTitle, localFromQString(model->query().lastQuery()));
    requery();
    services.messageBox(localServices::boxInformation, keyTitle, localFromQString(model->query().lastQuery()));
}

void localDbtQTableView::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12)
        localServices::instance().messageBox(localServices::boxWarning, keyTitle,
                                             u"keyPress код F" + localDb::number(key - Qt::Key_F1 + 1));
    const bool control = (modifiers & Qt::ControlModifier) != 0;
    if (control && (key == Qt::Key_PageDown || key == Qt::Key_End))
        fetchAll();
    else if (key == Qt::Key_F4 && !(modifiers & (Qt::ShiftModifier | Qt::AltModifier)))
        activatedSlot(currentIndex());
    else if (key == Qt::Key_Delete)
        currentRecordDelete();
    QTableView::keyPressEvent(event);
}
