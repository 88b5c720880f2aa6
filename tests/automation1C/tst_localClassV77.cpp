// The class V77 through the scriptable automation fake: the calls as they
// reach the platform, argument rules, statuses and log lines.
#include "localTestSupport.h"

#include "localAutomationFake.h"
#include "localClassV77.h"

#include "localStd.h"

using localTest::w;

namespace {

QString run(const QString &expression)
{
    const localTest::evaluation result = localTest::evaluate(expression, localTest::globalContext());
    return result.done ? "ok " + result.text : QStringLiteral("fail %1").arg(result.status);
}

QString logName()
{
    return QString::fromLocal8Bit(localStd::logPath().c_str());
}

const QString create = "1 query CreateObject(const QVariant&) ";
const QString item = "ПолучитьЭлемент(/const QString&/)";
const QString write = "1 call Записать(/const QVariant&/) ";
const QString doQuery = "ВыполнитьЗапрос(/const QString&/,/const QString&/,/const QString&/,,2)";
const QString subconto = "1 call использоватьСубконто(/const QVariant&/,/const QVariant&/,"
                         "/const QVariant&/,/const QVariant&/) [Товары|0|1|1]";
const QString tail = "] для функции BOOKKEEPINGTOTALSDOQUERY215";
const QString at = " к БД по адресу :[D:/b]";

void row(const char *name, const QString &expression, const QString &outcome, const QStringList &calls,
         const QStringList &log = QStringList(), bool probeAnswers = true)
{
    QTest::newRow(name) << expression << outcome << calls << log << probeAnswers;
}

} // namespace

class tst_localClassV77 : public QObject {
    Q_OBJECT
    localAutomationFake *fake = nullptr;

    void assign(const std::u16string &name, const QString &expression)
    {
        localValueDescription *made = nullptr;
        localErrorType status = localErrorTypeOK;
        QVERIFY(localInterpretatorUTF8::evaluate(status, w(expression), &made, localTest::globalContext()));
        localTest::globalContext()->variableSet(name, made);
        localValueRelease(made);
    }

private slots:
    void initTestCase()
    {
        localAutomation1CInstall();
        QCOMPARE(run("classload(\"V77\")"), QStringLiteral("ok ИСТИНА"));
    }
    // V holds a fresh V77 object on a fake that answers the calls of the cases.
    void init()
    {
        localAutomationPlatform::install(fake = new localAutomationFake);
        fake->answer("RMTrade", "role");
        for (const char *signature : {"EvalExpr(const QVariant&)", "НайтиПоКоду(/const QString&/)",
                                      "Записать(/const QVariant&/)", "ПолучитьЭлемент(/const QString&/)"})
            fake->answer(signature, "7");
        fake->answer(doQuery, "итог");
        fake->subObject("CreateObject(const QVariant&)", "Справочник.Товары");
        assign(u"V", "createobject(\"V77\")");
        QCOMPARE(fake->lines(), QStringList{"1 create V77.Application"});
    }
    void cleanup()
    {
        localTest::globalContext()->variableSetNumber(u"V", 0);
        localAutomationPlatform::install(nullptr);
    }

