// The self-painted grid and its value-table form: cell texts, the layout in
// JSON both ways, keys, mouse, wheel, and the hard limit of a browse grid.
#include "localVclGrid200123.h"
#include "localVclGrid200123localValueTable.h"

#include "localContextUTF8.h"
#include "localValueList.h"
#include "localValueTable.h"

#include "localTestSupport.h"

#include <QApplication>
#include <QtTest>

#include <cstdio>

using localTest::q;
using localTest::w;

namespace {

// A table of `rows` rows and the columns A, B, C holding "rR cC".
localValueTable *tableMake(localValueDescription *cell, size_t rows)
{
    localValueTable *table = localValueTable::newInCell(cell);
    for (const char16_t *name : {u"A", u"B", u"C"})
        table->columnAdd(name);
    localErrorType status = localErrorTypeOK;
    localValueDescription value;
    for (size_t r = 1; r <= rows; ++r)
        for (size_t c = 1, row = table->rowAdd(0); c <= 3; ++c) {
            value.setString(localFromQString(QStringLiteral("r%1 c%2").arg(r).arg(c)));
            table->valueSet(status, row, c, &value);
        }
    return table;
}

class browseSizedGrid : public localVclGrid200123 {
public:
    int32_t bufferCapacity() const override { return 256; }
};

void keyPress(QWidget *widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString &text = {})
{
    QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(widget, &event);
}

} // namespace

