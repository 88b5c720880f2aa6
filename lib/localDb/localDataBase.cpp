#include "localDataBase.h"

#include "localDb.h"
#include "localDbBrowseDescription.h"

#include "localContextUTF8.h"
#include "localInterpretatorUTF8.h"
#include "localServices.h"
#include "localString.h"
#include "localValueList.h"
#include "localValueTable.h"

#include <QDateTime>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

#include <iostream>
#include <iterator>

localDataBaseWindows localDataBaseWindows::handlers;

namespace {

QString q(const std::u16string &text)
{
    return localToQString(text);
}

std::u16string w(const QString &text)
{
    return localFromQString(text);
}

void printLine(const std::u16string &text)
{
    std::cout << localNarrow(text) << "\n" << std::flush;
}

// The most rows QUERYTOVALUETABLE reads; more are dropped without a word.
constexpr int queryRowsLimit = 100;

} // namespace

// ---------------------------------------------------------------------------

localDbConnection::localDbConnection(const QString &connectionName) : name(connectionName)
{
    QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
}

localDbConnection::~localDbConnection()
{
    // Every handle of the connection is gone with its last holder: close and
    // forget it, so that a later object of the same second makes a new one.
    QSqlDatabase::database(name, false).close();
    QSqlDatabase::removeDatabase(name);
}

bool localDbConnection::open() const
{
    QSqlDatabase db = database();
    return db.isOpen() || db.open();
}

std::vector<QString> localDbConnection::tables() const
{
    const QStringList names = database().tables(QSql::Tables);
    return std::vector<QString>(names.begin(), names.end());
}

std::shared_ptr<localDbConnection> localDbConnection::shared(const QString &connectionName)
{
    static std::unordered_map<QString, std::weak_ptr<localDbConnection>> live;
    std::weak_ptr<localDbConnection> &slot = live[connectionName];
    std::shared_ptr<localDbConnection> connection = slot.lock();
    if (connection == nullptr) {
        connection = std::make_shared<localDbConnection>(connectionName);
        slot = connection;
    }
    return connection;
}

// ---------------------------------------------------------------------------
// The field structure of a table: Name, Type, Length, Precision.

namespace {

void fieldStructureColumns(localValueTable &table)
{
    table.clear();
    for (const char16_t *column : {u"Name", u"Type", u"Length", u"Precision"})
        table.columnAdd(column);
}

QSqlRecord tableRecord(const localDbConnection &connection, const std::u16string &tableName, bool &readable)
{
    readable = connection.open() && connection.database().driverName() == QLatin1String("QSQLITE");
    return readable ? connection.database().record(q(tableName)) : QSqlRecord();
}

void fieldStructureFill(localValueTable &table, const localDbConnection &connection,
                        const std::u16string &tableName)
{
    fieldStructureColumns(table);
    bool readable = false;
    const QSqlRecord record = tableRecord(connection, tableName, readable);
    for (int i = 0; i < record.count(); ++i) {
        const QSqlField field = record.field(i);
        const size_t row = table.rowAdd(0);
        table.cell(row, 1)->setString(w(field.name()));
        table.cell(row, 2)->setString(w(QString::fromLatin1(QVariant::typeToName(int(field.type())))));
        table.cell(row, 3)->setVal(field.length());
        table.cell(row, 4)->setVal(field.precision());
    }
}

void fieldListFill(localValueList &list, const localDbConnection &connection, const std::u16string &tableName)
{
    list.clear();
    bool readable = false;
    const QSqlRecord record = tableRecord(connection, tableName, readable);
    for (int i = 0; i < record.count(); ++i)
        list.valueSetByPresentation(w(record.fieldName(i)), w(record.fieldName(i)));
}

bool tableKnown(const localDbConnection &connection, const std::u16string &name)
{
    if (!connection.open())
        return false;
    const QString wanted = q(name);
    for (const QString &table : connection.tables())
        if (table == wanted)
            return true;
    return false;
}

// The own variables of an object's context, one line each.
void contextPrint(const localContextUTF8 &context)
{
    for (const localVariable &variable : context.variables)
        printLine(localInterpretatorUTF8::variableLine(variable));
}

// The variable of that name in an object's own context, read as a copy.
bool ownVariableRead(localErrorType &status, const localContextUTF8 &context, const std::u16string &nameUpper,
                     localValueDescription **result)
{
    for (const localVariable &variable : context.variables) {
        if (variable.name == nameUpper) {
            *result = localValueNew();
            localValueDescription::localValueCopy(*result, variable.value);
            return true;
        }
    }
    status = localErrorTypeATTRIBUTEunknown;
    return false;
}

bool graphicOnly(localErrorType &status)
{
    status = localErrorTypeMETHODgraphicOnly;
    return false;
}

bool screenHas(const void *handler)
{
    return handler != nullptr && localServices::instance().graphical();
}

// __TEST / __ТЕСТ of all three classes: numbers 1 to 4 show a demonstration
// browse, any other number answers 0.
template <class T>
bool methodTest(localErrorType &status, T &, localValueVector &arguments, localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1) || !localArgType(status, &arguments, 0, localValueTypeNUM))
        return false;
    const double number = arguments[0]->localValueNumber;
    if (number != 1.0 && number != 2.0 && number != 3.0 && number != 4.0)
        return true;
    if (!screenHas(reinterpret_cast<const void *>(localDataBaseWindows::handlers.browseDemo)))
        return graphicOnly(status);
    localDataBaseWindows::handlers.browseDemo(int(number));
    result->setVal(1.0);
    return true;
}

} // namespace

