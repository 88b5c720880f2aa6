// The class V77 through the scriptable automation fake: the calls and their
// signatures as they reach the platform, argument rules and statuses, the
// log lines, and the platform of a machine without COM.
#include "localTestSupport.h"

#include "localAutomationFake.h"
#include "localClassV77.h"

#include "localStd.h"

using localTest::q;
using localTest::w;

namespace {

QString run(const QString &expression)
{
    const localTest::evaluation result = localTest::evaluate(expression, localTest::globalContext());
    return result.done ? QStringLiteral("ok %1").arg(result.text) : QStringLiteral("fail %1").arg(result.status);
}

// Evaluates `expression` into the variable `name`; the outcome as run() gives it.
QString assign(const std::u16string &name, const QString &expression)
{
    localValueDescription *made = nullptr;
    localErrorType status = localErrorTypeOK;
    if (!localInterpretatorUTF8::evaluate(status, w(expression), &made, localTest::globalContext())) {
        if (made != nullptr)
            localValueRelease(made);
        return QStringLiteral("fail %1").arg(status);
    }
    localTest::globalContext()->variableSet(name, made);
    const QString text = q(made->toString());
    localValueRelease(made);
    return QStringLiteral("ok ") + text;
}

// Lines the log receives from now on, without their time stamps.
class logTail {
public:
    logTail() : start(QFileInfo(logName()).size()) {}
    QStringList lines() const
    {
        QFile log(logName());
        if (!log.open(QIODevice::ReadOnly))
            return {QStringLiteral("<no log>")};
        log.seek(start);
        QStringList out;
        for (const QString &line : QString::fromUtf8(log.readAll()).split('\n', Qt::SkipEmptyParts))
            out << line.mid(20); // "dd.MM.yyyy HH:mm:ss "
        return out;
    }

private:
    static QString logName() { return QString::fromLocal8Bit(localStd::logPath().c_str()); }
    const qint64 start;
};

const QString initialize = QStringLiteral("1 call Initialize(const QVariant&, const QVariant&, const QVariant&) ");
const QString probe = QStringLiteral("1 query CreateObject(const QVariant&) [Text]");

} // namespace

class tst_localClassV77 : public QObject {
    Q_OBJECT
    localAutomationFake *fake = nullptr;

    // V holds a new V77 object; the fake's lines start after its creation.
    void makeV() { QCOMPARE(assign(u"V", "createobject(\"V77\")"), QStringLiteral("ok объект класса [V77] ")); }
    QStringList linesAfterCreation() const { return fake->lines().mid(1); }

private slots:
    void initTestCase()
    {
        localTest::globalContext();
        localAutomation1CInstall();
        QCOMPARE(run("classload(\"V77\")"), QStringLiteral("ok ИСТИНА"));
    }
    void init()
    {
        fake = new localAutomationFake;
        localAutomationPlatform::install(fake);
        fake->answer("RMTrade", QStringLiteral("role"));
        makeV();
        QCOMPARE(fake->lines(), QStringList{"1 create V77.Application"});
    }
    void cleanup()
    {
        localTest::globalContext()->variableSetNumber(u"V", 0);
        localTest::globalContext()->variableSetNumber(u"S", 0);
        localAutomationPlatform::install(nullptr);
    }