class tst_localVclGrid200123 : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { localTest::globalContext(); }

    void formulaText_data()
    {
        QTest::addColumn<QString>("formula");
        QTest::addColumn<QString>("expected");
        QTest::newRow("row and column") << "ROWNUMBER * 10 + COLUMNNUMBER" << "31";
        QTest::newRow("failing formula is empty") << "1 / " << "";
        QTest::newRow("unknown name is empty") << "noSuchVariable + 1" << "";
    }
    void formulaText()
    {
        QFETCH(QString, formula);
        QFETCH(QString, expected);
        localTest::boxRecorder *boxes = localTest::boxRecorder::install();
        localVclGrid200123 grid;
        grid.columnAdd({u"X", u"x", w(formula), u"", 100, 0, nullptr});
        QCOMPARE(q(grid.text(2, 0)), expected);
        QCOMPARE(q(grid.text(2, 1)), QString());
        QCOMPARE(int(boxes->boxes.size()), 0);
        localServices::install(nullptr);
    }

    void layoutRoundTrip()
    {
        localVclGrid200123 grid;
        grid.columnAdd({u"Код", u"code", u"\"k\" + \"1\"", u"the code", 70, 2, nullptr});
        grid.columnAdd({u"Name \"quoted\"", u"name", u"", u"", 180, 0, nullptr});
        const std::u16string json = grid.layoutAsJsonTest();
        localVclGrid200123 copy;
        QVERIFY(copy.layoutReconfigureByJson(json));
        QCOMPARE(int(copy.columns.size()), 2);
        QCOMPARE(q(copy.columns[0].caption), QStringLiteral("Код"));
        QCOMPARE(copy.columns[0].width, 70);
        QCOMPARE(copy.columns[0].flags, 2);
        QCOMPARE(q(copy.columns[1].caption), QStringLiteral("Name \"quoted\""));
        QCOMPARE(q(copy.text(0, 0)), QStringLiteral("k1"));
        QCOMPARE(q(copy.layoutAsJsonTest()), q(json));

        localValueDescription list;
        grid.layoutAsValueListGet(&list);
        const localValueList *gridItem = localValueList::fromValue(localValueList::fromValue(&list)->valueByKey(u"grid"));
        QVERIFY(gridItem != nullptr);
        const localValueTable *columns = localValueTable::fromValue(gridItem->valueByKey(u"columns"));
        QVERIFY(columns != nullptr);
        QCOMPARE(int(columns->rowsCount()), 2);
        QCOMPARE(q(columns->cell(2, columns->columnNumber(u"WIDTH"))->toString()), QStringLiteral("180"));

        static std::u16string offered; // F12 offers the layout and applies the edited text
        localVclGrid200123::layoutDialog = [](QWidget *, std::u16string &json) {
            offered = json;
            json = u"{\"grid:columns\": [{\"id\": \"z\", \"caption\": \"Зет\", \"width\": 77}]}";
            return true;
        };
        keyPress(&grid, Qt::Key_F12);
        QCOMPARE(q(offered), q(json));
        QCOMPARE(int(grid.columns.size()), 1);
        QCOMPARE(q(grid.columns[0].caption), QStringLiteral("Зет"));
        QCOMPARE(grid.columns[0].width, 77);
    }

    void valueTableLayout()
    {
        localVclGrid200123localValueTable grid;
        // No data variable named: the grid makes its own table.
        QVERIFY(grid.layoutReconfigureByJson(u"{\"grid:columns\": []}"));
        QCOMPARE(int(grid.columns.size()), 1);
        QCOMPARE(q(grid.columns[0].id), QStringLiteral("КОЛОНКА1"));
        QVERIFY(localValueTable::fromValue(grid.context->variableFind(u"КОЛОНКА1")->value) == grid.table());

        localVariable *data = grid.context->variableCreate(u"DATA");
        tableMake(data->value, 3);
        QVERIFY(grid.layoutReconfigureByJson(
            u"{\"grid\": {\"columns\": [{\"id\": \"B\", \"caption\": \"Бэ\", \"width\": 33}],"
            u" \"dataSource\": {\"varName\": \"data\"}}, \"C:width\": \"44\"}"));
        QCOMPARE(int(grid.columns.size()), 3);
        QCOMPARE(q(grid.columns[1].caption), QStringLiteral("Бэ"));
        QCOMPARE(grid.columns[1].width, 33);
        QCOMPARE(grid.columns[2].width, 44);
        QCOMPARE(grid.columns[0].width, 100);
        QCOMPARE(q(grid.text(2, 1)), QStringLiteral("r3 c2"));
        QCOMPARE(q(grid.text(2, 3)), QString()); // beyond the last column
        QCOMPARE(q(grid.text(3, 0)), QString()); // beyond the last row
        grid.firstColumn = 1;
        QCOMPARE(q(grid.text(0, 1)), QStringLiteral("r1 c3"));
        QVERIFY(!grid.layoutReconfigureByJson(u"{\"grid\": "));
    }

    void keys_data()
    {
        QTest::addColumn<QList<int>>("keys");
        QTest::addColumn<int>("line");
        QTest::addColumn<int>("firstLine");
        QTest::addColumn<int>("column");
        QTest::addColumn<int>("firstColumn");
        // 10 lines of 21 pixels, the head included: data lines 1..9.
        QTest::newRow("down within screen") << QList<int>{Qt::Key_Down, Qt::Key_Down} << 3 << 0 << 1 << 0;
        QTest::newRow("down past the last line scrolls")
            << QList<int>{Qt::Key_PageDown, Qt::Key_Down, Qt::Key_Down} << 9 << 2 << 1 << 0;
        QTest::newRow("up at the top stays") << QList<int>{Qt::Key_Up} << 1 << 0 << 1 << 0;
        QTest::newRow("up after scroll")
            << QList<int>{Qt::Key_PageDown, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_Up} << 1 << 0 << 1 << 0;
        QTest::newRow("right moves then scrolls columns")
            << QList<int>{Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right} << 1 << 0 << 3 << 2;
        QTest::newRow("right stops at the last column")
            << QList<int>{Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right}
            << 1 << 0 << 3 << 3;
        QTest::newRow("left scrolls back")
            << QList<int>{Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left, Qt::Key_Left, Qt::Key_Left}
            << 1 << 0 << 1 << 0;
    }
    void keys()
    {
        QFETCH(QList<int>, keys);
        localVclGrid200123 grid;
        for (int i = 0; i < 6; ++i)
            grid.columnAdd({u"c", u"c", u"", u"", 120, 0, nullptr});
        grid.resize(400, 10 * 21 - 1);
        for (int key : keys)
            keyPress(&grid, key);
        QTEST(grid.currentLine, "line");
        QTEST(grid.firstLine, "firstLine");
        QTEST(grid.currentColumn, "column");
        QTEST(grid.firstColumn, "firstColumn");
    }

    void typingAndMouse()
    {
        localVclGrid200123 grid;
        grid.columnAdd({u"a", u"a", u"", u"", 100, 0, nullptr});
        grid.columnAdd({u"b", u"b", u"", u"", 100, 0, nullptr});
        grid.resize(400, 300);
        keyPress(&grid, Qt::Key_A, Qt::NoModifier, "a");
        keyPress(&grid, Qt::Key_B, Qt::ShiftModifier, "Б");
        QCOMPARE(q(grid.findWord), QStringLiteral("aБ"));
        keyPress(&grid, Qt::Key_Down);
        QCOMPARE(q(grid.findWord), QString());

        QTest::mouseClick(&grid, Qt::LeftButton, Qt::NoModifier, QPoint(150, 5));
        QCOMPARE(grid.currentLine, 2);
        QTest::mouseClick(&grid, Qt::LeftButton, Qt::NoModifier, QPoint(2 + 20 + 100 + 5, 4 * 21 + 3));
        QCOMPARE(grid.currentLine, 4);
        QCOMPARE(grid.currentColumn, 2);

        QWheelEvent wheel(QPointF(50, 50), QPointF(50, 50), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&grid, &wheel);
        QCOMPARE(grid.currentLine, 7);
    }

    void browseGridLimit_data()
    {
        QTest::addColumn<int>("lines");
        QTest::addColumn<int>("exitCode");
        QTest::newRow("128 lines fit") << 128 << 0;
        QTest::newRow("129 lines end the program") << 129 << 1;
    }
    void browseGridLimit()
    {
        QFETCH(int, lines);
        QFETCH(int, exitCode);
        qputenv("GRID_LINES", QByteArray::number(lines));
        const localTest::childResult child = localTest::runChild("gridResize");
        QCOMPARE(child.exitCode, exitCode);
        QCOMPARE(child.output.contains("resizeEvent|Grid too big for buffer size! "), exitCode == 1);
    }
};

LOCAL_CHILD_CASE(gridResize)
{
    localTest::boxRecorder *boxes = localTest::boxRecorder::install();
    std::atexit([] {
        for (const localTest::boxRecorder::box &box :
             static_cast<localTest::boxRecorder &>(localServices::instance()).boxes)
            std::printf("%s|%s\n", localNarrow(box.title).c_str(), localNarrow(box.text).c_str());
    });
    browseSizedGrid grid;
    grid.resize(300, qEnvironmentVariableIntValue("GRID_LINES") * 21 - 1);
    grid.show();
    QCoreApplication::processEvents();
    (void)boxes;
}

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const QByteArray childCase = qgetenv("KORVEL_CHILD_CASE");
    if (!childCase.isEmpty()) {
        localTest::globalContext();
        localTest::childCases()[childCase.toStdString()]();
        return 0;
    }
    tst_localVclGrid200123 test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_localVclGrid200123.moc"
