// Connections, the field description vectors and the reporting that every
// operation of the layer shares.
#include "localDb.h"

#include "localErrorType.h"
#include "localOperatorCompiled.h"
#include "localString.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSqlError>
#include <QStringList>

#include <iostream>

namespace {

std::u16string wide(const QString &text)
{
    return localFromQString(text);
}

std::u16string sourcePath(const char *file)
{
    return localString::wideFromUtf8(file);
}

// The fixed pieces of the full report go through the translation call, so
// that a translation could replace them.
std::u16string translated(const char *text)
{
    return wide(QCoreApplication::translate("QObject", text));
}

void coutLine(const std::u16string &text)
{
    std::cout << localNarrow(text) << "\n" << std::flush;
}

} // namespace

std::u16string localDb::number(int64_t value)
{
    return localAscii(std::to_string(value).c_str());
}

// --- connections ---------------------------------------------------------------

QString localDb::openFailureText(const QSqlDatabase &db, const QString &fileName)
{
    const QSqlError error = db.lastError();
    return QStringLiteral("Ошибка открытия базы\n") + QStringLiteral("fileName = ") + fileName + "\n" +
           QStringLiteral("databaseText() = ") + error.databaseText() + "\n" + QStringLiteral("driverText()   = ") +
           error.driverText() + "\n";
}

void localDb::connectionDefaultsSet(QSqlDatabase &db)
{
    db.setHostName(QStringLiteral("localhost"));
    db.setUserName(QStringLiteral("korvel"));
    db.setPassword(QStringLiteral("korvel"));
}

QSqlDatabase localDb::mainConnectionOpen(const std::u16string &fileName, const std::u16string &title, bool &opened)
{
    opened = false;
    const QString connection = localToQString(mainConnectionName);
    QSqlDatabase db = QSqlDatabase::contains(connection)
                          ? QSqlDatabase::database(connection, false)
                          : QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
    // A name that does not exist is never created: the data file stands in.
    std::u16string file = fileName;
    if (!QFileInfo::exists(localToQString(file)))
        file = localServices::applicationGetDataFullFileName();
    const localDbPlace place = LOCAL_DB_PLACE;
    logWrite(u"fileNameForOpenQString=[" + file + u"]" + u" func: " + localAscii(place.func) + u" file: " +
             sourcePath(place.file) + u" line: " + number(place.line));
    // The application's message line is a widget the core does not have; the
    // log keeps the line instead.
    logWrite(u"localDb::testDbInit выбран файл [" + file + u"]");

    const QString qFile = localToQString(file);
    // open() on an open SQLite connection closes it first and ends the
    // statements running on it: the same file stays open as it is.
    if (!(db.isOpen() && db.databaseName() == qFile)) {
        if (db.isOpen())
            db.close();
        db.setDatabaseName(qFile);
        connectionDefaultsSet(db);
        // An empty name (the user cancelled the choice) would open a
        // temporary database: it counts as a failure.
        if (qFile.isEmpty() || !db.open()) {
            localServices::instance().criticalBox(title, wide(openFailureText(db, qFile)));
            return db;
        }
    }
    std::cout << localNarrow(u"база данных по адресу [" + file + u"] открыта успешно.\n") << std::flush;
    opened = true;
    return db;
}

QSqlDatabase localDb::testDbInit(const std::u16string &fileName)
{
    bool opened = false;
    return mainConnectionOpen(fileName, u"testDbInit", opened);
}

bool localDb::testDbSqliteInit(const std::u16string &fileName)
{
    bool opened = false;
    mainConnectionOpen(fileName, u"testDbSqliteInit", opened);
    return opened;
}

bool localDb::dbQueryExec(const std::u16string &dbName, const std::u16string &sql, QSqlQuery &query)
{
    QSqlDatabase db;
    if (!connectionOrWarning(dbName, db, u"localDb::dbQueryExec()", dbName + u" not found!"))
        return false;
    if (query.exec(localToQString(sql)))
        return true;
    localServices::instance().criticalBox(
        u"dbQueryExec", statementFailedText(LOCAL_DB_PLACE, u"Unable to execute query \n", sql, db, query));
    return false;
}

bool localDb::dbTableExist(const std::u16string &dbName, const std::u16string &tableName)
{
    QSqlDatabase db;
    if (!connectionOrWarning(dbName, db, u"localDb::dbTableExist", u"Db '" + dbName + u"' not found!"))
        return false;
    return db.tables(QSql::Tables).contains(localToQString(tableName), Qt::CaseSensitive);
}

// --- field description vectors ----------------------------------------------------

bool localDb::FieldsDescriptionsPutValue(localDbFieldDescriptionVector &fields, const std::u16string &fieldName,
                                         const std::u16string &value)
{
    for (localDbFieldDescription &field : fields) {
        if (field.name == fieldName) {
            field.value = localString::utf8FromWide(value);
            return true;
        }
    }
    coutLine(u" Не удалось сохранить " + value + u" в " + fieldName);
    coutLine(u" localDbFieldDescription::PrimaryKeyName    = [" +
             std::u16string(localDbFieldDescription::PrimaryKeyName) + u"] ");
    coutLine(u"                                  FieldName = [" + fieldName + u"] ");
    return false;
}