// ---------------------------------------------------------------------------
// DATABASE

namespace {

bool methodDbToString(localErrorType &status, localDataBase &db, localValueVector &arguments,
                      localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    result->setString(u"База данных [" + w(db.connection->name) + u"] adr [" + localAddressText(&db) + u"] ");
    return true;
}

// The list is read here; the window that shows it belongs to the widget
// library. A list that lacks what a browse needs gives false, its box shown.
bool methodBrowse(localErrorType &status, localDataBase &db, localValueVector &arguments,
                  localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1))
        return false;
    const localValueList *list = localArgValueList(status, arguments, 0);
    if (list == nullptr)
        return false;
    const localDbBrowseDescription description = localDbBrowseDescription::fromList(*list);
    if (!description.complete) {
        result->setBool(false);
        return true;
    }
    if (!screenHas(reinterpret_cast<const void *>(localDataBaseWindows::handlers.browse)))
        return graphicOnly(status);
    db.connection->open();
    if (!localDataBaseWindows::handlers.browse(status, description))
        return false;
    result->setBool(true);
    return true;
}

bool methodTestDbOpen(localErrorType &status, localDataBase &, localValueVector &arguments,
                      localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1) || !localArgType(status, &arguments, 0, localValueTypeSTR))
        return false;
    result->setBool(localDb::testDbSqliteInit(arguments[0]->localValueString));
    return true;
}

// Not implemented, and kept so: a program learns it from the status.
bool methodClear(localErrorType &status, localDataBase &, localValueVector &arguments, localValueDescription *)
{
    if (localArgCount(status, &arguments, 0))
        status = localErrorTypeINTERNAL;
    return false;
}

bool methodConnect(localErrorType &status, localDataBase &db, localValueVector &arguments,
                   localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    const QString fileName = q(localServices::applicationGetDataFullFileName());
    if (fileName.isEmpty() || !QFileInfo::exists(fileName)) {
        printLine(u"CONNECT() file " + w(fileName));
        status = localErrorTypeFILEnotFound;
        return false;
    }
    printLine(u"CONNECT() try to connect fileNameForOpenQString=[" + w(fileName) + u"]");
    QSqlDatabase connection = db.connection->database();
    if (connection.isOpen() && connection.databaseName() != fileName)
        connection.close();
    connection.setDatabaseName(fileName);
    localDb::connectionDefaultsSet(connection);
    if (!db.connection->open()) {
        localServices::instance().messageBox(localServices::boxCritical, u"classImplementationMethodFunction",
                                             w(localDb::openFailureText(connection, fileName)));
        result->setBool(false);
        return true;
    }
    printLine(u"база данных по адресу [" + w(fileName) + u"] открыта успешно.");
    for (const QString &table : db.connection->tables()) {
        const std::u16string name = db.context->variableNormalName(w(table));
        if (db.context->variableFind(name) == nullptr)
            db.context->variableCreate(name)->value->setString(w(table));
    }
    result->setBool(true);
    return true;
}

bool methodDbDisplay(localErrorType &status, localDataBase &db, localValueVector &arguments,
                     localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    printLine(u"Контекст:");
    contextPrint(*db.context);
    result->setBool(true);
    return true;
}

bool methodQuery(localErrorType &status, localDataBase &db, localValueVector &arguments,
                 localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 2) || !localArgType(status, &arguments, 0, localValueTypeSTR))
        return false;
    localValueTable *table = localValueTable::fromValue(arguments[1]);
    if (table == nullptr) {
        status = localErrorTypePARAMtype;
        return false;
    }
    result->setBool(db.queryExecToValueTable(*table, arguments[0]->localValueString));
    return true;
}

