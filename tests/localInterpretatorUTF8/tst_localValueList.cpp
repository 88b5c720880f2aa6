#include "localLibraryTestSupport.h"

#include "localServices.h"

using localTest::listDump;
using localTest::q;
using localTest::run;

namespace {

// A screen that is there, for the methods whose work is a dialog.
class screenServices : public localServices {
public:
    bool graphical() const override { return true; }
};

// The chooser answers from a script of rows and records what it was shown.
struct dialogRecorder {
    std::vector<size_t> answers;
    size_t next = 0;
    QStringList calls;
};
dialogRecorder recorder;

size_t scriptedChoose(const std::u16string &title, const QStringList &captions, size_t startRow)
{
    recorder.calls << QString("choose %1 [%2] from %3").arg(q(title), captions.join(","), QString::number(startRow));
    return recorder.next < recorder.answers.size() ? recorder.answers[recorder.next++] : 0;
}

void recordedShow(const std::u16string &title, const std::u16string &text)
{
    recorder.calls << QString("show %1: %2").arg(q(title), q(text));
}

// L holds three items: 10 "a", "x" "b", 30 "a".
localValueList *threeItems()
{
    localValueList *list = localTest::listVariable(u"L");
    localTest::numberAdd(*list, 10, u"a");
    localTest::stringAdd(*list, u"x", u"b");
    localTest::numberAdd(*list, 30, u"a");
    return list;
}

} // namespace

