#include "localDbManager.h"

#include "localDbtQTableView.h"
#include "localModiStruDialog.h"

#include "localDb.h"
#include "localServices.h"
#include "localString.h"
#include "localVCL.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QSqlError>
#include <QSqlQueryModel>

namespace {

enum managerColumn { columnType, columnName, columnRows, columnSql, managerColumns };

const char *const headers[managerColumns] = {"objType", "objName", "rowCount", "tabComment"};

} // namespace

localDbManagerTableModel::localDbManagerTableModel(const std::u16string &name, QObject *parent)
    : QAbstractTableModel(parent), dbName(name)
{
    objectsRead();
}

void localDbManagerTableModel::objectsRead()
{
    QSqlDatabase db;
    if (!localDb::connectionFind(dbName, db)) {
        localServices::instance().messageBox(localServices::boxWarning,
                                             u"localDbManagerTableModel::localDbManagerTableModel",
                                             u"DB [" + dbName + u"] not found!");
        return;
    }
    QSqlQuery query(db);
    if (!localDb::dbQueryExec(dbName, u"select * from sqlite_master ;", query))
        return;
    const QSqlRecord columns = query.record();
    const int typeField = columns.indexOf(QStringLiteral("type"));
    const int nameField = columns.indexOf(QStringLiteral("name"));
    const int sqlField = columns.indexOf(QStringLiteral("sql"));
    while (query.next()) {
        object row;
        row.type = query.value(typeField).toString();
        row.name = query.value(nameField).toString();
        row.sql = query.value(sqlField).toString();
        if (row.type == QLatin1String("table"))
            row.rowCount = localDb::dbtRecordCount(dbName, localFromQString(row.name));
        objects.push_back(std::move(row));
    }
}

void localDbManagerTableModel::reload()
{
    beginResetModel();
    objects.clear();
    objectsRead();
    endResetModel();
}

int localDbManagerTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(objects.size());
}

int localDbManagerTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : managerColumns;
}

const localDbManagerTableModel::object *localDbManagerTableModel::objectAt(int row) const
{
    return row >= 0 && size_t(row) < objects.size() ? &objects[size_t(row)] : nullptr;
}

QVariant localDbManagerTableModel::data(const QModelIndex &index, int role) const
{
    const object *row = objectAt(index.row());
    if (row == nullptr)
        return QVariant();
    const int column = index.column();
    // The text columns answer the alignment role with their text as well:
    // a view reads it as no alignment flag and keeps its default.
    const bool textRole = role == Qt::DisplayRole || role == Qt::TextAlignmentRole;
    switch (column) {
    case columnType:
        return textRole ? QVariant(row->type) : QVariant();
    case columnName:
        return textRole ? QVariant(row->name) : QVariant();
    case columnRows:
        return role == Qt::DisplayRole ? QVariant(qlonglong(row->rowCount)) : QVariant();
    case columnSql:
        return textRole ? QVariant(row->sql) : QVariant();
    default:
        return role == Qt::DisplayRole
                   ? QVariant(QStringLiteral("row = %1  col = %2   ").arg(index.row()).arg(column))
                   : QVariant();
    }
}

QVariant localDbManagerTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return QVariant();
    if (orientation == Qt::Vertical)
        return section + 1;
    return section >= 0 && section < managerColumns ? QVariant(QString::fromLatin1(headers[section])) : QVariant();
}

localDbManagerTableView::localDbManagerTableView(const std::u16string &dbName, QWidget *parent)
    : QTableView(parent), model(new localDbManagerTableModel(dbName, this))
{
    setModel(model);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    // The SQL text stays on one line, elided, so every object takes one row.
    setWordWrap(false);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setStretchLastSection(true);
    resizeColumnsToContents();
    if (model->rowCount() > 0)
        setCurrentIndex(model->index(0, 0));
}

void localDbManagerTableView::keyPressEvent(QKeyEvent *event)
{
    const localDbManagerTableModel::object *row = model->objectAt(currentIndex().row());
    const bool isTable = row != nullptr && row->type == QLatin1String("table");
    const std::u16string dbName = model->databaseName();
    switch (event->key()) {
    case Qt::Key_F4:
        if (!isTable)
            return;
        if (event->modifiers() & Qt::ShiftModifier) {
            if (tableStructureEdit(dbName, localFromQString(row->name)))
                model->reload();
        } else {
            dbTableBrowse(dbName, localFromQString(row->name));
        }
        return;
    case Qt::Key_Delete:
        currentObjectDelete();
        return;
    default:
        QTableView::keyPressEvent(event);
    }
}

void localDbManagerTableView::currentObjectDelete()
{
    const localDbManagerTableModel::object *row = model->objectAt(currentIndex().row());
    if (row == nullptr)
        return;
    const std::u16string name = localFromQString(row->name);
    bool deleted = false;
    if (row->type == QLatin1String("table"))
        deleted = localDb::dbtDeleteAfterAnswer(model->databaseName(), name);
    else if (row->type == QLatin1String("index"))
        deleted = localDb::idxDeleteAfterAnswer(model->databaseName(), name);
    if (deleted)
        model->reload();
}

bool localDbManagerTableView::dbTableBrowse(const std::u16string &dbName, const std::u16string &tableName)
{
    QSqlDatabase db;
    if (!localDb::connectionFind(dbName, db)) {
        localServices::instance().messageBox(localServices::boxWarning, u"localDb::dbTableBrowse()",
                                             dbName + u"not found!");
        return false;
    }
    localDbtQTableView *view = new localDbtQTableView(dbName, tableName);
    const QSqlError error = view->queryModel()->lastError();
    if (error.isValid()) {
        // "/n" is how the report joins the texts.
        localServices::instance().messageBox(
            localServices::boxWarning, u"Warning",
            u"dbManagelocalDb::dbTableBrowse() " +
                localFromQString(error.databaseText() + QStringLiteral("/n") + error.driverText()));
        delete view;
        return false;
    }
    localVCL::applicationShowWidget(view, localToQString(tableName), false);
    return true;
}

bool localDbManagerTableView::tableStructureEdit(const std::u16string &dbName, const std::u16string &tableName)
{
    const localDbFieldDescriptionVector fields = localDb::dbtFieldsDescriptionsGet(dbName, tableName);
    if (fields.empty())
        return false;
    localModiStruDialog dialog(dbName, tableName, fields);
    // An untouched structure is not rebuilt: the rebuild would lose the
    // table's indexes for nothing.
    if (dialog.exec() != QDialog::Accepted || !dialog.changed())
        return false;
    return localDb::dbtAlter(dbName, tableName, dialog.fieldsEdited());
}

QWidget *localDbManager::managerShow(const std::u16string &dbName)
{
    localDbManagerTableView *view = new localDbManagerTableView(dbName);
    view->resize(720, 360);
    return localVCL::applicationShowWidget(view, QStringLiteral("DB: ") + localToQString(dbName), false);
}

void localDbManager::dbManage()
{
    const std::u16string fileName = localServices::applicationGetDataFullFileName();
    if (fileName.empty())
        return;
    if (!localDb::testDbSqliteInit(fileName))
        return;
    managerShow(localDb::mainConnectionName);
}