// RECORDGET and TABLEGET: a new object for a table the connection has,
// announced by its TOSTRING; nothing for any other name.
template <class T>
bool objectForTable(localErrorType &status, localDataBase &db, localValueVector &arguments,
                    localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 1) || !localArgType(status, &arguments, 0, localValueTypeSTR))
        return false;
    const std::u16string &name = arguments[0]->localValueString;
    if (!tableKnown(*db.connection, name))
        return true;
    T *object = T::putInCell(T::make(db, name), result);
    localValueVector none;
    localValueDescription *text = nullptr;
    void *slot = object;
    if (T::classImplementationMethodFunction(status, nullptr, &slot, u"TOSTRING", &none, &text))
        printLine(text->localValueString);
    localValueRelease(text);
    return true;
}

bool methodTableFields(localErrorType &status, localDataBase &db, localValueVector &arguments,
                       localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 2) || !localArgType(status, &arguments, 0, localValueTypeSTR))
        return false;
    const std::u16string &name = arguments[0]->localValueString;
    if (localValueTable *table = localValueTable::fromValue(arguments[1])) {
        fieldStructureFill(*table, *db.connection, name);
    } else if (localValueList *list = localValueList::fromValue(arguments[1])) {
        fieldListFill(*list, *db.connection, name);
    } else {
        status = localErrorTypePARAMtype;
        return false;
    }
    result->setBool(true);
    return true;
}

bool methodTables(localErrorType &status, localDataBase &db, localValueVector &arguments,
                  localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    if (!db.connection->open())
        return true;
    localValueList *list = localValueList::newInCell(result);
    localValueDescription name;
    for (const QString &table : db.connection->tables()) {
        name.setString(w(table));
        list->valueAdd(&name, name.localValueString);
    }
    return true;
}

bool methodTreeShow(localErrorType &status, localDataBase &db, localValueVector &arguments,
                    localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    if (!screenHas(reinterpret_cast<const void *>(localDataBaseWindows::handlers.treeShow)))
        return graphicOnly(status);
    db.connection->open();
    localDataBaseWindows::handlers.treeShow(db.connection->database());
    result->setVal(1.0);
    return true;
}

const localDataBase::member dataBaseMembers[] = {
    {u"TOSTRING", u"СТРОКА", methodDbToString},
    {u"__TEST", u"__ТЕСТ", methodTest<localDataBase>},
    {u"__TEST__BROWSE", nullptr, methodBrowse},
    {u"__TESTDBOPEN", nullptr, methodTestDbOpen},
    {u"CLEAR", u"ОЧИСТИТЬ", methodClear},
    {u"CONNECT", u"ПОДКЛЮЧИТЬ", methodConnect},
    {u"DISPLAY", nullptr, methodDbDisplay},
    {u"QUERYTOVALUETABLE", u"ЗАПРОСВТАБЛИЦУЗНАЧЕНИЙ", methodQuery},
    {u"RECORDGET", nullptr, objectForTable<localDataBaseRecord>},
    {u"TABLEFIELDS", u"ТАБЛИЦАПОЛЯ", methodTableFields},
    {u"TABLEGET", nullptr, objectForTable<localDataBaseTable>},
    {u"TABLES", u"ТАБЛИЦЫ", methodTables},
    {u"TREESHOW", nullptr, methodTreeShow},
};

} // namespace