class tst_localValueList : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { localTest::globalContext(); }

    void registeredByTheGlobalContext()
    {
        localClassDeclaration *declaration = localValueList::classDeclaration();
        QCOMPARE(localContextUTF8::classFind(u"valuelist"), declaration);
        QCOMPARE(localContextUTF8::classFind(u"списокзначений"), declaration);
        // The value list comes before the value table in the list of classes.
        const std::vector<localClassDeclaration *> &classes = localContextUTF8::globalContext->classes;
        const auto list = std::find(classes.begin(), classes.end(), declaration);
        const auto table = std::find(classes.begin(), classes.end(), localValueTable::classDeclaration());
        QVERIFY(list != classes.end() && table != classes.end());
        QVERIFY(list < table);
    }

    // On the list 10 "a", "x" "b", 30 "a": the answer and the items after it;
    // a failed call leaves the list as it was. Every method is called in
    // both spellings somewhere in the table.
    void calls_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("items");
        const QString same = "a=10; b=x; a=30";
        // Count, then kind, then value: the first failing check names the status.
        QTest::newRow("size with an argument") << "L.SIZE(1)" << "fail 31" << same;
        QTest::newRow("count before kind") << "L.VALUEGET(\"1\", 2)" << "fail 31" << same;
        QTest::newRow("get with a string index") << "L.VALUEGET(\"1\")" << "fail 33" << same;
        QTest::newRow("add with three") << "L.VALUEADD(1, \"a\", 2)" << "fail 31" << same;
        QTest::newRow("add, presentation not a string") << "L.VALUEADD(1, 2)" << "fail 33" << same;
        QTest::newRow("kind before value") << "L.VALUEINSERT(0, 1, 5)" << "fail 33" << same;
        QTest::newRow("get by presentation, a number") << "L.VALUEGETBYPRESENTATION(1)" << "fail 33" << same;
        QTest::newRow("values add without values") << "L.VALUESADD()" << "fail 31" << same;
        QTest::newRow("show, title a number") << "L.SHOW(1)" << "fail 33" << same;
        QTest::newRow("choose, start past the count") << "L.ROWCHOOSE(\"t\", 4)" << "fail 7" << same;
        QTest::newRow("choose without a screen") << "L.ROWCHOOSE(\"t\", 3)" << "fail 26" << same;
        QTest::newRow("show without a screen") << "L.ПОКАЗАТЬ()" << "fail 26" << same;
        QTest::newRow("unknown method") << "L.SORT()" << "fail 27" << same;
        QTest::newRow("tojson has no Russian twin") << "L.ВJSON()" << "fail 27" << same;
        // the answers and the edges
        QTest::newRow("size") << "L.Количество()" << "ЧИСЛО 3" << same;
        QTest::newRow("get 0") << "L.VALUEGET(0)" << "fail 7" << same;
        QTest::newRow("get last") << "L.ЗначениеПолучить(3)" << "ЧИСЛО 30" << same;
        QTest::newRow("get size+1") << "L.VALUEGET(L.SIZE() + 1)" << "fail 7" << same;
        QTest::newRow("set 0 answers false") << "L.VALUESET(0, 5)" << "БУЛЕВО ЛОЖЬ" << same;
        QTest::newRow("set past the end answers false") << "L.ЗНАЧЕНИЕУСТАНОВИТЬ(4, 5)" << "БУЛЕВО ЛОЖЬ" << same;
        QTest::newRow("set last") << "L.VALUESET(3, \"z\")" << "БУЛЕВО ИСТИНА" << "a=10; b=x; a=z";
        QTest::newRow("presentation get 4") << "L.ЗначениеПредставлениеПолучить(4)" << "fail 7" << same;
        QTest::newRow("presentation get 3") << "L.VALUEPRESENTATIONGET(3)" << "СТРОКА a" << same;
        QTest::newRow("set presentation 4") << "L.VALUESETPRESENTATION(4, \"q\")" << "БУЛЕВО ЛОЖЬ" << same;
        QTest::newRow("set presentation 1") << "L.ЗначениеУстановитьПредставление(1, \"q\")" << "БУЛЕВО ИСТИНА"
                                            << "q=10; b=x; a=30";
        QTest::newRow("remove 0") << "L.ЗначениеУдалить(0)" << "fail 7" << same;
        QTest::newRow("remove shifts down") << "L.VALUEREMOVE(1)" << "ЧИСЛО 1" << "b=x; a=30";
        QTest::newRow("insert at 0") << "L.VALUEINSERT(0, 1)" << "fail 7" << same;
        QTest::newRow("insert past the count") << "L.ЗначениеВставить(4, 1)" << "fail 7" << same;
        QTest::newRow("insert before first") << "L.VALUEINSERT(1, 1, \"n\")" << "ЧИСЛО 4" << "n=1; a=10; b=x; a=30";
        QTest::newRow("add appends") << "L.ЗНАЧЕНИЕДОБАВИТЬ(\"v\", \"c\")" << "ЧИСЛО 4" << "a=10; b=x; a=30; c=v";
        QTest::newRow("add without presentation") << "L.VALUEADD(7)" << "ЧИСЛО 4" << "a=10; b=x; a=30; =7";
        QTest::newRow("clear") << "L.очистить() + L.CLEAR()" << "ЧИСЛО 2" << "";
        QTest::newRow("first of equal keys") << "L.ЗНАЧЕНИЕПОЛУЧИТЬПОПРЕДСТАВЛЕНИЮ(\"a\")" << "ЧИСЛО 10" << same;
        QTest::newRow("unknown key gives empty string") << "L.VALUEGETBYPRESENTATION(\"zz\")" << "СТРОКА " << same;
        QTest::newRow("keys are exact") << "L.VALUEGETBYPRESENTATION(\"A\")" << "СТРОКА " << same;
        QTest::newRow("set by key changes the first") << "L.ЗначениеУстановитьПоПредставлению(5, \"a\")" << "ЧИСЛО 1"
                                                      << "a=5; b=x; a=30";
        QTest::newRow("set of a new key appends") << "L.VALUESETBYPRESENTATION(5, \"c\")" << "ЧИСЛО 4"
                                                  << "a=10; b=x; a=30; c=5";
    }
    void calls()
    {
        QFETCH(QString, expression);
        QFETCH(QString, expected);
        QFETCH(QString, items);
        localValueList *list = threeItems();
        QCOMPARE(run(expression), expected);
        QCOMPARE(listDump(*list), items);
    }

    // Values at odd places are added, each named by its own string form; the
    // pair that ends on the last argument has an empty presentation.
    void valuesAdd_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("items");
        QTest::newRow("one") << "1" << "ЧИСЛО 1" << "1=1";
        QTest::newRow("pair") << "1, 2" << "ЧИСЛО 1" << "=1";
        QTest::newRow("three") << "1, 2, 3" << "ЧИСЛО 2" << "1=1; 3=3";
        QTest::newRow("four") << "1, 2, 3, 4" << "ЧИСЛО 2" << "1=1; =3";
    }
    void valuesAdd()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, expected);
        QFETCH(QString, items);
        localValueList *list = localTest::listVariable(u"L");
        QCOMPARE(run("L.VALUESADD(" + arguments + ")"), expected);
        QCOMPARE(listDump(*list), items);
    }

    void toStringNamesClassAndCount()
    {
        threeItems();
        const QString text = run("L.TOSTRING()");
        QVERIFY2(text.startsWith("СТРОКА ") && text.contains("СПИСОКЗНАЧЕНИЙ") && text.contains("[3]")
                     && !text.contains('\n'),
                 qPrintable(text));
        QCOMPARE(run("L.СТРОКА()"), text);
    }

    // Values go in and out as deep copies; objects inside are shared by count.
    void copiesAndObjectLinks()
    {
        localValueList *outer = localTest::listVariable(u"L");
        localValueList *inner = localTest::listVariable(u"M");
        localTest::numberAdd(*inner, 1, u"one");
        const int64_t liveBefore = localValueList::counterStaticTotal;
        QCOMPARE(run("L.VALUEADD(M, \"m\")"), QString("ЧИСЛО 1"));
        QCOMPARE(inner->objectLinks, int64_t(2));
        QCOMPARE(run("L.VALUEGET(1).SIZE()"), QString("ЧИСЛО 1"));
        QCOMPARE(inner->objectLinks, int64_t(2)); // the copy that VALUEGET made is gone again

        // The variable lets go: the list inside the outer one keeps it alive.
        localValueDescription number;
        localTest::globalContext()->variableSet(u"M", &number);
        QCOMPARE(localValueList::counterStaticTotal, liveBefore);
        QCOMPARE(inner->objectLinks, int64_t(1));
        // Removing the last holder destroys it through "~".
        QVERIFY(outer->valueRemove(1));
        QCOMPARE(localValueList::counterStaticTotal, liveBefore - 1);

        localTest::stringAdd(*outer, u"text", u"s");
        localValueDescription *copy = nullptr;
        localErrorType status = localErrorTypeOK;
        localValueVector arguments;
        localValueDescription one;
        one.setVal(1);
        arguments.push_back(&one);
        void *object = outer;
        QVERIFY(localValueList::classImplementationMethodFunction(status, nullptr, &object, u"VALUEGET", &arguments,
                                                                  &copy));
        copy->localValueString = u"changed";
        QCOMPARE(q(outer->valueByIndex(1)->localValueString), QString("text"));
        localValueRelease(copy);
    }

    void clearingTheLastHolderDestroysNestedLists()
    {
        const int64_t liveBefore = localValueList::counterStaticTotal;
        {
            localValueDescription holder;
            localValueList *outer = localValueList::newInCell(&holder);
            localValueDescription innerHolder;
            localValueList *inner = localValueList::newInCell(&innerHolder);
            localTest::numberAdd(*inner, 1, u"x");
            outer->valueAdd(&innerHolder, u"inner");
            QCOMPARE(localValueList::counterStaticTotal, liveBefore + 2);
        }
        QCOMPARE(localValueList::counterStaticTotal, liveBefore);
    }

    // Items shift on insert, remove and growth without gaining or losing links.
    void objectLinksSurviveShifts()
    {
        localValueDescription holder;
        localValueList *shared = localValueList::newInCell(&holder);
        localValueList list;
        for (int i = 0; i < 3; ++i)
            list.valueAdd(&holder, u"shared");
        QCOMPARE(shared->objectLinks, int64_t(4));
        localValueDescription number;
        for (int i = 0; i < 40; ++i) {
            number.setVal(i);
            QVERIFY(list.valueInsert(1, &number, u"n"));
        }
        QCOMPARE(shared->objectLinks, int64_t(4));
        QVERIFY(list.valueRemove(41)); // the first of the three shared items
        QCOMPARE(shared->objectLinks, int64_t(3));
        QVERIFY(list.valueSet(41, &number));
        QCOMPARE(shared->objectLinks, int64_t(2));
        QCOMPARE(q(list.valueByIndex(1)->toString()), QString("39"));
        QCOMPARE(q(list.valueByIndex(40)->toString()), QString("0"));
        list.clear();
        QCOMPARE(shared->objectLinks, int64_t(1));
    }

    void nativeOperations()
    {
        localValueList list;
        localTest::numberAdd(list, 1, u"a");
        QCOMPARE(list.valueSetByPresentation(u"text", u"b"), size_t(2));
        QCOMPARE(list.valueSetByPresentation(3.0, u"a"), size_t(1));
        QCOMPARE(list.indexOfPresentation(u"b"), size_t(2));
        QCOMPARE(list.indexOfPresentation(u"c"), size_t(0));
        QVERIFY(list.valueByKey(u"c") == nullptr);
        QVERIFY(list.valueByIndex(0) == nullptr && list.valueByIndex(3) == nullptr);
        QVERIFY(list.presentationByIndex(3) == nullptr);
        QCOMPARE(list.valueByKey(u"a")->localValueNumber, 3.0);
        QCOMPARE(listDump(list), QString("a=3; b=text"));
        QVERIFY(!list.valueInsert(3, list.valueByIndex(1), u"c"));
        QVERIFY(list.valueInsert(2, list.valueByIndex(1), u"c"));
        QCOMPARE(listDump(list), QString("a=3; c=3; b=text"));
        QCOMPARE(list.captions(), QStringList({"a", "c", "b"}));
    }

    void indexFromNumber_data()
    {
        QTest::addColumn<double>("number");
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("index");
        QTest::newRow("zero") << 0.0 << 3 << 0;
        QTest::newRow("fraction below one") << 0.99 << 3 << 0;
        QTest::newRow("fraction") << 3.5 << 3 << 3;
        QTest::newRow("past the end") << 4.0 << 3 << 0;
        QTest::newRow("negative") << -1.0 << 3 << 0;
        QTest::newRow("huge") << 1e300 << 3 << 0;
        QTest::newRow("nan") << std::nan("") << 3 << 0;
    }
    void indexFromNumber()
    {
        QFETCH(double, number);
        QFETCH(int, count);
        QFETCH(int, index);
        QCOMPARE(localIndexFromNumber(number, size_t(count)), size_t(index));
    }

    void dispatchEdges()
    {
        localClassDeclaration *declaration = localValueList::classDeclaration();
        localErrorType status = localErrorTypeOK;
        localValueVector noArguments;
        localValueDescription *result = nullptr;
        QVERIFY(!declaration->methodExec(status, nullptr, nullptr, u"SIZE", &noArguments, &result));
        QCOMPARE(int(status), 29);
        QVERIFY(result != nullptr); // the result cell exists even on failure
        localValueRelease(result);
        QVERIFY(!declaration->methodExec(status, nullptr, nullptr, u"NOSUCH", &noArguments, &result));
        QCOMPARE(int(status), 12);
        localValueRelease(result);

        localValueList list;
        QVERIFY(!declaration->methodExec(status, nullptr, &list, u"size", nullptr, &result));
        QCOMPARE(int(status), 16);
        localValueRelease(result);
    }

    void dialogsWithAScreen()
    {
        localValueList *list = threeItems();
        Q_UNUSED(list);
        localServices::install(new screenServices);
        localListDialogs saved = localListDialogs::handlers;
        localListDialogs::handlers.rowChoose = scriptedChoose;
        QCOMPARE(run("L.SHOW()"), QString("fail 26")); // no text viewer registered
        localListDialogs::handlers.textShow = recordedShow;

        recorder = dialogRecorder();
        recorder.answers = {2};
        QCOMPARE(run("L.ROWCHOOSE(\"Pick\", 3)"), QString("ЧИСЛО 2"));
        QCOMPARE(run("L.РЯДВЫБРАТЬ()"), QString("ЧИСЛО 0"));
        QCOMPARE(recorder.calls, QStringList({"choose Pick [a,b,a] from 3", "choose  [a,b,a] from 0"}));

        recorder = dialogRecorder();
        recorder.answers = {2, 1, 0};
        QCOMPARE(run("L.SHOW(\"List\")"), QString("ЧИСЛО 1"));
        QCOMPARE(recorder.calls, QStringList({"choose List [a,b,a] from 0", "show b: x", "choose List [a,b,a] from 2",
                                              "show a: 10", "choose List [a,b,a] from 1"}));

        localListDialogs::handlers = saved;
        localServices::install(nullptr);
        QCOMPARE(run("L.ROWCHOOSE()"), QString("fail 26"));
    }
};

LOCAL_TEST_MAIN(tst_localValueList)
#include "tst_localValueList.moc"
