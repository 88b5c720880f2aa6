// Random keys on a reference book of 100,000 rows with folders, while a
// second connection deletes and inserts rows between the keys. After every
// key the buffer must hold at most its capacity of rows in index order, the
// cursor must stand on one of them, and a folder's rows must stay its own.
// KORVEL_MONKEY_KEYS sets the number of keys, KORVEL_MONKEY_SEED replays a run.
#include "localBrowseTestSupport.h"

#include <QRandomGenerator>
#include <QtTest>

namespace {

// Orders two buffer rows as the index does: numbers as numbers, text by
// code units. Negative, 0 or positive.
int keyOrder(const localDbDataSource200123 &source, size_t left, size_t right)
{
    const localDbFieldDescriptionVector &fields = source.keyFields();
    const auto &a = source.dataBufer[left];
    const auto &b = source.dataBufer[right];
    for (size_t i = 0; i < fields.size(); ++i) {
        const bool numeric = fields[i].myType == u"INTEGER" || fields[i].myType == u"INT";
        const int order = numeric ? (a[i].toLongLong() < b[i].toLongLong() ? -1 : a[i].toLongLong() > b[i].toLongLong())
                                  : QString::compare(a[i], b[i]);
        if (order != 0)
            return order;
    }
    return 0;
}

} // namespace

class tst_localRefBrowseMonkey : public QObject {
    Q_OBJECT

private slots:
    void randomKeys()
    {
        const int keys = qEnvironmentVariableIsSet("KORVEL_MONKEY_KEYS")
                             ? qEnvironmentVariableIntValue("KORVEL_MONKEY_KEYS") : 1500;
        const quint32 seed = qEnvironmentVariableIsSet("KORVEL_MONKEY_SEED")
                                 ? quint32(qEnvironmentVariableIntValue("KORVEL_MONKEY_SEED"))
                                 : QRandomGenerator::global()->generate() % 1000000;
        qInfo("monkey seed=%u keys=%d (replay: KORVEL_MONKEY_SEED=%u)", seed, keys, seed);
        QRandomGenerator random(seed);

        localDbTest::database db;
        db.exec("create table M (id INTEGER PRIMARY KEY, parentid INTEGER, isfolder INTEGER, code CHAR(8), "
                "name CHAR(40))");
        // 20 folders at the root, 10 in each of them, and the items below.
        db.exec("with recursive n(i) as (select 1 union all select i + 1 from n where i < 100000) "
                "insert into M select i, case when i <= 20 then 0 when i <= 220 then (i - 21) / 10 + 1 "
                "else 21 + i % 200 end, case when i <= 220 then 1 else 2 end, printf('%06d', i * 7 % 1000003), "
                "'Товар ' || char(1040 + i % 32) || char(1072 + i / 32 % 32) || ' ' || (i % 977) from n");
        db.exec("create index M_PNAME on M (parentid, isfolder, name, id)");
        db.exec("create index M_NAME on M (name, id)");
        db.exec("create index M_CODE on M (code, id)");

        QSqlDatabase writerDb = QSqlDatabase::addDatabase("QSQLITE", "monkeyWriter");
        writerDb.setDatabaseName(db.fileName);
        QVERIFY(writerDb.open());
        QSqlQuery writer(writerDb);
        // The writes are what is tested against, not the disk.
        writer.exec("PRAGMA synchronous = OFF");

        localVclGrid200123::cellDialog = [](QWidget *, const QString &, QString &) { return false; };
        std::vector<localDbGridColumn> columns(3);
        const char16_t *indexes[] = {u"M_CODE", u"M_NAME", u"M_PNAME"};
        for (size_t i = 0; i < columns.size(); ++i) {
            columns[i].dataBuferColumn = i == 0 ? u"CODE" : u"NAME";
            columns[i].idxName = indexes[i];
        }
        localDbDataSource200123 source(u"dbMain", {{u"t", u"M", u""}},
                                       {{u"t.id", u"ID"}, {u"t.code", u"CODE"}, {u"t.name", u"NAME"},
                                        {u"t.parentid", u"PARENTID"}, {u"t.isfolder", u"ISFOLDER"}},
                                       {}, u"M_PNAME", {});
        localRefBrowseWidget200123 tree(source, columns, true);
        tree.resize(500, 24 * 21 - 1);
        int chosen = 0;
        connect(&tree, &localDbtBrowseWidget200123::idSelectedSignal, [&chosen] { ++chosen; });

        // The first four plain, the rest with Ctrl up to Return; Key_A types a letter.
        const std::vector<int> codes{Qt::Key_Down, Qt::Key_Up,   Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_PageUp,
                                     Qt::Key_End,  Qt::Key_1,    Qt::Key_2,        Qt::Key_3,      Qt::Key_0,
                                     Qt::Key_H,    Qt::Key_Up,   Qt::Key_Down,     Qt::Key_Return, Qt::Key_Left,
                                     Qt::Key_Right, Qt::Key_A};
        const QString letters = QStringLiteral("Товар АБВгде 0123");
        int nextId = 200000;
        for (int k = 0; k < keys; ++k) {
            if (random.bounded(4) == 0) {
                writer.exec(QStringLiteral("delete from M where id = %1").arg(221 + random.bounded(99779)));
                writer.exec(QStringLiteral("insert into M values (%1, %2, 2, '%3', 'Товар %4')")
                                .arg(nextId++)
                                .arg(21 + random.bounded(200))
                                .arg(random.bounded(1000000), 6, 10, QChar('0'))
                                .arg(random.bounded(1000)));
            }
            // Lines move most, so that the walks reach far.
            const int pick = random.bounded(3) > 0 ? random.bounded(4) : random.bounded(int(codes.size()));
            const Qt::KeyboardModifiers control = pick >= 4 && pick < 13 ? Qt::ControlModifier : Qt::NoModifier;
            const QString text = codes[pick] == Qt::Key_A ? QString(letters[random.bounded(letters.size())]) : QString();
            localBrowseTest::key(&tree, codes[pick], control, text);

            const QString where = QStringLiteral("key %1 (%2 %3), seed %4").arg(k).arg(codes[pick]).arg(int(control)).arg(seed);
            QVERIFY2(source.dataBufer.size() <= size_t(source.capacity), qPrintable(where));
            for (size_t r = 1; r < source.dataBufer.size(); ++r)
                QVERIFY2(keyOrder(source, r - 1, r) <= 0, qPrintable(where + QStringLiteral(" row %1").arg(r)));
            if (!source.dataBufer.empty())
                QVERIFY2(tree.mCurRec() < source.dataBufer.size() && tree.currentLine >= tree.headLines,
                         qPrintable(where));
            if (tree.hierarchical && source.fixedKeyValues.size() == 1 && tree.hierarchyIndex())
                for (const auto &row : source.dataBufer)
                    QVERIFY2(row[0] == localTest::q(source.fixedKeyValues[0]), qPrintable(where));
        }
        qInfo("chosen %d times, %d rows inserted", chosen, nextId - 200000);
        writer = QSqlQuery();
        writerDb.close();
        writerDb = QSqlDatabase();
        QSqlDatabase::removeDatabase("monkeyWriter");
    }
};

QTEST_MAIN(tst_localRefBrowseMonkey)
#include "tst_localRefBrowseMonkey.moc"