    void connect_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<bool>("baseAnswers");
        QTest::addColumn<QString>("commandLine");
        QTest::addColumn<QStringList>("log");
        QTest::newRow("monopoly, user and password")
            << "\"D:/base\", 1, \"user\", \"pw\"" << true << "/D D:/base /M  /Nuser /Ppw"
            << QStringList{"Пытаемся подключиться в МОНОПОЛЬНОМ режиме к БД по адресу :[D:/base]",
                           "Удачно подключился в МОНОПОЛЬНОМ режиме к БД по адресу :[D:/base]"};
        QTest::newRow("probe fails") << "\"D:/b\"" << false << "/D D:/b"
                                     << QStringList{"Пытаемся подключиться  к БД по адресу :[D:/b]",
                                                    "Не получилось подключиться  к БД по адресу :[D:/b]"};
        QTest::newRow("boolean false, password only")
            << "\"D:/b\", FALSE, \"\", \"pw\"" << true << "/D D:/b /Ppw"
            << QStringList{"Пытаемся подключиться  к БД по адресу :[D:/b]",
                           "Удачно подключился  к БД по адресу :[D:/b]"};
        QTest::newRow("Cyrillic user, no monopoly below 1")
            << "\"D:/b\", -1, \"Иван\"" << true << "/D D:/b /NИван"
            << QStringList{"Пытаемся подключиться  к БД по адресу :[D:/b]",
                           "Удачно подключился  к БД по адресу :[D:/b]"};
    }
    void connect()
    {
        QFETCH(QString, arguments);
        QFETCH(bool, baseAnswers);
        QFETCH(QString, commandLine);
        QFETCH(QStringList, log);
        if (baseAnswers)
            fake->subObject("CreateObject(const QVariant&)", "Text");
        const logTail tail;
        const QString answer = baseAnswers ? "ok ИСТИНА" : "ok ЛОЖЬ";
        QCOMPARE(run("v.connect(" + arguments + ")"), answer);
        QStringList expected{"1 call RMTrade []", initialize + "[role|" + commandLine + "|]", probe};
        if (baseAnswers)
            expected << "2 release";
        QCOMPARE(linesAfterCreation(), expected);
        QCOMPARE(tail.lines(), log);
        QCOMPARE(run("v.подключен()"), answer);
    }

    void connectArguments_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("outcome");
        QTest::newRow("none") << "" << "fail 31";
        QTest::newRow("five") << "\"p\", 1, \"u\", \"p\", 1" << "fail 31";
        QTest::newRow("number path") << "1" << "fail 33";
        QTest::newRow("string monopoly") << "\"p\", \"1\"" << "fail 33";
        QTest::newRow("number user") << "\"p\", 1, 2" << "fail 33";
        QTest::newRow("number password") << "\"p\", 1, \"u\", 3" << "fail 33";
    }
    void connectArguments()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, outcome);
        QCOMPARE(run("v.connect(" + arguments + ")"), outcome);
        QVERIFY(linesAfterCreation().isEmpty());
        QCOMPARE(run("v.isconnected()"), QStringLiteral("ok ЛОЖЬ"));
    }

    // Methods that make one call: the outcome and the call as it arrived.
    void methods_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("signature"); // answered with "7"
        QTest::addColumn<QString>("outcome");
        QTest::addColumn<QStringList>("calls");
        const QString evalExpr = "EvalExpr(const QVariant&)";
        const QString getItem = "ПолучитьЭлемент(/const QString&/)";
        const QString write = "Записать(/const QVariant&/)";
        QTest::newRow("evaluate") << "v.evaluate(\"2+5\")" << evalExpr << "ok 7"
                                  << QStringList{"1 call " + evalExpr + " [2+5]"};
        QTest::newRow("execute batch") << "v.ВыполнитьКоманду(\"Сообщить(1)\")" << "ExecuteBatch(const QVariant&)"
                                       << "ok 7" << QStringList{"1 call ExecuteBatch(const QVariant&) [Сообщить(1)]"};
        QTest::newRow("get attribute") << "v.getattrib(\"Имя\")" << "ПолучитьАтрибут(/const QString&/)"
                                       << "ok 7" << QStringList{"1 call ПолучитьАтрибут(/const QString&/) [Имя]"};
        QTest::newRow("unknown attribute reads empty") << "v.getattrib(\"Нет\")" << evalExpr << "ok "
                                                       << QStringList{"1 call ПолучитьАтрибут(/const QString&/) [Нет]"};
        QTest::newRow("get item") << "v.getitem()" << getItem << "ok 7" << QStringList{"1 call " + getItem + " [1]"};
        QTest::newRow("get item 0") << "v.getitem(0)" << getItem << "ok 7" << QStringList{"1 call " + getItem + " [0]"};
        QTest::newRow("get item 5") << "v.getitem(5)" << getItem << "ok 7" << QStringList{"1 call " + getItem + " [1]"};
        QTest::newRow("get item text") << "v.getitem(\"0\")" << getItem << "fail 33" << QStringList();
        QTest::newRow("get item two") << "v.getitem(0, 0)" << getItem << "fail 31" << QStringList();
        QTest::newRow("select items 0") << "v.ВыбратьЭлементы(0)" << "ВыбратьЭлементы(/const QString&/)" << "ok 7"
                                        << QStringList{"1 call ВыбратьЭлементы(/const QString&/) [0]"};
        QTest::newRow("find by code") << "v.findbycode(\"042\")" << "НайтиПоКоду(/const QString&/)" << "ok 7"
                                      << QStringList{"1 call НайтиПоКоду(/const QString&/) [042]"};
        QTest::newRow("method call, no argument") << "v.methodcall(\"Выбрать\")" << "Выбрать()" << "ok 7"
                                                  << QStringList{"1 call Выбрать() []"};
        QTest::newRow("method call, string") << "v.МетодВызвать(\"Записать\", \"строка\")" << write << "ok 7"
                                             << QStringList{"1 call " + write + " [строка]"};
        QTest::newRow("method call, number") << "v.methodcall(\"Записать\", 2.5)" << write << "ok 7"
                                             << QStringList{"1 call " + write + " [2.5]"};
        QTest::newRow("method call, V77 object") << "v.methodcall(\"Записать\", v)" << write << "ok 7"
                                                 << QStringList{"1 call " + write + " [object 1]"};
        QTest::newRow("method call, list") << "v.methodcall(\"Записать\", createobject(\"VALUELIST\"))" << write
                                           << "fail 33" << QStringList();
        QTest::newRow("method call, boolean") << "v.methodcall(\"Записать\", TRUE)" << write << "fail 33"
                                              << QStringList();
        QTest::newRow("method call, number name") << "v.methodcall(1)" << write << "fail 33" << QStringList();
        QTest::newRow("evaluate, no argument") << "v.evaluate()" << evalExpr << "fail 31" << QStringList();
        QTest::newRow("create object, none") << "v.createobject(\"Нет\")" << evalExpr << "fail 28"
                                             << QStringList{"1 query CreateObject(const QVariant&) [Нет]"};
        QTest::newRow("attribute as object, none") << "v.getattribasobj77(\"Нет\")" << evalExpr << "fail 28"
                                                   << QStringList{"1 query ПолучитьАтрибут(/const QString&/) [Нет]"};
        QTest::newRow("to string") << "v.строка()" << evalExpr << "ok объект класса [V77] " << QStringList();
        QTest::newRow("self") << "v.SELF.tostring()" << evalExpr << "ok объект класса [V77] " << QStringList();
        QTest::newRow("fresh object not connected") << "v.isconnected()" << evalExpr << "ok ЛОЖЬ" << QStringList();
        QTest::newRow("unknown method") << "v.connectto()" << evalExpr << "fail 27" << QStringList();
    }
    void methods()
    {
        QFETCH(QString, expression);
        QFETCH(QString, signature);
        QFETCH(QString, outcome);
        QFETCH(QStringList, calls);
        fake->answer(signature, QStringLiteral("7"));
        QCOMPARE(run(expression), outcome);
        QCOMPARE(linesAfterCreation(), calls);
    }

    // The names reach the platform as Windows-1251 bytes, not UTF-8.
    void signaturesAreCp1251()
    {
        QCOMPARE(run("v.getattrib(\"Имя\")"), QStringLiteral("ok "));
        const QByteArray sent = fake->journal->events.back().signature;
        QCOMPARE(sent, localAutomationFake::cp1251("ПолучитьАтрибут(/const QString&/)"));
        QCOMPARE(sent.size(), QStringLiteral("ПолучитьАтрибут(/const QString&/)").size());
        QCOMPARE(fake->journal->events.back().arguments, QVariantList{QStringLiteral("Имя")});
    }

    // Sub-objects share the connection, answer on their own object and are
    // released with their last cell.
    void subObjects()
    {
        fake->subObject("CreateObject(const QVariant&)", "Справочник.Товары");
        fake->subObject("ПолучитьАтрибут(/const QString&/)");
        QCOMPARE(assign(u"S", "v.СоздатьОбъект(\"Справочник.Товары\")"), QStringLiteral("ok объект класса [V77] "));
        QCOMPARE(run("s.isconnected()"), QStringLiteral("ok ИСТИНА"));
        QCOMPARE(run("s.getitem(0)"), QStringLiteral("ok 0"));
        QCOMPARE(run("v.methodcall(\"Передать\", s)"), QStringLiteral("ok "));
        QCOMPARE(run("valuetypeasstring(s.getattribasobj77(\"Родитель\"))"), QStringLiteral("ok V77"));
        localTest::globalContext()->variableSetNumber(u"S", 0);
        QCOMPARE(linesAfterCreation(),
                 (QStringList{"1 query CreateObject(const QVariant&) [Справочник.Товары]",
                              "2 call ПолучитьЭлемент(/const QString&/) [0]",
                              "1 call Передать(/const QVariant&/) [object 2]",
                              "2 query ПолучитьАтрибут(/const QString&/) [Родитель]", "3 release", "2 release"}));
    }

    void quit_data()
    {
        QTest::addColumn<bool>("connected");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("not connected") << false << QStringList{"1 release"};
        QTest::newRow("connected") << true
                                   << QStringList{"1 call ExecuteBatch(const QVariant&) [ExitSystem()]", "1 release"};
    }
    // After QUIT the object is gone: calls answer empty and touch nothing.
    void quit()
    {
        QFETCH(bool, connected);
        QFETCH(QStringList, calls);
        if (connected) {
            fake->subObject("CreateObject(const QVariant&)", "Text");
            QCOMPARE(run("v.connect(\"D:/b\")"), QStringLiteral("ok ИСТИНА"));
        }
        const int before = int(fake->journal->events.size());
        QCOMPARE(run("v.ЗавершитьРаботуСистемы()"), QStringLiteral("ok ИСТИНА"));
        QCOMPARE(fake->lines().mid(before), calls);
        QCOMPARE(run("v.isconnected()"), QStringLiteral("ok ЛОЖЬ"));
        QCOMPARE(run("v.evaluate(\"1\")"), QStringLiteral("ok "));
        QCOMPARE(run("v.getitem(0)"), QStringLiteral("ok 0"));
        QCOMPARE(run("v.quit()"), QStringLiteral("ok ИСТИНА"));
        QCOMPARE(run("v.createobject(\"Text\")"), QStringLiteral("fail 28"));
        QCOMPARE(fake->lines().mid(before), calls);
    }

    void bookkeeping_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("outcome");
        QTest::addColumn<QString>("query"); // the arguments of the query, "" when none goes out
        QTest::addColumn<QStringList>("log");
        const QString tail = "] для функции BOOKKEEPINGTOTALSDOQUERY215";
        QTest::newRow("dates converted")
            << "\"20200115\", \"20200214\", \"0460.X\"" << "ok итог" << "15.01.20|14.02.20|0460.X|"
            << QStringList{"date1 [20200115" + tail, "date2 [20200214" + tail, "Счет [0460.X" + tail};
        QTest::newRow("doubtful dates keep the defaults")
            << "\"2020011\", \"\", \"0460\"" << "ok итог" << "01.01.20|31.01.20|0460|"
            << QStringList{"Сомнительный параметр date1 [2020011" + tail, "Сомнительный параметр date2 [" + tail,
                           "Счет [0460" + tail};
        QTest::newRow("no account")
            << "\"20200115\", \"20200131\", \"\"" << "fail 16" << ""
            << QStringList{"date1 [20200115" + tail, "date2 [20200131" + tail,
                           "Расчет по группе счетов пока не реализован!!"};
    }
    void bookkeeping()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, outcome);
        QFETCH(QString, query);
        QFETCH(QStringList, log);
        const QString querySignature = "ВыполнитьЗапрос(/const QString&/,/const QString&/,/const QString&/,,2)";
        fake->answer(querySignature, QStringLiteral("итог"));
        const logTail tail;
        QCOMPARE(run("v.__бухгалтерскиеИтогиВыполнитьЗапрос215(" + arguments + ")"), outcome);
        QStringList calls{"1 call использоватьСубконто(/const QVariant&/,/const QVariant&/,/const QVariant&/,"
                          "/const QVariant&/) [Товары|0|1|1]"};
        if (!query.isEmpty())
            calls << "1 call " + querySignature + " [" + query + "]";
        QCOMPARE(linesAfterCreation(), calls);
        QCOMPARE(tail.lines(), log);
    }

    void bookkeepingArguments_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("outcome");
        QTest::newRow("two") << "\"a\", \"b\"" << "fail 31";
        QTest::newRow("number date") << "20200115, \"b\", \"c\"" << "fail 33";
        QTest::newRow("number account") << "\"a\", \"b\", 460" << "fail 33";
    }
    void bookkeepingArguments()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, outcome);
        QCOMPARE(run("v.__BOOKKEEPINGTOTALSDOQUERY215(" + arguments + ")"), outcome);
        QVERIFY(linesAfterCreation().isEmpty());
    }

    // A machine without COM: the object is made, but nothing behind it.
    void withoutAutomation_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("outcome");
        QTest::newRow("connect") << "w.connect(\"D:/b\", 1)" << "ok ЛОЖЬ";
        QTest::newRow("evaluate") << "w.evaluate(\"1\")" << "ok ";
        QTest::newRow("get item") << "w.getitem(0)" << "ok 0";
        QTest::newRow("create object") << "w.createobject(\"Text\")" << "fail 28";
        QTest::newRow("quit") << "w.quit()" << "ok ИСТИНА";
    }
    void withoutAutomation()
    {
        QFETCH(QString, expression);
        QFETCH(QString, outcome);
        localAutomationPlatform::install(nullptr);
        QCOMPARE(assign(u"W", "createobject(\"V77\")"), QStringLiteral("ok объект класса [V77] "));
        QCOMPARE(run(expression), outcome);
        QCOMPARE(run("w.isconnected()"), QStringLiteral("ok ЛОЖЬ"));
        localTest::globalContext()->variableSetNumber(u"W", 0);
    }

    void subObjectWithoutRoot()
    {
        const localTest::childResult child = localTest::runChild("subObjectWithoutRoot");
        QVERIFY(child.exitCode != 0);
        QVERIFY2(child.output.contains("Error!!! exit(EXIT_FAILURE) func: localClassV77"), child.output.constData());
    }
};

LOCAL_CHILD_CASE(subObjectWithoutRoot)
{
    localAutomationFake fake;
    localClassV77 object(fake.create("V77.Application"), nullptr);
}

LOCAL_TEST_MAIN(tst_localClassV77)
#include "tst_localClassV77.moc"
