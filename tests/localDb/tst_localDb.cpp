// Connections and the schema reading of a column, on real SQLite files.
#include "localDbTestSupport.h"

using localDbTest::database;
using localTest::q;
using localTest::w;

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

};

LOCAL_TEST_MAIN(tst_localDb)
#include "tst_localDb.moc"
