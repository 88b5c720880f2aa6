// The memory dump: one value's line, the table of cells, the counts and the
// counters of live objects.
#include "localLibraryTestSupport.h"

#include "localMemoryDump.h"

#include <sstream>

using localTest::q;

LOCAL_CHILD_CASE(unknownCounter)
{
    memoryDisplayCounterSet("localNoSuchClass", nullptr);
}

class tst_localMemoryDump : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { localTest::globalContext(); }

    // More than 30 characters: the first 50 and "...", cut or not.
    void stringsAreShortened_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<int>("kept");
        QTest::addColumn<bool>("dots");
        QTest::newRow("30") << 30 << 30 << false;
        QTest::newRow("31") << 31 << 31 << true;
        QTest::newRow("50") << 50 << 50 << true;
        QTest::newRow("51") << 51 << 50 << true;
    }
    void stringsAreShortened()
    {
        QFETCH(int, length);
        QFETCH(int, kept);
        QFETCH(bool, dots);
        QString text;
        for (int i = 0; i < length; ++i)
            text += QChar(i % 2 == 0 ? u'ж' : u'z');
        localValueDescription value;
        value.setString(localTest::w(text));
        const QString expected = text.left(kept) + (dots ? "..." : "");
        const QString line = q(localValueDump(value));
        QVERIFY2(line.contains(" wStr: [" + expected + "]  Val: [" + expected + "] "), qPrintable(line));
    }

    void valueLines_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("pieces");
        QTest::newRow("number") << "2.5" << " Type: [ЧИСЛО]  num: [2.5]  pointer: [";
        QTest::newRow("boolean") << "true" << " Type: [БУЛЕВО]  num: [1]  pointer: [";
        QTest::newRow("string") << "\"abc\"" << " Type: [СТРОКА]  num: [0]  pointer: [";
        QTest::newRow("list") << "createobject(\"VALUELIST\")" << " Type: [VALUELIST]  className: [VALUELIST]  num: [0]";
    }
    void valueLines()
    {
        QFETCH(QString, expression);
        QFETCH(QString, pieces);
        localValueDescription *value = nullptr;
        localErrorType status = localErrorTypeOK;
        QVERIFY(localInterpretatorUTF8::evaluate(status, localTest::w(expression), &value, localTest::globalContext()));
        const QString line = q(localValueDump(*value));
        localValueRelease(value);
        QVERIFY2(line.startsWith(" address: [0x"), qPrintable(line));
        QVERIFY2(line.contains(pieces), qPrintable(line));
        QVERIFY2(line.endsWith("] "), qPrintable(line));
        QCOMPARE(line.contains("className"), expression.startsWith("create"));
    }

    void oddValues()
    {
        localValueDescription classless;
        classless.type = localValueTypeOBJ;
        QVERIFY(q(localValueDump(classless)).contains(" Type: [ОБЪЕКТ]  className: [<unknown class>]  num: [0] "));
        localValueDescription unknown;
        unknown.type = 7;
        const QString line = q(localValueDump(unknown));
        QVERIFY2(line.contains(" Type: [неизвестный тип]  num: [0] "), qPrintable(line));
        QVERIFY2(line.contains(" Val: [ **** Error *** при вызове метода toString() ...] "), qPrintable(line));
    }

    void summaryLines()
    {
        localMemoryManager &manager = localMemoryManager::instance();
        const QString expected = QString("all reserved %1\nused %2\n"
                                         "localContextUTF8::counterStaticTotal %3\n"
                                         "localClassDeclaration::counterStaticTotal %4\n"
                                         "localValueDescription::counterStaticTotal %5\n"
                                         "localValueList::counterStaticTotal %6\n"
                                         "localValueTable::counterStaticTotal %7\n"
                                         "localDataBase::counterStaticTotal 0\n"
                                         "localDataBaseTable::counterStaticTotal 0\n"
                                         "localDataBaseRecord::counterStaticTotal 0\n"
                                         "Внимание!!! При вызове из интерпретатора функции memoryDisplayData() два "
                                         "элемента данных добавляются самим интерпретатором.\n")
                                     .arg(manager.getReservedCount())
                                     .arg(manager.getUsedCount())
                                     .arg(localContextUTF8::counterStaticTotal)
                                     .arg(localClassDeclaration::counterStaticTotal)
                                     .arg(localValueDescription::counterStaticTotal)
                                     .arg(localValueList::counterStaticTotal)
                                     .arg(localValueTable::counterStaticTotal);
        QCOMPARE(q(memoryDisplayDataText(false)), expected);
        QCOMPARE(manager.getReservedCount(), size_t(102400));
    }

    void counterHookOfTheDatabaseClasses()
    {
        const int64_t records = 12;
        memoryDisplayCounterSet("localDataBaseRecord", &records);
        const QString text = q(memoryDisplayDataText(false));
        memoryDisplayCounterSet("localDataBaseRecord", nullptr);
        QVERIFY(text.contains("\nlocalDataBaseTable::counterStaticTotal 0\nlocalDataBaseRecord::counterStaticTotal 12\n"));
        QVERIFY(q(memoryDisplayDataText(false)).contains("localDataBaseRecord::counterStaticTotal 0\n"));
        const localTest::childResult unknown = localTest::runChild("unknownCounter");
        QCOMPARE(unknown.exitCode, 1);
    }

    // A large table shows only the linked cells, each with its index, address
    // and links; an object with a link function adds its own count.
    void cellTable()
    {
        localValueDescription *marker = localValueNew();
        marker->setString(u"dump marker");
        marker->linkCounterInc();
        localValueDescription *list = localValueNew();
        localValueList::newInCell(list);
        localValueDescription *second = localValueNew();
        localValueDescription::localValueCopy(second, list);

        std::ostringstream out;
        memoryDisplayData(&out);
        const QString text = QString::fromStdString(out.str());
        const localMemoryManager &manager = localMemoryManager::instance();
        auto lineOf = [&](const localValueDescription *cell) {
            const ptrdiff_t index = cell - &manager.cellAt(0);
            const QString start = QString(" [%1]  [").arg(index);
            const int at = text.indexOf("\n" + start);
            return at < 0 ? QString() : text.mid(at + 1, text.indexOf('\n', at + 1) - at - 1);
        };
        QVERIFY(text.startsWith(" [num]  [addr]  [links] [obj-links]\n"));
        const QString markerLine = lineOf(marker);
        QVERIFY2(markerLine.contains("]  [2]  address: ["), qPrintable(markerLine));
        QVERIFY2(markerLine.endsWith(" wStr: [dump marker]  Val: [dump marker] "), qPrintable(markerLine));
        const QString listLine = lineOf(second);
        QVERIFY2(listLine.contains("]  [1]  [2]  address: ["), qPrintable(listLine));
        QVERIFY(text.contains("\nall reserved 102400\n"));

        const int linked = text.count(QRegularExpression("\n \\[\\d+\\]  \\[0x"));
        QCOMPARE(size_t(linked), manager.getUsedCount());

        marker->linkCounterDec();
        localValueRelease(marker);
        localValueRelease(list);
        localValueRelease(second);
        std::ostringstream after;
        memoryDisplayData(&after);
        QVERIFY(!QString::fromStdString(after.str()).contains("dump marker]"));
    }
};

LOCAL_TEST_MAIN(tst_localMemoryDump)
#include "tst_localMemoryDump.moc"
