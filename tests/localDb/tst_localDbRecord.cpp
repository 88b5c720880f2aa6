// Literals and the operations on single records, on a real SQLite file.
#include "localDbTestSupport.h"

using localDbTest::database;
using localTest::q;
using localTest::w;

namespace {

localDbFieldDescription valued(const char16_t *name, const char16_t *type, int dec, const std::string &value)
{
    localDbFieldDescription field(name, type, 10, dec);
    field.value = value;
    return field;
}

void goodsTable()
{
    database::exec("create table t (id INTEGER PRIMARY KEY AUTOINCREMENT, code CHAR(10), price NUMERIC(24))");
    database::exec("insert into t (code, price) values ('a', 1), ('b', 2)");
}

} // namespace

class tst_localDbRecord : public QObject {
    Q_OBJECT

private slots:
    void literal_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<int>("dec");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("literal");
        QTest::addColumn<QString>("raw");
        QTest::newRow("quote doubled") << "CHAR" << 0 << "O'Neil" << "'O''Neil'" << "'O''Neil'";
        QTest::newRow("fixed decimals") << "NUME" << 2 << " 12.5 " << "12.50" << " 12.5 ";
        QTest::newRow("through a float") << "NUMERIC" << 2 << "1234567.89" << "1234567.88" << "1234567.89";
        QTest::newRow("unparsable number") << "NUMERIC" << 1 << "abc" << "0.0" << "abc";
        QTest::newRow("integer trimmed") << "INT" << 0 << " -42 " << "-42" << " -42 ";
        QTest::newRow("unparsable integer") << "INTEGER" << 0 << "1.5" << "0" << "1.5";
        QTest::newRow("varchar has none") << "VARCHAR" << 0 << "x" << "Error" << "x";
        QTest::newRow("unknown type") << "" << 0 << "x" << "Error" << "x";
    }
    void literal()
    {
        QFETCH(QString, type);
        QFETCH(int, dec);
        QFETCH(QString, value);
        const localDbFieldDescription field = valued(u"f", w(type).c_str(), dec, value.toStdString());
        QTEST(q(localDb::fieldLiteral(field)), "literal");
        QTEST(q(localDb::fieldLiteralRaw(field)), "raw");
    }

    // The single-precision step shows in what the database keeps.
    void appendedNumberDiffers()
    {
        database db;
        goodsTable();
        QVERIFY(localDb::dbtRecordAppend(u"dbMain", u"t",
                                         {valued(u"code", u"CHAR", 0, "O'Neil"),
                                          valued(u"price", u"NUMERIC", 2, "1234567.89")}));
        QSqlRecord record;
        QVERIFY(localDb::dbtRecordGetById(u"dbMain", u"t", 3, record));
        QCOMPARE(record.value("code").toString(), QString("O'Neil"));
        QCOMPARE(record.value("price").toString(), QString("1234567.88"));
        QVERIFY(!localDb::dbtRecordGetById(u"dbMain", u"t", 4, record));
        QVERIFY(db.boxes->boxes.empty());
    }

    void updateNeedsTheKey()
    {
        database db;
        goodsTable();
        QVERIFY(localDb::dbtRecordUpdate(u"dbMain", u"t", {valued(u"code", u"CHAR", 0, "zz")}, u"id"));
        QCOMPARE(database::rows("select code from t order by id"), QString("a|b"));
        QVERIFY(localDb::dbtRecordUpdate(u"dbMain", u"t",
                                         {valued(u"id", u"INT", 0, "2"), valued(u"code", u"CHAR", 0, "zz")}, u"id"));
        QCOMPARE(database::rows("select code from t order by id"), QString("a|zz"));
        QVERIFY(db.boxes->boxes.empty());

        // A failing update shows the statement that went out.
        QVERIFY(!localDb::dbtRecordUpdate(u"dbMain", u"t", {valued(u"nocol", u"CHAR", 0, "x")}, u"id"));
        QCOMPARE(db.boxTitles(), QString("dbtRecordUpdate"));
        QVERIFY(db.lastBoxText().contains(" Unable to UPDATE a table \n"));
        QVERIFY(db.lastBoxText().endsWith("SQL : UPDATE t SET nocol='x' WHERE  0=1;\n"));
    }

    void deleteAsksFirst()
    {
        database db;
        goodsTable();
        QVERIFY(!localDb::dbtRecordDelete(u"dbMain", u"t", 1));
        QCOMPARE(database::rows("select id from t"), QString("1|2"));
        QCOMPARE(db.boxTitles(), QString("localDb::dbtRecordDelete()"));
        QVERIFY(db.boxes->boxes[0].question);

        db.boxes->answer = true;
        QVERIFY(localDb::dbtRecordDelete(u"dbMain", u"t", 1));
        QCOMPARE(database::rows("select id from t"), QString("2"));
    }

    void countAndMax()
    {
        database db;
        goodsTable();
        QCOMPARE(localDb::dbtRecordCount(u"dbMain", u"t"), int64_t(2));
        QCOMPARE(q(localDb::dbtFieldGetMaxVal(u"dbMain", u"t", u"code")), QString("b"));
        database::exec("delete from t");
        QCOMPARE(q(localDb::dbtFieldGetMaxVal(u"dbMain", u"t", u"code")), QString(""));
        QVERIFY(db.boxes->boxes.empty());

        QCOMPARE(localDb::dbtRecordCount(u"dbMain", u"missing"), int64_t(0));
        QCOMPARE(db.boxTitles(), QString("localDb::dbtRecordCount"));
        QCOMPARE(db.boxes->boxes[0].kind, localServices::boxCritical);
        QVERIFY(db.lastBoxText().contains("<BR/><BR/> Unable to UPDATE a table \n"));
    }
};

LOCAL_TEST_MAIN(tst_localDbRecord)
#include "tst_localDbRecord.moc"
