#include "localLibraryTestSupport.h"

#include "localServices.h"

#include <algorithm>

using localTest::q;
using localTest::run;

namespace {

class screenServices : public localServices {
public:
    bool graphical() const override { return true; }
};

QStringList chooserCalls;
localValueTable *shownTable = nullptr;

size_t chooseSecond(const std::u16string &title, const QStringList &captions, size_t startRow)
{
    chooserCalls << q(title) + ": " + captions.join(" / ") + " @" + QString::number(startRow);
    return 2;
}

void recordShow(localValueTable *table)
{
    shownTable = table;
}

// The whole table as "COLUMNS|row|row", cells by their string forms.
QString tableDump(const localValueTable &table)
{
    QStringList lines;
    QStringList names;
    for (const std::u16string &name : table.columns)
        names << q(name);
    lines << names.join(",");
    for (const localValueTable::row &cells : table.rows) {
        QStringList values;
        for (const localValueDescription &cell : cells)
            values << q(cell.toString());
        lines << values.join(",");
    }
    return lines.join("|");
}

void cellSet(localValueTable &table, size_t row, size_t column, const QString &text)
{
    localValueDescription value;
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (isNumber)
        value.setVal(number);
    else
        value.setString(localTest::w(text));
    localErrorType status = localErrorTypeOK;
    QVERIFY(table.valueSet(status, row, column, &value));
}

// T: NAME, AGE and three rows a/3, b/1, c/2.
localValueTable *threeRows()
{
    localValueTable *table = localTest::tableVariable(u"T");
    table->columnAdd(u"name");
    table->columnAdd(u"age");
    const char *names[] = {"a", "b", "c"};
    const char *ages[] = {"3", "1", "2"};
    for (size_t i = 0; i < 3; ++i) {
        table->rowAdd(0);
        cellSet(*table, i + 1, 1, names[i]);
        cellSet(*table, i + 1, 2, ages[i]);
    }
    return table;
}

} // namespace

