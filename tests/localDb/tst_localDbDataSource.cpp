// Indexes from SQLite's catalogue, the data source over them, and the value
// list a program describes a browse grid with.
#include "localDbBrowseDescription.h"
#include "localDbDataSource200123.h"
#include "localDbTestSupport.h"
#include "localValueList.h"
#include "localValueTable.h"

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

// A value table of text columns, stored into the list under `key`.
void tableAdd(localValueList &list, const std::u16string &key, const std::vector<std::u16string> &columns,
              const std::vector<std::vector<std::u16string>> &rows)
{
    localValueDescription holder;
    localValueTable *table = localValueTable::newInCell(&holder);
    for (const std::u16string &column : columns)
        table->columnAdd(column);
    for (const auto &values : rows) {
        const size_t r = table->rowAdd(0);
        for (size_t c = 0; c < values.size(); ++c)
            table->cell(r, c + 1)->setString(values[c]);
    }
    list.valueAdd(&holder, key);
}

} // namespace

class tst_localDbDataSource : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { localTest::globalContext(); }

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

    void listParsing_data()
    {
        QTest::addColumn<bool>("withGrid");
        QTest::addColumn<QString>("columns");
        QTest::addColumn<QString>("notice");
        QTest::newRow("grid columns given") << true << "Code:code:80:idx_code" << "";
        QTest::newRow("made from the select columns")
            << false << "Ref03_CODE:Ref03_CODE:50:|Ref03_DESCR:Ref03_DESCR:250:|q:q:50:|price:price:50:"
            << "!gridColumnsVL";
    }
    void listParsing()
    {
        QFETCH(bool, withGrid);
        localValueList list;
        tableAdd(list, u"aliases", {u"dbtName", u"aliasName", u"leftJoinCondition"},
                 {{u"goods", u"tov", u""}, {u"prices", u"pr", u"pr.owner=tov.id"}});
        tableAdd(list, u"sqlExpressions", {u"sqlExpression", u"aliasName"},
                 {{u"tov.code", u""}, {u"tov.descr", u""}, {u"pr.owner", u"q"}, {u"price", u""}});
        list.valueSetByPresentation(u"a_descr", u"defaultIdxName");
        if (withGrid)
            tableAdd(list, u"gridColumns", {u"caption", u"dataBuferColumn", u"width", u"description", u"idxName"},
                     {{u"Code", u"code", u"80", u"", u"idx_code"}});
        const localDbBrowseDescription description = localDbBrowseDescription::fromList(list);
        QVERIFY(description.complete);
        QCOMPARE(q(description.aliases[1].dbtName + description.aliases[1].leftJoinCondition),
                 QString("pricespr.owner=tov.id"));
        const auto &select = description.selectColumns[2];
        QCOMPARE(q(select.expression + select.name + description.defaultIdxName), QString("pr.ownerqa_descr"));
        QStringList columns;
        for (const localDbGridColumn &column : description.gridColumns)
            columns << q(column.caption) + ":" + q(column.dataBuferColumn) + ":" + QString::number(column.width) +
                           ":" + q(column.idxName);
        QTEST(columns.join('|'), "columns");
        QTEST(q(description.notice), "notice");
    }

};

LOCAL_TEST_MAIN(tst_localDbDataSource)
#include "tst_localDbDataSource.moc"
