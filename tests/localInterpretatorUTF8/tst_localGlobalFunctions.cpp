// The global functions called from expressions: numbers, strings, values and
// JSON, classes, system and interface; the order of argument checks; what
// stands in the table.
#include "localLibraryTestSupport.h"

#include "localGlobalFunctions.h"

#include <QElapsedTimer>
#include <QRegularExpression>

using localTest::q;
using localTest::run;

namespace {

bool answerGraphical(localErrorType &, localContextUTF8 *, localValueVector &, localValueDescription *result)
{
    result->setString(u"shown");
    return true;
}

// As localTest::run, but leaves std::cout alone for a capture of the caller.
QString runPrinting(const QString &expression)
{
    return localTest::outcomeLine(localTest::evaluate(expression, localTest::globalContext()));
}

} // namespace

class tst_localGlobalFunctions : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { localTest::globalContext(); }

    // Text in, outcome line out, for every group of functions.
    void expressions_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("outcome");
        // numbers
        QTest::newRow("abs") << "abs(-2.5)" << "ЧИСЛО 2.5";
        QTest::newRow("abs of a string") << "abs(\"1\")" << "fail 33";
        QTest::newRow("abs without argument") << "abs()" << "fail 31";
        QTest::newRow("count before kind") << "abs(\"1\", 2)" << "fail 31";
        QTest::newRow("int truncates toward zero") << "int(-1.9)" << "ЧИСЛО -1";
        QTest::newRow("цел") << "цел(1.9)" << "ЧИСЛО 1";
        QTest::newRow("int past 32 bits") << "int(3000000000)" << "ЧИСЛО -2147483648";
        QTest::newRow("round negative half") << "round(-2.5)" << "ЧИСЛО -3";
        QTest::newRow("round to decimals") << "round(1.2345, 2)" << "ЧИСЛО 1.2299999999999999822";
        QTest::newRow("round to hundreds") << "окр(1260, -2)" << "ЧИСЛО 1300";
        QTest::newRow("round decimals not a number") << "round(1.6, \"2\")" << "ЧИСЛО 2";
        QTest::newRow("round third accepted") << "round(1.26, 1, \"x\")" << "ЧИСЛО 1.3000000000000000444";
        QTest::newRow("sqrt of a negative") << "кореньквадратный(-1)" << "fail 32";
        QTest::newRow("sqrt of minus zero") << "sqrt(-0)" << "ЧИСЛО 0";
        QTest::newRow("number reads the front") << "число(\" 12abc\")" << "ЧИСЛО 12";
        QTest::newRow("number of true") << "number(true)" << "ЧИСЛО 1";
        QTest::newRow("number of an object") << "number(contextget())" << "fail 33";
        // MAX and MIN with numbers, strings and mixed kinds
        QTest::newRow("max of numbers") << "max(1, 3, 2)" << "ЧИСЛО 3";
        QTest::newRow("min of numbers") << "мин(4, -1, 2)" << "ЧИСЛО -1";
        QTest::newRow("no arguments") << "max()" << "fail 31";
        QTest::newRow("mixed kinds") << "max(1, \"a\")" << "fail 33";
        QTest::newRow("mixed later") << "min(\"a\", \"b\", 3)" << "fail 33";
        QTest::newRow("strings by code") << "max(\"a\", \"B\")" << "СТРОКА a";
        QTest::newRow("string prefix") << "min(\"ab\", \"a\")" << "СТРОКА a";
        QTest::newRow("booleans") << "max(false, true)" << "БУЛЕВО ИСТИНА";
        // strings
        QTest::newRow("chr low 16 bits") << "символ(65601)" << "СТРОКА A";
        QTest::newRow("string of a boolean") << "строка(true)" << "СТРОКА ИСТИНА";
        QTest::newRow("length counts units") << "строкадлина(\"абв\")" << "ЧИСЛО 3";
        QTest::newRow("upper") << "upper(\"abcабвё1\")" << "СТРОКА ABCАБВЁ1";
        QTest::newRow("trim left") << "stringtriml(chr(9) + \" a \" + chr(10))" << "СТРОКА a \n";
        QTest::newRow("trim right") << "stringtrimr(\" a \" + chr(9))" << "СТРОКА  a";
        QTest::newRow("trim both") << "строкасокрлп(chr(10) + \" a b \" + chr(9))" << "СТРОКА a b";
        QTest::newRow("left part") << "stringpartleft(\"abc\", 2)" << "СТРОКА ab";
        QTest::newRow("left negative is huge") << "строкачастьлевая(\"abc\", -1)" << "СТРОКА abc";
        QTest::newRow("right part") << "stringpartright(\"abc\", 2)" << "СТРОКА bc";
        QTest::newRow("right negative is huge") << "строкачастьправая(\"abc\", -1)" << "СТРОКА abc";
        QTest::newRow("replace at most") << "stringpartreplace(\"aaa\", \"a\", \"b\", 2)" << "СТРОКА bba";
        QTest::newRow("replace 0 means all") << "stringpartreplace(\"aaa\", \"a\", \"b\", 0)" << "СТРОКА bbb";
        QTest::newRow("replacement not replaced") << "stringpartreplace(\"aa\", \"a\", \"aa\")" << "СТРОКА aaaa";
        QTest::newRow("replace longer pattern") << "строкачастьзаменить(\"abcabc\", \"bc\", \"-\")" << "СТРОКА a-a-";
        QTest::newRow("replace empty pattern") << "stringpartreplace(\"abc\", \"\", \"x\")" << "fail 32";
        QTest::newRow("replace negative count") << "stringpartreplace(\"abc\", \"a\", \"x\", -1)" << "fail 33";
        QTest::newRow("replace kind before value") << "stringpartreplace(\"abc\", \"\", 1)" << "fail 33";
        QTest::newRow("format number") << "формат(1234.5, \"N10.2\")" << "СТРОКА    1234.50";
        QTest::newRow("format json") << "format(\"[a/b]\", \"JSON\")" << "СТРОКА \\[a\\/b\\]";
        QTest::newRow("format json word exact") << "format(\"[a]\", \"json\")" << "СТРОКА [a]";
        QTest::newRow("format other string") << "format(\"[a]\", \"N5\")" << "СТРОКА [a]";
        QTest::newRow("format boolean") << "format(true, \"JSON\")" << "СТРОКА ИСТИНА";
        QTest::newRow("format needs a string") << "format(1, 2)" << "fail 33";
        // values and JSON
        QTest::newRow("iif false") << "iif(false, \"a\", \"b\")" << "СТРОКА b";
        QTest::newRow("iif of a number") << "iif(1, 2, 3)" << "fail 33";
        QTest::newRow("blank string") << "valueisempty(\" \" + chr(9))" << "БУЛЕВО ИСТИНА";
        QTest::newRow("text") << "этопустоезначение(\"a\")" << "БУЛЕВО ЛОЖЬ";
        QTest::newRow("zero") << "значениепустое(0)" << "БУЛЕВО ИСТИНА";
        QTest::newRow("false") << "isemptyvalue(false)" << "БУЛЕВО ИСТИНА";
        QTest::newRow("object") << "isemptyvalue(contextget())" << "БУЛЕВО ЛОЖЬ";
        QTest::newRow("table is no list") << "этосписокзначений(createobject(\"VALUETABLE\"))" << "БУЛЕВО ЛОЖЬ";
        QTest::newRow("table is a table") << "isvaluetable(createobject(\"ТАБЛИЦАЗНАЧЕНИЙ\"))" << "БУЛЕВО ИСТИНА";
        QTest::newRow("type of boolean") << "значениетипполучитькакстрока(true)" << "СТРОКА БУЛЕВО";
        QTest::newRow("type of context") << "valuetypeasstring(contextget())" << "СТРОКА КОНТЕКСТ";
        QTest::newRow("json of a number") << "valuetojson(1)" << "СТРОКА {\"t\": \"NUM\",\"vP\": \"1\",\"v\": \"1\"}";
        QTest::newRow("number round trip") << "значениеизjson(значениевjson(2.5))" << "ЧИСЛО 2.5";
        QTest::newRow("valuefromjson of bad text") << "valuefromjson(\"{\")" << "fail 34";
        QTest::newRow("valuefromjson of a number") << "valuefromjson(1)" << "fail 33";
        QTest::newRow("parsejson of bad text") << "parsejson(\"{\")" << "ЧИСЛО 0";
        QTest::newRow("parsejson of an array") << "разобратьjson(\"[1,2]\").SIZE()" << "ЧИСЛО 2";
        // the retired rows, unknown names, and the graphical rows without a screen
        QTest::newRow("userdir") << "userdir()" << "fail 27";
        QTest::newRow("значениевстроку") << "значениевстроку(1)" << "fail 27";
        QTest::newRow("___test") << "___test(1)" << "fail 27";
        QTest::newRow("unknown name") << "nosuchfunction()" << "fail 27";
        QTest::newRow("wait is no value") << "wait" << "fail 10";
        QTest::newRow("filechoose") << "filechoose()" << "fail 26";
        QTest::newRow("network") << "networkrequestexecsync(\"GET\", \"x\")" << "fail 26";
        QTest::newRow("picture part") << "pixmapasbase64partget(\"\", 0, 0)" << "fail 26";
        QTest::newRow("messagebox needs a string") << "messagebox(1)" << "fail 33";
        QTest::newRow("messagebox timeout kind") << "предупреждение(\"a\", \"b\")" << "fail 33";
        // classes and listings
        QTest::newRow("loaded at start") << "classload(\"valuelist\")" << "БУЛЕВО ИСТИНА";
        QTest::newRow("test class") << "классзагрузить(\"  ТЕСТ \")" << "БУЛЕВО ИСТИНА";
        QTest::newRow("test class is loaded") << "classloaded(\" test\")" << "БУЛЕВО ИСТИНА";
        QTest::newRow("table document not here yet") << "classload(\"табличныйдокумент\")" << "fail 14";
        QTest::newRow("name must be a string") << "classload(1)" << "fail 33";
        QTest::newRow("unknown not loaded") << "классзагружен(\"NOSUCH\")" << "БУЛЕВО ЛОЖЬ";
        QTest::newRow("display unknown") << "classdisplay(\"NOSUCH\")" << "fail 14";
        QTest::newRow("create by name") << "valuetypeasstring(createobject(\"ValueList\"))" << "СТРОКА СПИСОКЗНАЧЕНИЙ";
        QTest::newRow("create unknown") << "создатьобъект(\"NOSUCH\")" << "fail 14";
        QTest::newRow("context's string form") << "stringpartleft(contextget().tostring(), 38)"
                                                << "СТРОКА объект класса [КОНТЕКСТ] по адресу [0x";
        QTest::newRow("context's tostring takes nothing") << "contextget().tostring(1)" << "fail 31";
        QTest::newRow("functions display mask kind") << "functionsdisplay(1)" << "fail 33";
        QTest::newRow("memory display takes nothing") << "memorydisplay(1)" << "fail 31";
        QTest::newRow("memory vars kinds") << "memorydisplayvars(\"A\", \"1\")" << "fail 33";
        // system
        QTest::newRow("iswindows") << "iswindows()" << "БУЛЕВО ЛОЖЬ";
        QTest::newRow("magenta") << "color(\"magenta\")" << "ЧИСЛО 16711935";
        QTest::newRow("any letter case") << "цвет(\"DARKRED\")" << "ЧИСЛО 8388608";
        QTest::newRow("russian name") << "цвет(\"тёмно-синий\")" << "ЧИСЛО 128";
        QTest::newRow("unknown colour") << "color(\"nope\")" << "fail 32";
        QTest::newRow("colour by number") << "color(255)" << "fail 33";
        QTest::newRow("escape asked") << "sys(2001, \"ESCAPE\")" << "БУЛЕВО ЛОЖЬ";
        QTest::newRow("sys other code") << "sys(2000, \"ESCAPE\")" << "fail 32";
        QTest::newRow("sys other word") << "sys(2001, \"EXIT\")" << "fail 32";
        QTest::newRow("sys flag kind") << "sys(2001, \"ESCAPE\", 1)" << "fail 33";
        QTest::newRow("wait negative") << "wait(-1)" << "fail 32";
        QTest::newRow("ждать") << "ждать(0)" << "ЧИСЛО 1";
        QTest::newRow("message") << "сообщить(\"\")" << "ЧИСЛО 1";
    }
    void expressions()
    {
        QFETCH(QString, expression);
        QFETCH(QString, outcome);
        QCOMPARE(run(expression), outcome);
    }

    void randStaysInRange()
    {
        for (int i = 0; i < 200; ++i) {
            const localTest::evaluation outcome = localTest::evaluate("rand()", localTest::globalContext());
            QVERIFY(outcome.done);
            const double value = outcome.text.toDouble();
            QVERIFY2(value >= 0.0 && value <= 1.0, qPrintable(outcome.text));
        }
    }

    // Both search with a position from 1 and answer 0 when nothing is found,
    // but their starts differ: FIND counts from 0 and forgives, STRINGPARTFIND
    // counts from 1 and fails outside the string.
    void findAgainstStringPartFind_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("find");
        QTest::addColumn<QString>("partFind");
        QTest::newRow("no start") << "\"abcabc\", \"c\"" << "ЧИСЛО 3" << "ЧИСЛО 3";
        QTest::newRow("start 0") << "\"abcabc\", \"c\", 0" << "ЧИСЛО 3" << "ЧИСЛО 3";
        QTest::newRow("start 3") << "\"abcabc\", \"c\", 3" << "ЧИСЛО 6" << "ЧИСЛО 3";
        QTest::newRow("negative start") << "\"abc\", \"a\", -2" << "ЧИСЛО 1" << "fail 32";
        QTest::newRow("start at the end") << "\"abc\", \"c\", 3" << "ЧИСЛО 0" << "ЧИСЛО 3";
        QTest::newRow("start just past") << "\"abc\", \"c\", 4" << "ЧИСЛО 0" << "ЧИСЛО 0";
        QTest::newRow("start beyond") << "\"abc\", \"c\", 5" << "ЧИСЛО 0" << "fail 7";
        QTest::newRow("empty needle") << "\"abc\", \"\"" << "ЧИСЛО 1" << "ЧИСЛО 1";
        QTest::newRow("empty text") << "\"\", \"\"" << "ЧИСЛО 0" << "ЧИСЛО 1";
        QTest::newRow("needle not a string") << "\"abc\", 1" << "fail 33" << "fail 33";
    }
    void findAgainstStringPartFind()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, find);
        QFETCH(QString, partFind);
        QCOMPARE(run("find(" + arguments + ")"), find);
        QCOMPARE(run("stringpartfind(" + arguments + ")"), partFind);
    }

    void registeredGraphicalHandlerServesBothNames()
    {
        // A kept reading of the call finds the handler that stands at each run.
        localExpressionForm kept(u"stringshow(1)");
        auto keptRun = [&]() {
            localTest::coutCapture quiet;
            return localTest::outcomeLine(localTest::evaluate("stringshow(1)", localTest::globalContext(), false, &kept));
        };
        const QString before = keptRun();
        localGlobalFunctionGraphicalSet(u"СТРОКАПОКАЗАТЬ", answerGraphical);
        const QString english = run("stringshow(1)");
        const QString russian = run("строкапоказать(1)");
        const QString keptWhileSet = keptRun();
        localGlobalFunctionGraphicalSet(u"STRINGSHOW", localGlobalFunctionFind(u"FORMOPEN"));
        QCOMPARE(before, QString("fail 26"));
        QCOMPARE(english, QString("СТРОКА shown"));
        QCOMPARE(russian, QString("СТРОКА shown"));
        QCOMPARE(keptWhileSet, QString("СТРОКА shown"));
        QCOMPARE(run("stringshow(1)"), QString("fail 26"));
        QCOMPARE(keptRun(), QString("fail 26"));
    }

    void listingsPrint()
    {
        localTest::coutCapture captured;
        QCOMPARE(runPrinting("classdisplay(\"список\" + \"значений\")"), QString("СТРОКА "));
        QCOMPARE(runPrinting("functionsdisplay(\"STRINGPART*\")"), QString("ЧИСЛО 1"));
        QCOMPARE(runPrinting("classesdisplay(\"VALUE*\")"), QString("ЧИСЛО 1"));
        QCOMPARE(runPrinting("memorydisplay()"), QString("ЧИСЛО 1"));
        const QString text = captured.text();
        QVERIFY(text.contains("VALUELIST (СПИСОКЗНАЧЕНИЙ) класс СписокЗначений\n"));
        QVERIFY(text.contains(" func [STRINGPARTFIND] : встроенная\n"));
        QVERIFY(!text.contains(" func [STRINGLEN]"));
        QVERIFY(text.contains("VALUETABLE (ТАБЛИЦАЗНАЧЕНИЙ)"));
        QVERIFY(text.contains("all reserved 102400\n"));
        QVERIFY(!text.contains(" [num]  [addr]"));
    }

    // SYS's Esc flag and CONTEXTGET belong to the context that calls them.
    void callingContext()
    {
        std::unique_ptr<localContextUTF8> context(new localContextUTF8(localTest::globalContext()));
        QCOMPARE(localTest::evaluate("контекстполучить().tostring()", context.get()).text, q(context->toString()));
        QCOMPARE(localTest::outcomeLine(localTest::evaluate("sys(2001, \"escape\", true)", context.get())),
                 QString("БУЛЕВО ИСТИНА"));
        QVERIFY(context->interruptible);
        QVERIFY(!localTest::globalContext()->interruptible);
        QCOMPARE(localTest::outcomeLine(localTest::evaluate("sys(2001, \"ESCAPE\")", context.get())),
                 QString("БУЛЕВО ИСТИНА"));
        localTest::evaluate("sys(2001, \"ESCAPE\", false)", context.get());
        QVERIFY(!context->interruptible);
    }

    void waitLetsTheTimePass()
    {
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(run("wait(40)"), QString("ЧИСЛО 1"));
        QVERIFY(timer.elapsed() >= 40);
    }

    void clocks()
    {
        // 1 January 2000 lies more than 20 years back.
        QVERIFY(run("seconds20000101() > 631152000") == "БУЛЕВО ИСТИНА");
        QCOMPARE(run("secondsthisprocess() >= 0"), QString("БУЛЕВО ИСТИНА"));
        const QString stamp = run("датавремясистемнаяполучитькакстрока()");
        QVERIFY2(QRegularExpression("^СТРОКА 20\\d{6}:\\d\\d:\\d\\d:\\d\\d$").match(stamp).hasMatch(), qPrintable(stamp));
    }

    // Listings and the highlighter show the members in this order, each row
    // as its English then its Russian name.
    void contextMembersInDeclaredOrder()
    {
        const std::vector<localClassMember *> &members = localContextUTF8::classDeclaration()->members;
        QStringList names;
        for (const localClassMember *member : members)
            names << q(member->name);
        const QStringList head = {"", "~", "___TEST", "___TEST__TEXTBROWSER", "TRUE", "ИСТИНА", "FALSE", "ЛОЖЬ",
                                  "ABS", "INT", "ЦЕЛ", "ROUND", "ОКР"};
        QCOMPARE(names.mid(0, head.size()), head);
        QCOMPARE(names.last(), QString("TOSTRING"));
        QCOMPARE(names.count("СТРОКА"), 1);
        for (const localClassMember *member : members) {
            const QString name = q(member->name);
            const bool constant = name == "TRUE" || name == "ИСТИНА" || name == "FALSE" || name == "ЛОЖЬ"
                                  || name == "WAIT" || name == "ЖДАТЬ";
            QVERIFY2((member->EXEC == nullptr) == constant, qPrintable(name));
            QVERIFY2((member->GET != nullptr) == constant, qPrintable(name));
        }
        // Attribute members are no functions of the global context, yet WAIT answers a call.
        QVERIFY(localTest::globalContext()->functionLookup(u"WAIT") == nullptr);
        QVERIFY(localTest::globalContext()->functionLookup(u"СТРОКАЧАСТЬНАЙТИ") != nullptr);
    }
};

LOCAL_TEST_MAIN(tst_localGlobalFunctions)
#include "tst_localGlobalFunctions.moc"