class tst_localValueTable : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { localTest::globalContext(); }

    void registeredWithBothNames()
    {
        localClassDeclaration *declaration = localValueTable::classDeclaration();
        QCOMPARE(localContextUTF8::classFind(u"ValueTable"), declaration);
        QCOMPARE(localContextUTF8::classFind(u"таблицазначений"), declaration);
    }

    // One table through a sequence of calls: rows are always as wide as the columns.
    void columnsAndRows()
    {
        localValueTable *table = localTest::tableVariable(u"T");
        const std::pair<const char *, const char *> steps[] = {
            {"T.ROWADD()", "ЧИСЛО 1"},
            {"T.РЯДДОБАВИТЬ(0)", "ЧИСЛО 2"},
            {"T.VALUEGET(1, 1)", "fail 7"},
            {"T.COLUMNADD(\"name\")", "ЧИСЛО 1"},
            {"T.VALUEGET(2, 1)", "ЧИСЛО 0"},
            {"T.КОЛОНКАДОБАВИТЬ(\"ёжик\")", "ЧИСЛО 2"},
            {"T.COLUMNNAMEGET(2)", "СТРОКА ЁЖИК"},
            {"T.COLUMNNUMBERGET(\"NaMe\")", "ЧИСЛО 1"},
            {"T.COLUMNNUMBERGET(\"age\")", "ЧИСЛО 0"},
            {"T.COLUMNPARAMETERSGET(2)", "СТРОКА ЁЖИК"},
            {"T.COLUMNPARAMETERSGET(\"nope\")", "ЧИСЛО 0"},
            {"T.РЯДЫКОЛИЧЕСТВО()", "ЧИСЛО 2"},
            {"T.VALUESET(2, \"Ёжик\", \"x\")", "БУЛЕВО ИСТИНА"},
            {"T.ЗНАЧЕНИЕПОЛУЧИТЬ(2, \"ёжик\")", "СТРОКА x"},
            {"T.ROWACTUALGET()", "ЧИСЛО 0"},
            {"T.ROWACTUALSET(2)", "ЧИСЛО 2"},
            {"T.РЯДТЕКУЩИЙПОЛУЧИТЬ()", "ЧИСЛО 2"},
            {"T.CLEAR()", "ЧИСЛО 0"},
            {"T.COLUMNSCOUNT() + T.ROWSCOUNT()", "ЧИСЛО 0"},
            {"T.ROWACTUALGET()", "ЧИСЛО 2"},
        };
        for (const auto &step : steps) {
            QCOMPARE(run(QString::fromUtf8(step.first)), QString::fromUtf8(step.second));
            for (const localValueTable::row &cells : table->rows)
                QCOMPARE(cells.size(), table->columns.size());
        }
    }

    // On T (NAME, AGE; a/3, b/1, c/2): the answer and the whole table after
    // it; a failed call leaves the table as it was.
    void calls_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("dump");
        const QString same = "NAME,AGE|a,3|b,1|c,2";
        QTest::newRow("column add without name") << "T.COLUMNADD()" << "fail 31" << same;
        QTest::newRow("column add with a number") << "T.COLUMNADD(1)" << "fail 33" << same;
        QTest::newRow("column name past the count") << "T.COLUMNNAMEGET(3)" << "fail 7" << same;
        QTest::newRow("columns count with an argument") << "T.COLUMNSCOUNT(1)" << "fail 31" << same;
        QTest::newRow("row add with a string") << "T.ROWADD(\"1\")" << "fail 33" << same;
        QTest::newRow("actual row 0") << "T.ROWACTUALSET(0)" << "fail 7" << same;
        QTest::newRow("get, column a boolean") << "T.VALUEGET(1, ЛОЖЬ)" << "fail 33" << same;
        QTest::newRow("get row 0") << "T.VALUEGET(0, 1)" << "fail 7" << same;
        QTest::newRow("get column past the count") << "T.VALUEGET(1, 3)" << "fail 7" << same;
        QTest::newRow("get unknown column name") << "T.VALUEGET(1, \"NOPE\")" << "fail 7" << same;
        QTest::newRow("count before kind") << "T.VALUESET(\"1\", 1)" << "fail 31" << same;
        QTest::newRow("set row past the count") << "T.VALUESET(4, 1, 5)" << "fail 7" << same;
        QTest::newRow("sort with a number") << "T.SORT(1)" << "fail 33" << same;
        QTest::newRow("sort by a sign alone") << "T.SORT(\"+\")" << "fail 7" << same;
        QTest::newRow("fill, position a number") << "T.FILLFROMJSON(\"{}\", 1)" << "fail 33" << same;
        QTest::newRow("choose, column a number") << "T.ROWCHOOSE(\"t\", 1)" << "fail 33" << same;
        QTest::newRow("choose without a screen") << "T.ROWCHOOSE(\"t\", \"NAME\")" << "fail 26" << same;
        QTest::newRow("show without a screen") << "T.SHOW()" << "fail 26" << same;
        QTest::newRow("unknown method") << "T.SIZE()" << "fail 27" << same;
        // ROWADD's position
        QTest::newRow("0 appends") << "T.ROWADD(0)" << "ЧИСЛО 4" << "NAME,AGE|a,3|b,1|c,2|0,0";
        QTest::newRow("1 inserts before the first") << "T.ROWADD(1)" << "ЧИСЛО 4" << "NAME,AGE|0,0|a,3|b,1|c,2";
        QTest::newRow("past the count appends") << "T.ROWADD(4)" << "ЧИСЛО 4" << "NAME,AGE|a,3|b,1|c,2|0,0";
        QTest::newRow("negative appends") << "T.ROWADD(-2)" << "ЧИСЛО 4" << "NAME,AGE|a,3|b,1|c,2|0,0";
    }
    void calls()
    {
        QFETCH(QString, expression);
        QFETCH(QString, expected);
        QFETCH(QString, dump);
        localValueTable *table = threeRows();
        QCOMPARE(run(expression), expected);
        QCOMPARE(tableDump(*table), dump);
    }

    void failedGetLeavesNumberZero()
    {
        localValueTable *table = threeRows();
        localErrorType status = localErrorTypeOK;
        localValueDescription *result = nullptr;
        QVERIFY(!table->value(status, 1, 3, &result));
        QCOMPARE(int(status), 7);
        QCOMPARE(result->localValueNumber, 0.0);
        localValueRelease(result);
        status = localErrorTypeOK;
        QVERIFY(table->value(status, 1, 1, &result));
        QCOMPARE(q(result->toString()), QString("a"));
        localValueRelease(result);
        QCOMPARE(int(status), 54);
    }

    // Columns NAME, AGE, TAG; the cells of the sorted column are given, the
    // TAG column is A, B, C... in the starting order.
    void sort_data()
    {
        QTest::addColumn<QString>("column");
        QTest::addColumn<QStringList>("cells");
        QTest::addColumn<QString>("sortBy");
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("order");
        const QStringList ages = {"30", "20", "30", "10"};
        QTest::newRow("plus is ascending, equal rows keep their order") << "AGE" << ages << "+AGE" << "ИСТИНА" << "DBAC";
        QTest::newRow("descending, equal rows keep their order") << "AGE" << ages << "-AGE" << "ИСТИНА" << "ACBD";
        QTest::newRow("descending strings") << "NAME" << QStringList({"'b'", "'a'", "'c'", "'a'"}) << "-NAME" << "ИСТИНА"
                                            << "CABD";
        QTest::newRow("unknown column") << "AGE" << ages << "-NOPE" << "ЛОЖЬ" << "ABCD";
        QTest::newRow("empty sort argument") << "AGE" << ages << "" << "ЛОЖЬ" << "ABCD";
        QTest::newRow("strings by code, then by length")
            << "NAME" << QStringList({"'b'", "'B'", "'ab'", "'a'"}) << "NAME" << "ИСТИНА" << "BDCA";
        QTest::newRow("numbers compare as numbers") << "AGE" << QStringList({"9", "10", "100", "-1"}) << "AGE"
                                                    << "ИСТИНА" << "DABC";
        // The first row is a number: strings count by their number field, 0.
        QTest::newRow("first row a number") << "AGE" << QStringList({"5", "'x'", "3", "'1'"}) << "AGE" << "ИСТИНА"
                                            << "BDCA";
        // The first row is a string: every cell by its string form.
        QTest::newRow("first row a string") << "AGE" << QStringList({"'10'", "9", "'9'", "100"}) << "AGE" << "ИСТИНА"
                                            << "ADBC";
        QTest::newRow("booleans by their words") << "AGE" << QStringList({"ЛОЖЬ", "ИСТИНА"}) << "AGE" << "ИСТИНА"
                                                 << "BA";
    }
    void sort()
    {
        QFETCH(QString, column);
        QFETCH(QStringList, cells);
        QFETCH(QString, sortBy);
        QFETCH(QString, answer);
        QFETCH(QString, order);
        localValueTable *table = localTest::tableVariable(u"T");
        table->columnAdd(u"NAME");
        table->columnAdd(u"AGE");
        table->columnAdd(u"TAG");
        for (int i = 0; i < cells.size(); ++i) {
            QCOMPARE(run("T.ROWADD()"), QString("ЧИСЛО %1").arg(i + 1));
            QCOMPARE(run(QString("T.VALUESET(%1, \"%2\", %3)").arg(i + 1).arg(column, cells[i])),
                     QString("БУЛЕВО ИСТИНА"));
            cellSet(*table, size_t(i) + 1, 3, QString(QChar('A' + i)));
        }
        table->rowActual = 2;
        QCOMPARE(run("T.SORT(\"" + sortBy + "\")"), "БУЛЕВО " + answer);
        QString tags;
        for (const localValueTable::row &cellsOfRow : table->rows)
            tags += q(cellsOfRow[2].toString());
        QCOMPARE(tags, order);
        QCOMPARE(table->rowActual, 2u);
    }

    void sortWithoutRows()
    {
        localValueTable *table = localTest::tableVariable(u"T");
        table->columnAdd(u"A");
        QCOMPARE(run("T.SORT(\"+\")"), QString("БУЛЕВО ИСТИНА"));
        QCOMPARE(run("T.СОРТИРОВАТЬ(\"NOPE\")"), QString("БУЛЕВО ИСТИНА"));
        QCOMPARE(run("T.SORT(\"\")"), QString("БУЛЕВО ЛОЖЬ"));
    }

    // A long walk with many equal keys ends in the order of a stable sort,
    // ascending and descending, each row whole.
    void sortOfManyRowsIsStable()
    {
        for (const bool descending : {false, true}) {
            localValueTable *table = localTest::tableVariable(u"T");
            table->columnAdd(u"K");
            table->columnAdd(u"TAG");
            std::vector<std::pair<int, int>> expected;
            unsigned seed = 7;
            for (int tag = 0; tag < 300; ++tag) {
                seed = seed * 1103515245u + 12345u;
                const int key = int((seed >> 16) % 25);
                const size_t row = table->rowAdd(0);
                localValueDescription value;
                localErrorType status = localErrorTypeOK;
                value.setVal(key);
                table->valueSet(status, row, 1, &value);
                value.setVal(tag);
                table->valueSet(status, row, 2, &value);
                expected.emplace_back(key, tag);
            }
            std::stable_sort(expected.begin(), expected.end(), [&](const auto &x, const auto &y) {
                return descending ? x.first > y.first : x.first < y.first;
            });
            localErrorType status = localErrorTypeOK;
            bool answer = false;
            QVERIFY(table->sort(status, descending ? u"-K" : u"K", answer));
            QVERIFY(answer);
            for (size_t i = 0; i < expected.size(); ++i) {
                QCOMPARE(table->cell(i + 1, 1)->localValueNumber, double(expected[i].first));
                QCOMPARE(table->cell(i + 1, 2)->localValueNumber, double(expected[i].second));
            }
        }
    }

    // Rows move as whole records: an object in a cell keeps its count.
    void sortMovesObjectsWithoutCopies()
    {
        localValueTable *table = localTest::tableVariable(u"T");
        table->columnAdd(u"K");
        table->columnAdd(u"OBJ");
        localValueDescription holder;
        localValueList *list = localValueList::newInCell(&holder);
        for (int key : {3, 2, 1}) {
            const size_t row = table->rowAdd(0);
            localValueDescription value;
            value.setVal(key);
            localErrorType status = localErrorTypeOK;
            table->valueSet(status, row, 1, &value);
            table->valueSet(status, row, 2, &holder);
        }
        QCOMPARE(list->objectLinks, int64_t(4));
        localErrorType status = localErrorTypeOK;
        bool answer = false;
        QVERIFY(table->sort(status, u"K", answer));
        QVERIFY(answer);
        QCOMPARE(list->objectLinks, int64_t(4));
        QCOMPARE(table->cell(1, 1)->localValueNumber, 1.0);
        QCOMPARE(table->cell(3, 1)->localValueNumber, 3.0);
        const int64_t liveTables = localValueTable::counterStaticTotal;
        localValueDescription number;
        localTest::globalContext()->variableSet(u"T", &number);
        QCOMPARE(localValueTable::counterStaticTotal, liveTables - 1);
        QCOMPARE(list->objectLinks, int64_t(1));
    }

    // The reader itself is tested with JSON; here the position from 1 and the outcome.
    void fillFromJson_data()
    {
        QTest::addColumn<QString>("call");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("dump");
        QTest::newRow("position from 1") << "T.FILLFROMJSON('xx{\"a\": \"1\", \"b\" : \"x y\"}', \"3\")" << "БУЛЕВО ИСТИНА"
                                         << "KEY,VALUE|a,1|b,x y";
        QTest::newRow("a syntax error fails") << "T.FILLFROMJSON('{\"a\": 1}', \"1\")" << "fail 34" << "KEY,VALUE";
    }
    void fillFromJson()
    {
        QFETCH(QString, call);
        QFETCH(QString, expected);
        QFETCH(QString, dump);
        localValueTable *table = localTest::tableVariable(u"T");
        QCOMPARE(run(call), expected);
        QCOMPARE(tableDump(*table), dump);
    }

    void toStringNamesSizes()
    {
        threeRows();
        const QString text = run("T.TOSTRING()");
        QVERIFY2(text.contains("ТАБЛИЦАЗНАЧЕНИЙ") && text.contains("[2]") && text.contains("[3]"), qPrintable(text));
        QCOMPARE(run("T.СТРОКА()"), text);
    }

    void dialogsWithAScreen()
    {
        localValueTable *table = threeRows();
        localServices::install(new screenServices);
        const localListDialogs saved = localListDialogs::handlers;
        localListDialogs::handlers.rowChoose = chooseSecond;
        chooserCalls.clear();
        QCOMPARE(run("T.ROWCHOOSE(\"Who\", \"NAME\")"), QString("ЧИСЛО 2"));
        QCOMPARE(run("T.РЯДВЫБРАТЬ(\"Who\", \"name\")"), QString("ЧИСЛО 2"));
        QCOMPARE(run("T.ROWCHOOSE(\"Who\")"), QString("ЧИСЛО 2"));
        QCOMPARE(chooserCalls, QStringList({"Who: a / b / c @0", "Who: a | 3 / b | 1 / c | 2 @0",
                                            "Who: a | 3 / b | 1 / c | 2 @0"}));
        QCOMPARE(run("T.SHOW()"), QString("fail 26"));
        localValueTable::showHandler = recordShow;
        QCOMPARE(run("T.ПОКАЗАТЬ()"), QString("ЧИСЛО 1"));
        QCOMPARE(shownTable, table);
        localValueTable::showHandler = nullptr;
        localListDialogs::handlers = saved;
        localServices::install(nullptr);
    }

    void dispatchEdges()
    {
        localClassDeclaration *declaration = localValueTable::classDeclaration();
        localErrorType status = localErrorTypeOK;
        localValueVector noArguments;
        localValueDescription *result = nullptr;
        QVERIFY(!declaration->methodExec(status, nullptr, nullptr, u"ROWSCOUNT", &noArguments, &result));
        QCOMPARE(int(status), 29);
        localValueRelease(result);
        localValueTable table;
        QVERIFY(!declaration->methodExec(status, nullptr, &table, u"ROWSCOUNT", nullptr, &result));
        QCOMPARE(int(status), 16);
        localValueRelease(result);
    }
};

LOCAL_TEST_MAIN(tst_localValueTable)
#include "tst_localValueTable.moc"
