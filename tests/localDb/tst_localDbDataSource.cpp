// Indexes from SQLite's catalogue and the data source over them.
#include "localDbDataSource200123.h"
#include "localDbTestSupport.h"

using localDbTest::database;
using localTest::q;
using localTest::w;

namespace {

typedef localDbDataSource200123 source;
typedef std::vector<std::u16string> names;

void goodsTables()
{
    database::exec("create table goods (id INTEGER PRIMARY KEY AUTOINCREMENT, code CHAR(10), descr CHAR(50))");
    database::exec("insert into goods (code, descr) values ('c1', 'nail'), ('c2', 'bolt')");
    database::exec("create index b_code on goods (code)");
    database::exec("create index a_descr on goods (descr, code)");
    database::exec("create index B_upper on goods (descr)");
    database::exec("create table prices (id INTEGER PRIMARY KEY AUTOINCREMENT, owner INT)");
}

} // namespace

class tst_localDbDataSource : public QObject {
    Q_OBJECT

private slots:
    void indexesFromTheCatalogue()
    {
        database db;
        goodsTables();
        QCOMPARE(localDb::dbtGetIdxNames(u"dbMain", u"goods"), (names{u"B_upper", u"a_descr", u"b_code"}));
        QCOMPARE(localDb::idxKeyFieldNamesGet(u"dbMain", u"a_descr"), (names{u"descr", u"code"}));
        QVERIFY(localDb::dbtGetIdxNames(u"dbMain", u"prices").empty());
        QVERIFY(db.boxes->boxes.empty());
    }

    void sourceOverAJoin()
    {
        database db;
        goodsTables();
        source data(u"dbMain",
                    {{u"tov", u"goods", u""}, {u"pr", u"prices", u"pr.owner=tov.id"}, {u"x", u"prices", u""}},
                    {{u"tov.code", u"Ref03_CODE"}, {u"tov.id", u""}, {u"pr.owner", u""}}, {}, u"a_descr", {});
        QVERIFY(data.valid());
        QCOMPARE(data.indexes.size(), size_t(3));
        QCOMPARE(q(data.keyList()), QString("tov.descr, tov.code"));
        QCOMPARE(q(data.fromClause()),
                 QString("goods tov left join prices pr on pr.owner=tov.id left join prices x on 0=1 "));
        QCOMPARE(q(data.selectList()), QString("tov.code as Ref03_CODE,tov.id,pr.owner"));
        QVERIFY(data.dataBufer.empty());

        const source::row row = data.getTmpRowById(2);
        QCOMPARE(QStringList(row.begin(), row.end()).join('|'), QString("bolt|c2|c2|2|"));
        data.dataBufer.push_back(row);
        QCOMPARE(data.getId(0), int64_t(2));
        QCOMPARE(data.getId(1), int64_t(0));
        QVERIFY(db.boxes->boxes.empty());
    }

    void sourceWithoutUsableIndex_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("defaultIndex");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<QString>("boxEnd");
        QTest::newRow("no index at all") << "prices" << "" << true << "не задано ни одного индексного файла!<BR/>";
        QTest::newRow("unknown default") << "goods" << "nope" << false << "<BR/><BR/>Не удалось установить индекс nope";
    }
    void sourceWithoutUsableIndex()
    {
        QFETCH(QString, table);
        QFETCH(QString, defaultIndex);
        database db;
        goodsTables();
        const source data(u"dbMain", {{u"t", w(table), u""}}, {{u"t.id", u""}}, {}, w(defaultIndex), {});
        QTEST(data.valid(), "valid");
        QVERIFY(data.keyFields().empty());
        QCOMPARE(db.boxTitles(), QString("localDbDataSource200123"));
        QFETCH(QString, boxEnd);
        QVERIFY2(db.lastBoxText().endsWith(boxEnd), qPrintable(db.lastBoxText()));
    }

};

LOCAL_TEST_MAIN(tst_localDbDataSource)
#include "tst_localDbDataSource.moc"
