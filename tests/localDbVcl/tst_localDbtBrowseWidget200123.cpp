// Paging by keys, without painting: after every key the buffer must be a run
// of the table in index order and the cursor must stand where a plain
// ordered SELECT says it must.
#include "localBrowseTestSupport.h"

#include <QtTest>

using localBrowseTest::bufferPlace;
using localBrowseTest::key;
using localBrowseTest::orderedKeys;

namespace {

const int screenLines = 20;
const int dataLines = screenLines - 1;
const QString orderedP = QStringLiteral("select a, b, c from P order by a, b, c");
const std::map<QString, std::pair<int, Qt::KeyboardModifiers>> codes{
    {"D", {Qt::Key_Down, Qt::NoModifier}},      {"U", {Qt::Key_Up, Qt::NoModifier}},
    {"PD", {Qt::Key_PageDown, Qt::NoModifier}}, {"PU", {Qt::Key_PageUp, Qt::NoModifier}},
    {"CE", {Qt::Key_End, Qt::ControlModifier}}, {"CPU", {Qt::Key_PageUp, Qt::ControlModifier}}};

// P: a three-field key (a, b, c) whose first two fields repeat in long runs
// and whose last is unique, of one width: the buffer compares keys as text.
// `quote` puts an apostrophe into every b.
void tableP(int rows, bool quote = false)
{
    localDbTest::database::exec("drop table if exists P");
    localDbTest::database::exec("create table P (id INTEGER PRIMARY KEY, a INTEGER, b CHAR(10), c INTEGER, "
                                "name CHAR(20))");
    localDbTest::database::exec("create index P_ABC on P (a, b, c)");
    localDbTest::database::exec("create index P_NAME on P (name, id)");
    QSqlDatabase::database("dbMain", false).transaction();
    QSqlQuery insert(QSqlDatabase::database("dbMain", false));
    insert.prepare("insert into P (id, a, b, c, name) values (?, ?, ?, ?, ?)");
    for (int i = 1; i <= rows; ++i) {
        insert.addBindValue(i);
        insert.addBindValue(i % 3);
        insert.addBindValue(QStringLiteral("b%1%2").arg(quote ? "'" : "").arg(i / 97 % 2));
        insert.addBindValue(100000 + i);
        insert.addBindValue(QStringLiteral("n%1").arg(i * 7919 % 100003, 6, 10, QChar('0')));
        insert.exec();
    }
    QSqlDatabase::database("dbMain", false).commit();
}

} // namespace

