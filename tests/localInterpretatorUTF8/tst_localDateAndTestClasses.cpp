// The classes DATE and TEST that CLASSLOAD brings in: the date's string form
// and creation time, the test object's attributes, methods and links.
#include "localLibraryTestSupport.h"

#include "localClassForTest.h"
#include "localDate.h"

#include <QDateTime>

using localTest::q;
using localTest::run;

namespace {

time_t localMoment(int year, int month, int day, int hour, int minute, int second)
{
    return time_t(QDateTime(QDate(year, month, day), QTime(hour, minute, second), Qt::LocalTime).toSecsSinceEpoch());
}

} // namespace

class tst_localDateAndTestClasses : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        localTest::globalContext();
        QCOMPARE(run("classload(\"DATE\")"), QString("БУЛЕВО ИСТИНА"));
        QCOMPARE(run("classload(\"TEST\")"), QString("БУЛЕВО ИСТИНА"));
    }

    void dateText_data()
    {
        QTest::addColumn<qint64>("moment");
        QTest::addColumn<QString>("text");
        QTest::newRow("january is 01") << qint64(localMoment(2021, 1, 5, 4, 5, 9)) << "20210105:04:05:09";
        QTest::newRow("midnight") << qint64(localMoment(2024, 2, 29, 0, 0, 0)) << "20240229:00:00:00";
    }
    void dateText()
    {
        QFETCH(qint64, moment);
        QFETCH(QString, text);
        QCOMPARE(q(dateTimeToString(time_t(moment))), text);
    }

    // TOSTRING shows the moment the object was made, not the time of the call.
    void dateKeepsItsCreationTime()
    {
        localValueDescription *made = nullptr;
        localErrorType status = localErrorTypeOK;
        QVERIFY(localInterpretatorUTF8::evaluate(status, u"createobject(\"дата\")", &made, localTest::globalContext()));
        localDateTime *date = static_cast<localDateTime *>(made->localValueObject);
        QVERIFY(std::abs(date->now - std::time(nullptr)) <= 1);
        date->now = localMoment(2021, 3, 15, 14, 5, 9);
        localTest::globalContext()->variableSet(u"D", made);
        localValueRelease(made);
        QCOMPARE(run("d.tostring()"), QString("СТРОКА 20210315:14:05:09"));
        QCOMPARE(run("d.строка()"), QString("СТРОКА 20210315:14:05:09"));
        QCOMPARE(run("string(d)"), QString("СТРОКА 20210315:14:05:09"));
        QCOMPARE(run("d.tostring(1)"), QString("fail 31"));
        QCOMPARE(run("d.day()"), QString("fail 27"));
        QCOMPARE(run("valuetypeasstring(d)"), QString("СТРОКА ДАТА"));

        // The last cell that holds the date takes the object with it.
        const int64_t alive = localDateTime::counterStaticTotal;
        QCOMPARE(run("valuetypeasstring(createobject(\"DATE\"))"), QString("СТРОКА ДАТА"));
        QCOMPARE(localDateTime::counterStaticTotal, alive);
        localTest::globalContext()->variableSetNumber(u"D", 0);
        QCOMPARE(localDateTime::counterStaticTotal, alive - 1);
    }

    void dateClassLevelCalls()
    {
        localValueVector noArguments;
        localValueDescription *result = nullptr;
        localErrorType status = localErrorTypeOK;
        void *noObject = nullptr;
        QVERIFY(!localDateTime::classImplementationMethodFunction(status, nullptr, &noObject, u"TOSTRING",
                                                                  &noArguments, &result));
        QCOMPARE(int(status), 29);
        localValueRelease(result);
    }

    void testObject_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("outcome");
        QTest::newRow("getintplusone") << "createobject(\"ТЕСТ\").GETINTPLUSONE()" << "ЧИСЛО 1";
        QTest::newRow("getintplus") << "createobject(\"TEST\").getintplus(41)" << "ЧИСЛО 41";
        QTest::newRow("chain through SELF") << "createobject(\"TEST\").SELF.SELF.getintplusone()" << "ЧИСЛО 1";
        QTest::newRow("string form") << "string(createobject(\"TEST\"))" << "СТРОКА TEST ATTRIBINT=0";
        QTest::newRow("getintplus without argument") << "createobject(\"TEST\").getintplus()" << "fail 31";
        QTest::newRow("getintplus of a string") << "createobject(\"TEST\").getintplus(\"1\")" << "fail 33";
        QTest::newRow("unknown method") << "createobject(\"TEST\").nosuch()" << "fail 27";
        QTest::newRow("unknown attribute") << "createobject(\"TEST\").NOSUCH" << "fail 10";
    }
    void testObject()
    {
        QFETCH(QString, expression);
        QFETCH(QString, outcome);
        const int64_t alive = localClassForTest::counterStaticTotal;
        QCOMPARE(run(expression), outcome);
        QCOMPARE(localClassForTest::counterStaticTotal, alive);
    }

    // SELF hands out the object itself: a second holder, one more link.
    void selfSharesTheObject()
    {
        localValueDescription *made = nullptr;
        localErrorType status = localErrorTypeOK;
        QVERIFY(localInterpretatorUTF8::evaluate(status, u"createobject(\"TEST\")", &made, localTest::globalContext()));
        localClassForTest *test = static_cast<localClassForTest *>(made->localValueObject);
        QCOMPARE(test->objectLinks, int64_t(1));
        localValueDescription value;
        value.setVal(7);
        QVERIFY(localClassForTest::classDeclaration()->attrSet(status, nullptr, test, u"ATTRIBINT", &value));
        localValueDescription *self = nullptr;
        QVERIFY(localClassForTest::classDeclaration()->attrGet(status, nullptr, test, u"SELF", &self));
        QCOMPARE(self->localValueObject, static_cast<void *>(test));
        QCOMPARE(test->objectLinks, int64_t(2));
        localValueRelease(made);
        QCOMPARE(test->objectLinks, int64_t(1));
        localValueVector noArguments;
        localValueDescription *answer = nullptr;
        QVERIFY(self->methodExec(status, nullptr, u"getintplusone", &noArguments, &answer));
        QCOMPARE(q(answer->toString()), QString("8"));
        localValueRelease(answer);
        localValueRelease(self);
    }
};

LOCAL_TEST_MAIN(tst_localDateAndTestClasses)
#include "tst_localDateAndTestClasses.moc"