localDataBase::localDataBase()
    : context(new localContextUTF8()),
      connection(localDbConnection::shared(
          QStringLiteral("db-") + QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd:hh:mm:ss"))))
{
}

localDataBase::~localDataBase() = default;

const localNativeClassShape<localDataBase> &localDataBase::classShape()
{
    static const localNativeClassShape<localDataBase> shape = {
        u"DATABASE",           u"БАЗАДАННЫХ",        nullptr,
        u"класс БазаДанных",   "localDataBase::classImplementationMethodFunction()",
        dataBaseMembers,       std::size(dataBaseMembers), attributeRead};
    return shape;
}

bool localDataBase::attributeRead(localErrorType &status, localContextUTF8 *, void **object,
                                  const std::u16string &, const std::u16string &nameUpper,
                                  localValueDescription **result)
{
    return ownVariableRead(status, *static_cast<localDataBase *>(*object)->context, nameUpper, result);
}

bool localDataBase::queryExecToValueTable(localValueTable &table, const std::u16string &sql)
{
    table.clear();
    if (!connection->open())
        return false;
    QSqlQuery query(connection->database());
    query.setForwardOnly(true);
    if (!query.exec(q(sql))) {
        const QSqlDatabase database = connection->database();
        const QSqlError dbError = database.lastError();
        const QSqlError queryError = query.lastError();
        const std::u16string text = localDb::statementFailedText(LOCAL_DB_PLACE, u"Unable to execute query \n",
                                                                 u"'" + sql + u"'", database, query);
        localServices::instance().messageBox(localServices::boxCritical, u"queryExecToValueTable", text);
        table.columnAdd(u"Type");
        table.columnAdd(u"Text");
        const std::pair<const char16_t *, QString> report[] = {
            {u"Unable to execute query", QString()},
            {u"SQL : ", q(sql)},
            {u"Db databaseText: ", dbError.databaseText()},
            {u"Db driverText: ", dbError.driverText()},
            {u"Query databaseText: ", queryError.databaseText()},
            {u"Query  driverText: ", queryError.driverText()},
        };
        for (const auto &line : report) {
            const size_t row = table.rowAdd(0);
            table.cell(row, 1)->setString(line.first);
            table.cell(row, 2)->setString(w(line.second));
        }
        return false;
    }
    int columns = -1;
    for (int rows = 0; rows < queryRowsLimit && query.next(); ++rows) {
        const QSqlRecord record = query.record();
        if (columns < 0) {
            columns = record.count();
            for (int i = 0; i < columns; ++i) {
                const QString name = record.fieldName(i);
                table.columnAdd(name.trimmed().isEmpty() ? u"field" + localNumberToWide(i + 1) : w(name));
            }
        }
        const size_t row = table.rowAdd(0);
        for (int i = 0; i < columns; ++i)
            table.cell(row, size_t(i) + 1)->setString(w(query.value(i).toString()));
    }
    return true;
}

// ---------------------------------------------------------------------------
// DATABASETABLE

namespace {

bool methodTableToString(localErrorType &status, localDataBaseTable &table, localValueVector &arguments,
                         localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    result->setString(u"Таблица базы данных [" + table.name + u"] adr [" + localAddressText(&table) + u"] in ["
                      + w(table.connection->name) + u"] adr [" + localAddressText(table.databaseAddress) + u"] ");
    return true;
}

bool methodTableFieldsGet(localErrorType &status, localDataBaseTable &table, localValueVector &arguments,
                          localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    fieldStructureFill(*localValueTable::newInCell(result), *table.connection, table.name);
    return true;
}

const localDataBaseTable::member tableMembers[] = {
    {u"TOSTRING", u"СТРОКА", methodTableToString},
    {u"__TEST", u"__ТЕСТ", methodTest<localDataBaseTable>},
    {u"FIELDS", nullptr, methodTableFieldsGet},
};

// Tables and records come from their database only.
bool constructorRefused(localErrorType &status, const char *className)
{
    std::cout << className << "::classImplementationMethodFunction() constructor unuseable!\n" << std::flush;
    status = localErrorTypeINTERNAL;
    return false;
}

} // namespace

localDataBaseTable::localDataBaseTable(std::shared_ptr<localDbConnection> tableConnection,
                                       const std::u16string &tableName, const void *database)
    : connection(std::move(tableConnection)), name(tableName), databaseAddress(database)
{
}

localDataBaseTable *localDataBaseTable::make(localDataBase &db, const std::u16string &tableName)
{
    return new localDataBaseTable(db.connection, tableName, &db);
}

const localNativeClassShape<localDataBaseTable> &localDataBaseTable::classShape()
{
    static const localNativeClassShape<localDataBaseTable> shape = {
        u"DATABASETABLE", u"БАЗАДАННЫХТАБЛИЦА", nullptr, u"класс БазаДанныхТаблица",
        "localDataBaseTable::classImplementationMethodFunction()", tableMembers, std::size(tableMembers)};
    return shape;
}

bool localDataBaseTable::construct(localErrorType &status, localContextUTF8 *, localValueVector *,
                                   localValueDescription *)
{
    return constructorRefused(status, "localDataBaseTable");
}

// ---------------------------------------------------------------------------
// DATABASERECORD

namespace {

bool methodRecordToString(localErrorType &status, localDataBaseRecord &record, localValueVector &arguments,
                          localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    result->setString(u"Запись таблицы [" + record.tableName + u"] adr [" + localAddressText(&record) + u"] ");
    return true;
}

bool methodRecordDisplay(localErrorType &status, localDataBaseRecord &record, localValueVector &arguments,
                         localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    contextPrint(*record.context);
    result->setBool(true);
    return true;
}

// Declared, and never given a body.
bool methodRecordFields(localErrorType &status, localDataBaseRecord &, localValueVector &, localValueDescription *)
{
    status = localErrorTypeMETHODunknown;
    return false;
}

bool methodNext(localErrorType &status, localDataBaseRecord &record, localValueVector &arguments,
                localValueDescription *result)
{
    if (!localArgCount(status, &arguments, 0))
        return false;
    result->setBool(record.next());
    return true;
}

bool methodSelect(localErrorType &status, localDataBaseRecord &record, localValueVector &arguments,
                  localValueDescription *result)
{
    if (!localArgCountRange(status, &arguments, 0, 1))
        return false;
    std::u16string clause;
    if (!arguments.empty()) {
        if (!localArgType(status, &arguments, 0, localValueTypeSTR))
            return false;
        clause = u" where " + arguments[0]->localValueString.str();
    }
    result->setBool(record.select(clause));
    return true;
}

const localDataBaseRecord::member recordMembers[] = {
    {u"TOSTRING", u"СТРОКА", methodRecordToString},
    {u"__TEST", u"__ТЕСТ", methodTest<localDataBaseRecord>},
    {u"DISPLAY", nullptr, methodRecordDisplay},
    {u"FIELDS", nullptr, methodRecordFields},
    {u"NEXT", nullptr, methodNext},
    {u"SELECT", nullptr, methodSelect},
};

} // namespace

localDataBaseRecord::localDataBaseRecord(std::shared_ptr<localDbConnection> recordConnection,
                                         const std::u16string &table)
    : context(new localContextUTF8()), connection(std::move(recordConnection)), tableName(table)
{
    bool readable = false;
    const QSqlRecord fields = tableRecord(*connection, tableName, readable);
    for (int i = 0; i < fields.count(); ++i) {
        const std::u16string name = w(fields.fieldName(i));
        const std::u16string nameUpper = localInterpretatorUTF8::nameToUpper(name);
        if (cells.count(nameUpper) != 0)
            continue;
        localValueDescription *cell = context->variableCreate(nameUpper)->value;
        cell->setString(u"value of [" + name + u"]");
        cells.emplace(nameUpper, cell);
    }
}

localDataBaseRecord::~localDataBaseRecord()
{
    query.reset();
}

localDataBaseRecord *localDataBaseRecord::make(localDataBase &db, const std::u16string &table)
{
    return new localDataBaseRecord(db.connection, table);
}

bool localDataBaseRecord::select(const std::u16string &clause)
{
    query.reset(new QSqlQuery(connection->database()));
    query->setForwardOnly(true);
    queryCells.clear();
    if (!query->exec(QStringLiteral("select * from ") + q(tableName) + q(clause) + QStringLiteral(" ;")))
        return false;
    // The columns of the statement are fixed now: find each one's variable once.
    const QSqlRecord columns = query->record();
    queryCells.reserve(size_t(columns.count()));
    for (int i = 0; i < columns.count(); ++i) {
        const auto found = cells.find(localInterpretatorUTF8::nameToUpper(w(columns.fieldName(i))));
        queryCells.push_back(found != cells.end() ? found->second : nullptr);
    }
    return true;
}

bool localDataBaseRecord::next()
{
    if (query == nullptr || !query->next())
        return false;
    for (size_t i = 0; i < queryCells.size(); ++i)
        if (queryCells[i] != nullptr)
            queryCells[i]->setString(w(query->value(int(i)).toString()));
    return true;
}

const localNativeClassShape<localDataBaseRecord> &localDataBaseRecord::classShape()
{
    static const localNativeClassShape<localDataBaseRecord> shape = {
        u"DATABASERECORD",  u"БАЗАДАННЫХЗАПИСЬ",  nullptr,
        u"класс БазаДанныхЗапись", "localDataBaseRecord::classImplementationMethodFunction()",
        recordMembers,      std::size(recordMembers), attributeRead};
    return shape;
}

bool localDataBaseRecord::construct(localErrorType &status, localContextUTF8 *, localValueVector *,
                                    localValueDescription *)
{
    return constructorRefused(status, "localDataBaseRecord");
}

bool localDataBaseRecord::attributeRead(localErrorType &status, localContextUTF8 *, void **object,
                                        const std::u16string &, const std::u16string &nameUpper,
                                        localValueDescription **result)
{
    const localDataBaseRecord &record = *static_cast<localDataBaseRecord *>(*object);
    const auto found = record.cells.find(nameUpper);
    if (found == record.cells.end()) {
        status = localErrorTypeATTRIBUTEunknown;
        return false;
    }
    *result = localValueNew();
    localValueDescription::localValueCopy(*result, found->second);
    return true;
}
