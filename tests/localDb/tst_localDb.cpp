// Connections, the schema reading of a column, and the operations that
// change a table's structure, on real SQLite files.
#include "localDbTestSupport.h"

using localDbTest::database;
using localTest::q;
using localTest::w;

Q_DECLARE_METATYPE(localDbFieldDescriptionVector)

namespace {

localDbFieldDescription field(const char16_t *name, const char16_t *type, int len, const char16_t *sqlName = u"")
{
    localDbFieldDescription description(name, type, len, 0);
    description.sqlName = sqlName;
    return description;
}

} // namespace

class tst_localDb : public QObject {
    Q_OBJECT

private slots:
    // Read as "myType sqlType len/sqlLen dec/sqlDec".
    void schemaType_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("read");
        QTest::newRow("length above the default") << "CHAR(300)" << "CHAR CHAR 255/255 0/0";
        QTest::newRow("numeric above the default") << "NUMERIC(30)" << "NUMERIC NUMERIC 24/24 0/0";
        QTest::newRow("decimals never read") << "NUMERIC(10,2)" << "NUMERIC NUMERIC 10/10 0/0";
        QTest::newRow("varchar becomes char") << "VARCHAR(20)" << "CHAR VARCHAR 20/20 0/0";
        QTest::newRow("integer becomes int") << "INTEGER" << "INT INTEGER 24/24 0/0";
        QTest::newRow("case counts") << "char(10)" << " char 10/10 0/0";
        QTest::newRow("unknown type") << "TEXT" << " TEXT 255/255 0/0";
        QTest::newRow("bracket first is no bracket") << "(5)" << " (5) 255/255 0/0";
    }
    void schemaType()
    {
        QFETCH(QString, type);
        const localDbFieldDescription c(u"c", w(type));
        QTEST(QString("%1 %2 %3/%4 %5/%6")
                  .arg(q(c.getMyType()), q(c.getSqlType()))
                  .arg(c.getLen())
                  .arg(c.getSqlLen())
                  .arg(c.getDec())
                  .arg(c.getSqlDec()),
              "read");
        // Until a record is read, the value holds the type text.
        QCOMPARE(QString::fromStdString(c.valueAsStdString()), type);
    }

    void mainConnectionFallsBackToTheDataFile()
    {
        database db;
        const QString missing = db.dir.filePath("missing.sqlite");
        qApp->setProperty("dataFileName", db.fileName);
        QVERIFY(localDb::testDbSqliteInit(w(missing)));
        QVERIFY(!QFile::exists(missing));
        QCOMPARE(QSqlDatabase::database("dbMain", false).databaseName(), db.fileName);
        QVERIFY(QSqlDatabase::database("dbMain", false).isOpen());

        // No data file either, and headless the choice is cancelled.
        qApp->setProperty("dataFileName", missing);
        QVERIFY(!localDb::testDbSqliteInit(w(missing)));
        QCOMPARE(db.boxTitles(), QString("testDbSqliteInit"));
        QVERIFY(db.lastBoxText().startsWith("Ошибка открытия базы\nfileName = \n"));
        qApp->setProperty("dataFileName", QVariant());
    }

    void createStatement_data()
    {
        QTest::addColumn<localDbFieldDescriptionVector>("fields");
        QTest::addColumn<QString>("statement");
        const QString keyOnly = "CREATE TABLE t (id INTEGER PRIMARY KEY AUTOINCREMENT ";
        QTest::newRow("empty vector") << localDbFieldDescriptionVector() << keyOnly + ")";
        localDbFieldDescription price(u"price", u"NUMERIC", 24, 2);
        QTest::newRow("decimals dropped, no length no bracket")
            << localDbFieldDescriptionVector{field(u"code", u"CHAR", 10), price, field(u"qty", u"INT", 0)}
            << keyOnly + ", code CHAR(10), price NUMERIC(24), qty INT)";
        QTest::newRow("id first is skipped")
            << localDbFieldDescriptionVector{localDbFieldDescription::primaryKey(), field(u"code", u"CHAR", 10)}
            << keyOnly + ", code CHAR(10))";
    }
    void createStatement()
    {
        QFETCH(localDbFieldDescriptionVector, fields);
        QFETCH(QString, statement);
        database db;
        QVERIFY(localDb::dbtCreate(u"dbMain", u"t", fields));
        QCOMPARE(database::rows("select sql from sqlite_master where name='t'"), statement);
        QVERIFY(db.boxes->boxes.empty());
    }

    // Refused operations show one box and touch nothing.
    void refusal_data()
    {
        QTest::addColumn<int>("operation");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");
        QTest::newRow("no connection") << 0 << "localDb::dbTableExist" << "Db 'nowhere' not found!";
        QTest::newRow("create existing") << 1 << "dbtCreate" << "<BR/><BR/>Table a alredy exist in dbMain!";
        QTest::newRow("copy into existing") << 2 << "dbtCopy" << "<BR/><BR/>Table b alredy exist in dbMain!";
        QTest::newRow("rename to itself") << 3 << "dbtRename" << "<BR/><BR/>Table a already exist in dbMain!";
        QTest::newRow("delete missing") << 4 << "dbtDelete" << "<BR/><BR/>Table z not exist in dbMain!";
    }
    void refusal()
    {
        QFETCH(int, operation);
        database db;
        database::exec("create table a (id INTEGER PRIMARY KEY AUTOINCREMENT, code CHAR(10))");
        database::exec("create table b (id INTEGER PRIMARY KEY AUTOINCREMENT, code CHAR(10))");
        database::exec("insert into b (code) values ('kept')");
        const auto run = [](int which) {
            switch (which) {
            case 0:
                return localDb::dbTableExist(u"nowhere", u"a");
            case 1:
                return localDb::dbtCreate(u"dbMain", u"a", {});
            case 2:
                return localDb::dbtCopy(u"dbMain", u"a", u"b");
            case 3:
                return localDb::dbtRename(u"dbMain", u"a", u"a");
            default:
                return localDb::dbtDelete(u"dbMain", u"z");
            }
        };
        QVERIFY(!run(operation));
        QTEST(db.boxTitles(), "title");
        QFETCH(QString, text);
        QVERIFY2(db.lastBoxText().endsWith(text), qPrintable(db.lastBoxText()));
        QCOMPARE(database::rows("select name from sqlite_master order by name"), QString("a|b|sqlite_sequence"));
        QCOMPARE(database::rows("select code from b"), QString("kept"));
    }

    // The rebuild goes through the first free temporary name; a column
    // without a source stops it there and leaves that table behind.
    void alter_data()
    {
        QTest::addColumn<bool>("extra");
        QTest::addColumn<QString>("titles");
        QTest::addColumn<QString>("tables");
        QTest::newRow("renamed column keeps its data") << false << "dbtAlter|dbtDelete|dbtRename" << "t|t1";
        QTest::newRow("new column without a source") << true << "dbtAlter|dbQueryExec|dbtAlter" << "t|t1|t2";
    }
    void alter()
    {
        QFETCH(bool, extra);
        database db;
        database::exec("create table t (id INTEGER PRIMARY KEY AUTOINCREMENT, code CHAR(10))");
        database::exec("insert into t (code) values ('a'), ('b')");
        database::exec("create table t1 (x INT)");
        localDbFieldDescriptionVector fields{field(u"id", u"INTEGER", 0, u"id"), field(u"name", u"CHAR", 10, u"code")};
        if (extra)
            fields.push_back(field(u"extra", u"CHAR", 5, u"extra"));
        QCOMPARE(localDb::dbtAlter(u"dbMain", u"t", fields), !extra);
        QTEST(db.boxTitles(), "titles");
        QCOMPARE(db.boxes->boxes[0].kind, localServices::boxAbout);
        const QString statement = extra ? "INSERT INTO  t2(id, name, extra) SELECT id, code, extra FROM t;"
                                        : "INSERT INTO  t2(id, name) SELECT id, code FROM t;";
        QVERIFY(q(db.boxes->boxes[0].text).endsWith(statement));
        QTEST(database::rows("select name from sqlite_master where name like 't%' order by name"), "tables");
        QCOMPARE(database::rows("select * from t order by id"), QString("1:a|2:b"));
    }
};

LOCAL_TEST_MAIN(tst_localDb)
#include "tst_localDb.moc"