class tst_localDbtBrowseWidget200123 : public QObject {
    Q_OBJECT

private slots:
    void paging_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<int>("end");
        QTest::newRow("down through every row") << 3000 << "D3010" << 2999;
        QTest::newRow("up from the last row") << 3000 << "CE U3010" << 0;
        QTest::newRow("pages down and back") << 3000 << "PD200 PU200" << 0;
        QTest::newRow("pages mixed with lines") << 3000 << "PD40 U30 PD9 D300 PU12 U3 CPU PD3" << 3 * (dataLines - 1);
        QTest::newRow("jump to the end and page up") << 3000 << "CE PU1 PU3" << 2999 - 4 * (dataLines - 1);
        QTest::newRow("empty table") << 0 << "D3 U3 PD2 PU2 CE CPU" << -1;
        QTest::newRow("smaller than the screen") << 5 << "D10 PD1 U10 CE D2 PU1" << 0;
    }
    void paging()
    {
        QFETCH(int, rows);
        QFETCH(QString, keys);
        localDbTest::database db;
        tableP(rows);
        const auto all = orderedKeys(orderedP);
        localBrowseTest::browse b(u"P", u"P_ABC", screenLines);
        int64_t position = rows > 0 ? 0 : -1;
        for (const QString &token : keys.split(' ')) {
            QRegExp form("([A-Z]+)(\\d*)");
            form.exactMatch(token);
            const QString name = form.cap(1);
            for (int i = 0; i < std::max(1, form.cap(2).toInt()); ++i) {
                key(b.widget.get(), codes.at(name).first, codes.at(name).second);
                const int64_t place = bufferPlace(b, all);
                QVERIFY2(place != -2, qPrintable(QStringLiteral("after %1 number %2").arg(name).arg(i + 1)));
                const int64_t now = place < 0 ? -1 : place + b.widget->mCurRec();
                const int64_t last = int64_t(all.size()) - 1;
                if (name == "D")
                    QCOMPARE(now, std::min(position + 1, last));
                else if (name == "U")
                    QCOMPARE(now, std::max<int64_t>(position - 1, rows > 0 ? 0 : -1));
                else if (name == "CE")
                    QCOMPARE(now, last);
                else if (name == "CPU")
                    QCOMPARE(now, rows > 0 ? 0 : -1);
                else if (rows > 0) // a page moves at most a screen, and always when it can
                    QVERIFY(std::abs(now - position) <= dataLines
                            && (now != position || position == 0 || position == last));
                position = now;
            }
        }
        QTEST(int(position), "end");
        QCOMPARE(db.boxes->boxes.size(), size_t(0));
    }

    void rowDeletedWhileFirstVisible()
    {
        localDbTest::database db;
        tableP(1000);
        const auto before = orderedKeys(orderedP);
        localBrowseTest::browse b(u"P", u"P_ABC", screenLines);
        key(b.widget.get(), Qt::Key_PageDown);
        while (b.widget->mCurRec() + 1 < b.source->dataBufer.size())
            key(b.widget.get(), Qt::Key_Down);
        const int64_t first = bufferPlace(b, before) + b.widget->mRec1;
        const int64_t cursor = bufferPlace(b, before) + b.widget->mCurRec();
        localDbTest::database::exec(QStringLiteral("delete from P where c = %1").arg(localTest::q(before[first][2])));
        key(b.widget.get(), Qt::Key_Down);
        const auto after = orderedKeys(orderedP);
        QCOMPARE(b.source->bufferRowKeyValues(0), before[first + 1]);
        QCOMPARE(bufferPlace(b, after) + b.widget->mCurRec(), cursor); // the next row, one fewer before it
        QCOMPARE(b.source->bufferRowKeyValues(b.widget->mCurRec()), before[cursor + 1]);
    }

    void apostropheInKey()
    {
        localDbTest::database db;
        tableP(600, true);
        localBrowseTest::browse b(u"P", u"P_ABC", screenLines);
        for (int i = 0; i < 300; ++i)
            key(b.widget.get(), Qt::Key_Down);
        QVERIFY(db.boxTitles().contains("fillFromKeyVal"));
        QVERIFY(bufferPlace(b, orderedKeys(orderedP)) != -2);
    }

    void folderEndInHierarchy()
    {
        localDbTest::database db;
        db.exec("create table R (id INTEGER PRIMARY KEY, parentid INTEGER, isfolder INTEGER, name CHAR(20))");
        db.exec("create index R_P on R (parentid, isfolder, name, id)");
        db.exec("insert into R values (1, 0, 1, 'folder A'), (2, 0, 1, 'folder B'), (3, 0, 2, 'item at root')");
        db.exec("with recursive n(i) as (select 4 union all select i + 1 from n where i < 700) "
                "insert into R select i, case when i < 600 then 1 else 2 end, 2, 'item ' || (i * 37 % 1000) from n");
        localBrowseTest::browse b(u"R", u"R_P", screenLines, true);
        auto *tree = static_cast<localRefBrowseWidget200123 *>(b.widget.get());
        key(tree, Qt::Key_H, Qt::ControlModifier);
        QVERIFY(tree->hierarchical);
        QCOMPARE(b.source->dataBufer.size(), size_t(3));
        key(tree, Qt::Key_Down, Qt::ControlModifier); // folder A
        QCOMPARE(tree->headLines, 2);
        QCOMPARE(tree->ancestors.back()[2], QStringLiteral("folder A"));
        const auto folder = orderedKeys("select parentid, isfolder, name, id from R where parentid = 1 "
                                        "order by parentid, isfolder, name, id");
        for (int i = 0; i < 60; ++i)
            key(tree, Qt::Key_PageDown);
        QVERIFY(bufferPlace(b, folder) >= 0);
        QCOMPARE(b.source->bufferRowKeyValues(tree->mCurRec()), folder.back());
        key(tree, Qt::Key_Up, Qt::ControlModifier);
        QCOMPARE(tree->headLines, 1);
        QCOMPARE(b.source->dataBufer.size(), size_t(3));
        key(tree, Qt::Key_H, Qt::ControlModifier);
        QVERIFY(!tree->hierarchical);
        QVERIFY(b.source->dataBufer.size() > 3);
    }

    void indexAndSearchKeys()
    {
        localDbTest::database db;
        tableP(2000);
        std::vector<localDbGridColumn> columns(10);
        for (localDbGridColumn &column : columns)
            column.dataBuferColumn = u"ID";
        columns[9].dataBuferColumn = u"NAME";
        columns[9].idxName = u"P_NAME";
        localBrowseTest::browse b(u"P", u"P_ABC", screenLines, false, columns);
        for (int i = 0; i < 40; ++i)
            key(b.widget.get(), Qt::Key_Down);
        const QString id = b.cursorId();
        key(b.widget.get(), Qt::Key_9, Qt::ControlModifier); // a column without an index
        QCOMPARE(localTest::q(b.source->currentIndex->name), QStringLiteral("P_ABC"));
        key(b.widget.get(), Qt::Key_0, Qt::ControlModifier); // the tenth column
        QCOMPARE(localTest::q(b.source->currentIndex->name), QStringLiteral("P_NAME"));
        QCOMPARE(b.cursorId(), id);
        QVERIFY(bufferPlace(b, orderedKeys("select name, id from P order by name, id")) >= 0);

        b.widget->currentColumn = b.widget->fixedColumns + 9;
        for (const QChar letter : QStringLiteral("n0123"))
            key(b.widget.get(), Qt::Key_A, Qt::NoModifier, letter);
        QVERIFY(b.cursorRow()->at(3).startsWith("n0123"));
        const QString found = b.cursorId();
        key(b.widget.get(), Qt::Key_X, Qt::NoModifier, "x"); // no name starts so
        QCOMPARE(b.cursorId(), found);
        QCOMPARE(localTest::q(b.widget->findWord), QStringLiteral("n0123x"));
    }
};

QTEST_MAIN(tst_localDbtBrowseWidget200123)
#include "tst_localDbtBrowseWidget200123.moc"