void localDb::FieldsDescriptionsCOUT(const localDbFieldDescriptionVector &fields)
{
    for (const localDbFieldDescription &field : fields) {
        coutLine(u"getName() = " + field.getName());
        coutLine(u"valueAsStdString = '" + localString::wideFromUtf8(field.valueAsStdString()) + u"'");
        coutLine(u"getMyType() = " + field.getMyType());
        coutLine(u"getSqlType() = " + field.getSqlType());
        coutLine(u"getLen() = " + number(field.getLen()));
        coutLine(u"getSqlLen() = " + number(field.getSqlLen()));
        coutLine(u"getDec() = " + number(field.getDec()));
        coutLine(u"getSqlDec() = " + number(field.getSqlDec()));
    }
}

std::u16string localDb::FieldsDescriptionsToHtml(const localDbFieldDescriptionVector &fields)
{
    std::u16string html = u"<B> список полей в Fd</B> <BR/><BR/>";
    for (const localDbFieldDescription &field : fields) {
        html += u"<B>" + field.name + u"</B>" + u"  " + localString::wideFromUtf8(field.value) + u"  " + field.myType +
                u"  " + number(field.len) + u"<BR/>";
    }
    return html;
}

// --- reporting ------------------------------------------------------------------

bool localDb::connectionFind(const std::u16string &dbName, QSqlDatabase &db)
{
    const QString name = localToQString(dbName);
    if (!QSqlDatabase::contains(name))
        return false;
    db = QSqlDatabase::database(name, false);
    return true;
}

bool localDb::connectionOrWarning(const std::u16string &dbName, QSqlDatabase &db, const std::u16string &title,
                                  const std::u16string &text)
{
    if (connectionFind(dbName, db))
        return true;
    localServices::instance().messageBox(localServices::boxWarning, title, text);
    return false;
}

std::u16string localDb::locatedText(const localDbPlace &place, const std::u16string &head)
{
    return u"func: " + localAscii(place.func) + u"<BR/> file: " + sourcePath(place.file) + u"<BR/> line: " +
           number(place.line) + u"<BR/><BR/>" + head;
}

void localDb::locatedBox(localServices::boxKind kind, const localDbPlace &place, const std::u16string &title,
                         const std::u16string &head)
{
    localServices::instance().messageBox(kind, title, locatedText(place, head));
}

void localDb::statementFailedBox(const localDbPlace &place, const std::u16string &title, const std::u16string &sql)
{
    localServices::instance().messageBox(localServices::boxWarning, title,
                                         u"func: " + localAscii(place.func) + u"\n file: " + sourcePath(place.file) +
                                             u"\n line: " + number(place.line) + u"\n\n" +
                                             u"Ошибка при выполнении запроса: \n\n" + sql);
}

std::u16string localDb::errorTexts(const QSqlDatabase &db, const QSqlQuery &query)
{
    const QSqlError dbError = db.lastError();
    const QSqlError queryError = query.lastError();
    return translated("Db databaseText   : ") + wide(dbError.databaseText()) + u"\n" +
           translated("Db driverText     : ") + wide(dbError.driverText()) + u"\n" +
           translated("Query databaseText: ") + wide(queryError.databaseText()) + u"\n" +
           translated("Query  driverText : ") + wide(queryError.driverText()) + u"\n";
}

std::u16string localDb::statementFailedText(const localDbPlace &place, const std::u16string &head,
                                            const std::u16string &sql, const QSqlDatabase &db, const QSqlQuery &query)
{
    return translated("func: ") + localAscii(place.func) + translated("\n file: ") + sourcePath(place.file) +
           translated("\n line: ") + number(place.line) + u"\n\n" + head + translated("SQL : ") + sql + u"\n\n" +
           errorTexts(db, query);
}

void localDb::logPlace(const localDbPlace &place)
{
    coutLine(u"func: " + localAscii(place.func) + u" file: " + sourcePath(place.file) + u" line: " +
             number(place.line));
}

void localDb::logStatement(const localDbPlace &place, const std::u16string &sql)
{
    logPlace(place);
    coutLine(u"sqlCommand= '" + sql + u"'");
}

void localDb::logErrors(const QSqlDatabase &db, const QSqlQuery &query)
{
    const QSqlError dbError = db.lastError();
    const QSqlError queryError = query.lastError();
    coutLine(u"dbMain.lastError().databaseText() = '" + wide(dbError.databaseText()) + u"'");
    coutLine(u"dbMain.lastError().driverText() = '" + wide(dbError.driverText()) + u"'");
    coutLine(u"query.lastError().databaseText() = '" + wide(queryError.databaseText()) + u"'");
    coutLine(u"query.lastError().driverText() = '" + wide(queryError.driverText()) + u"'");
}
