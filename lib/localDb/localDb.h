// The layer through which everything touches a database: static operations
// over named QSQLITE connections. Each takes the connection's name first,
// builds plain SQL text (names go in as they stand: nothing quotes or checks
// them), reports a failure to the user in a box of its own and answers a
// flag, an empty text or an empty vector; a caller need only look at that.
#ifndef LOCALDB_H
#define LOCALDB_H

#include "localDbFieldDescription.h"
#include "localServices.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QString>
#include <QVariant>

#include <cstdint>
#include <string>
#include <vector>

// Where a report comes from: the routine and its place in the source.
struct localDbPlace {
    const char *func;
    const char *file;
    int line;
};
#define LOCAL_DB_PLACE (localDbPlace{__func__, __FILE__, __LINE__})

class localDb {
public:
    localDb() = delete;

    // The connection that the console, the tests' databases and the browse
    // grids use.
    static constexpr const char16_t *mainConnectionName = u"dbMain";

    // --- connections ---
    // Opens "dbMain" on the file, or on the application's data file when the
    // given one does not exist. An open connection on the same file is kept
    // as it is.
    static QSqlDatabase testDbInit(const std::u16string &fileName);
    static bool testDbSqliteInit(const std::u16string &fileName);
    // "Ошибка открытия базы\n" with the file and the connection's error texts.
    static QString openFailureText(const QSqlDatabase &db, const QString &fileName);
    // Host, user and password of a connection; SQLite ignores them.
    static void connectionDefaultsSet(QSqlDatabase &db);

    // Runs one statement with the caller's query (made on that connection),
    // so that the caller reads its rows afterwards.
    static bool dbQueryExec(const std::u16string &dbName, const std::u16string &sql, QSqlQuery &query);
    // Case-sensitive look-up among the connection's tables.
    static bool dbTableExist(const std::u16string &dbName, const std::u16string &tableName);

    // --- field description vectors ---
    // Stores the value into the first field of that name.
    static bool FieldsDescriptionsPutValue(localDbFieldDescriptionVector &fields, const std::u16string &fieldName,
                                           const std::u16string &value);
    static void FieldsDescriptionsCOUT(const localDbFieldDescriptionVector &fields);
    // The list of fields as rich text for a dialog.
    static std::u16string FieldsDescriptionsToHtml(const localDbFieldDescriptionVector &fields);

    // --- tables ---
    static bool dbtCreate(const std::u16string &dbName, const std::u16string &tableName,
                          const localDbFieldDescriptionVector &fields);
    static bool dbtDelete(const std::u16string &dbName, const std::u16string &tableName);
    static bool dbtDeleteAfterAnswer(const std::u16string &dbName, const std::u16string &tableName);
    static bool dbtRename(const std::u16string &dbName, const std::u16string &oldName, const std::u16string &newName);
    static bool dbtCopy(const std::u16string &dbName, const std::u16string &sourceName,
                        const std::u16string &targetName);
    // Rebuilds the table as `fields` says: each field's name is its new name,
    // its sqlName the old column whose data it takes.
    static bool dbtAlter(const std::u16string &dbName, const std::u16string &tableName,
                         const localDbFieldDescriptionVector &fields);
    static bool dbtAppendFromDbt(const std::u16string &dbName, const std::u16string &targetName,
                                 const std::u16string &sourceName, const std::u16string &fieldList);
    static localDbFieldDescriptionVector dbtFieldsDescriptionsGet(const std::u16string &dbName,
                                                                  const std::u16string &tableName);

    // --- records ---
    // The SQL literal of a field's value by its myType; "Error" for a type
    // without one.
    static std::u16string fieldLiteral(const localDbFieldDescription &field);
    // The older rule: CHAR quoted, anything else the raw value.
    static std::u16string fieldLiteralRaw(const localDbFieldDescription &field);
    static int64_t dbtRecordCount(const std::u16string &dbName, const std::u16string &tableName);
    // True when a row was found; it is then in `record`.
    static bool dbtRecordGetById(const std::u16string &dbName, const std::u16string &tableName, int64_t id,
                                 QSqlRecord &record);
    // Asks first; anything but OK sends nothing.
    static bool dbtRecordDelete(const std::u16string &dbName, const std::u16string &tableName, int64_t id);
    static bool dbtRecordAppend(const std::u16string &dbName, const std::u16string &tableName,
                                const localDbFieldDescriptionVector &fields);
    // Without the key field in `fields` the update changes nothing.
    static bool dbtRecordUpdate(const std::u16string &dbName, const std::u16string &tableName,
                                const localDbFieldDescriptionVector &fields, const std::u16string &keyFieldName);
    static bool d1btRecordUpdate(const std::u16string &dbName, const std::u16string &tableName,
                                 const localDbFieldDescriptionVector &fields, const std::u16string &keyFieldName);
    // "" when the table has no rows.
    static std::u16string dbtFieldGetMaxVal(const std::u16string &dbName, const std::u16string &tableName,
                                            const std::u16string &fieldName);

    // --- indexes ---
    // Sorted by wide code units.
    static std::vector<std::u16string> dbtGetIdxNames(const std::u16string &dbName, const std::u16string &tableName);
    // In the index's order.
    static std::vector<std::u16string> idxKeyFieldNamesGet(const std::u16string &dbName,
                                                           const std::u16string &indexName);
    static bool idxDelete(const std::u16string &dbName, const std::u16string &indexName);
    static bool idxDeleteAfterAnswer(const std::u16string &dbName, const std::u16string &indexName);

    // --- reporting, shared by every operation of the layer ---
    // The connection of that name, without a box; false when there is none.
    static bool connectionFind(const std::u16string &dbName, QSqlDatabase &db);
    // The same, and on a missing connection a warning with the caller's
    // title and text.
    static bool connectionOrWarning(const std::u16string &dbName, QSqlDatabase &db, const std::u16string &title,
                                    const std::u16string &text);
    // "func: F<BR/> file: S<BR/> line: N<BR/><BR/>" and the head.
    static std::u16string locatedText(const localDbPlace &place, const std::u16string &head);
    static void locatedBox(localServices::boxKind kind, const localDbPlace &place, const std::u16string &title,
                           const std::u16string &head);
    // The warning of a failed statement with its SQL.
    static void statementFailedBox(const localDbPlace &place, const std::u16string &title, const std::u16string &sql);
    // The full report of a failed statement: place, head, SQL and the four
    // error texts of the connection and the query.
    static std::u16string statementFailedText(const localDbPlace &place, const std::u16string &head,
                                              const std::u16string &sql, const QSqlDatabase &db,
                                              const QSqlQuery &query);
    // The four labelled error texts, each ending with a line feed.
    static std::u16string errorTexts(const QSqlDatabase &db, const QSqlQuery &query);
    // Lines on std::cout: the place, the statement, the four error texts.
    static void logPlace(const localDbPlace &place);
    static void logStatement(const localDbPlace &place, const std::u16string &sql);
    static void logErrors(const QSqlDatabase &db, const QSqlQuery &query);

    static std::u16string number(int64_t value);

private:
    static QSqlDatabase mainConnectionOpen(const std::u16string &fileName, const std::u16string &title,
                                           bool &opened);
    static bool recordStatementRun(const localDbPlace &place, const std::u16string &dbName,
                                   const std::u16string &title, const std::u16string &head, const std::u16string &sql);
    static bool recordUpdate(const localDbPlace &place, const std::u16string &dbName, const std::u16string &tableName,
                             const localDbFieldDescriptionVector &fields, const std::u16string &keyFieldName,
                             const std::u16string &title, bool rawLiterals);
};

#endif