    // The outcome, the calls after the creation and the log's new lines without stamps.
    void methods_data()
    {
        for (const char *column : {"expression", "outcome"})
            QTest::addColumn<QString>(column);
        for (const char *column : {"calls", "log"})
            QTest::addColumn<QStringList>(column);
        QTest::addColumn<bool>("probeAnswers");
        const QString init = "1 call Initialize(const QVariant&, const QVariant&, const QVariant&) [role|";
        row("connect, all four", "v.connect(\"D:/b\", 1, \"user\", \"pw\")", "ok ИСТИНА",
            {"1 call RMTrade []", init + "/D D:/b /M  /Nuser /Ppw|]", create + "[Text]", "2 release"},
            {"Пытаемся подключиться в МОНОПОЛЬНОМ режиме" + at, "Удачно подключился в МОНОПОЛЬНОМ режиме" + at});
        row("connect, probe fails", "v.подключить(\"D:/b\", FALSE, \"\", \"pw\")", "ok ЛОЖЬ",
            {"1 call RMTrade []", init + "/D D:/b /Ppw|]", create + "[Text]"},
            {"Пытаемся подключиться " + at, "Не получилось подключиться " + at}, false);
        row("connect, -1 and user", "v.connect(\"D:/b\", -1, \"Иван\")", "ok ИСТИНА",
            {"1 call RMTrade []", init + "/D D:/b /NИван|]", create + "[Text]", "2 release"},
            {"Пытаемся подключиться " + at, "Удачно подключился " + at});
        row("connect, none", "v.connect()", "fail 31", {});
        row("connect, text monopoly", "v.connect(\"p\", \"1\")", "fail 33", {});
        row("fresh, not connected", "v.isconnected()", "ok ЛОЖЬ", {});
        row("evaluate", "v.evaluate(\"2+5\")", "ok 7", {"1 call EvalExpr(const QVariant&) [2+5]"});
        row("unknown attribute", "v.ПолучитьАтрибут(\"Нет\")", "ok ",
            {"1 call ПолучитьАтрибут(/const QString&/) [Нет]"});
        row("get item", "v.getitem()", "ok 7", {"1 call " + item + " [1]"});
        row("get item 0", "v.getitem(0)", "ok 7", {"1 call " + item + " [0]"});
        row("get item 5", "v.getitem(5)", "ok 7", {"1 call " + item + " [1]"});
        row("get item text", "v.getitem(\"0\")", "fail 33", {});
        row("find by code", "v.findbycode(\"042\")", "ok 7", {"1 call НайтиПоКоду(/const QString&/) [042]"});
        row("call, no argument", "v.methodcall(\"Выбрать\")", "ok ", {"1 call Выбрать() []"});
        row("call, string", "v.МетодВызвать(\"Записать\", \"текст\")", "ok 7", {write + "[текст]"});
        row("call, number", "v.methodcall(\"Записать\", 2.5)", "ok 7", {write + "[2.5]"});
        row("call, V77 object", "v.methodcall(\"Записать\", v)", "ok 7", {write + "[object 1]"});
        row("call, list", "v.methodcall(\"Записать\", createobject(\"VALUELIST\"))", "fail 33", {});
        row("call, boolean", "v.methodcall(\"Записать\", TRUE)", "fail 33", {});
        row("create object, none", "v.createobject(\"Нет\")", "fail 28", {create + "[Нет]"});
        row("sub-object connected", "v.createobject(\"Справочник.Товары\").isconnected()", "ok ИСТИНА",
            {create + "[Справочник.Товары]", "2 release"});
        row("SELF", "v.SELF.tostring()", "ok объект класса [V77] ", {});
        row("unknown method", "v.connectto()", "fail 27", {});
        const QString bookkeeping = "v.__БухгалтерскиеИтогиВыполнитьЗапрос215(";
        row("dates", bookkeeping + "\"20200115\", \"20200214\", \"0460.X\")", "ok итог",
            {subconto, "1 call " + doQuery + " [15.01.20|14.02.20|0460.X|]"},
            {"date1 [20200115" + tail, "date2 [20200214" + tail, "Счет [0460.X" + tail});
        row("doubtful dates, defaults", bookkeeping + "\"2020011\", \"\", \"0460\")", "ok итог",
            {subconto, "1 call " + doQuery + " [01.01.20|31.01.20|0460|]"},
            {"Сомнительный параметр date1 [2020011" + tail, "Сомнительный параметр date2 [" + tail,
             "Счет [0460" + tail});
        row("no account", bookkeeping + "\"20200115\", \"20200131\", \"\")", "fail 16", {subconto},
            {"date1 [20200115" + tail, "date2 [20200131" + tail, "Расчет по группе счетов пока не реализован!!"});
        row("bookkeeping, two", bookkeeping + "\"a\", \"b\")", "fail 31", {});
        row("bookkeeping, number", bookkeeping + "\"a\", \"b\", 460)", "fail 33", {});
    }
    void methods()
    {
        QFETCH(QString, expression);
        QFETCH(QString, outcome);
        QFETCH(QStringList, calls);
        QFETCH(QStringList, log);
        QFETCH(bool, probeAnswers);
        if (probeAnswers)
            fake->subObject("CreateObject(const QVariant&)", "Text");
        const qint64 logStart = QFileInfo(logName()).size();
        QCOMPARE(run(expression), outcome);
        QCOMPARE(fake->lines().mid(1), calls);
        QFile logFile(logName());
        QStringList logged;
        if (logFile.open(QIODevice::ReadOnly) && logFile.seek(logStart))
            for (const QString &line : QString::fromUtf8(logFile.readAll()).split('\n', Qt::SkipEmptyParts))
                logged << line.mid(20); // after "dd.MM.yyyy HH:mm:ss "
        QCOMPARE(logged, log);
        if (expression.contains("connect("))
            QCOMPARE(run("v.isconnected()"), outcome.startsWith("ok") ? outcome : QStringLiteral("ok ЛОЖЬ"));
    }

    // The names reach the platform as their Windows-1251 bytes.
    void signaturesAreCp1251()
    {
        QCOMPARE(run("v.getattrib(\"Имя\")"), QStringLiteral("ok "));
        const QString signature = "ПолучитьАтрибут(/const QString&/)";
        QCOMPARE(fake->journal->events.back().signature, localAutomationFake::cp1251(signature));
        QCOMPARE(fake->journal->events.back().signature.size(), signature.size());
    }

    // ExitSystem() only when connected; afterwards calls answer empty and touch nothing.
    void quit_data()
    {
        QTest::addColumn<bool>("connected");
        QTest::newRow("not connected") << false;
        QTest::newRow("connected") << true;
    }
    void quit()
    {
        QFETCH(bool, connected);
        fake->subObject("CreateObject(const QVariant&)", "Text");
        if (connected)
            QCOMPARE(run("v.connect(\"D:/b\")"), QStringLiteral("ok ИСТИНА"));
        const int before = int(fake->journal->events.size());
        QCOMPARE(run("v.quit()") + run("v.ЗавершитьРаботуСистемы()"), QStringLiteral("ok ИСТИНАok ИСТИНА"));
        QCOMPARE(run("v.isconnected()") + run("v.evaluate(\"1\")") + run("v.getitem(0)")
                     + run("v.createobject(\"Text\")"),
                 QStringLiteral("ok ЛОЖЬok ok 0fail 28"));
        QStringList expected{"1 release"};
        if (connected)
            expected.prepend("1 call ExecuteBatch(const QVariant&) [ExitSystem()]");
        QCOMPARE(fake->lines().mid(before), expected);
    }
};

LOCAL_TEST_MAIN(tst_localClassV77)
#include "tst_localClassV77.moc"
