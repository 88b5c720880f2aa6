// The help windows: the browser over a list of pages that ___TEST__TEXTBROWSER
// opens, and the pages that a help file in JSON makes.
#include "localVclHelpBrowser.h"
#include "localVclServices.h"

#include "localOperatorCompiled.h"

#include "localTestSupport.h"

#include <QApplication>
#include <QScreen>
#include <QTemporaryDir>
#include <QtTest>

using localTest::q;
using localTest::w;

namespace {

const char helpFile[] = R"json({
  "main": "главная",
  "console": "консоль",
  "class": {
    "EMPTY": {"text": "без методов"},
    "BOX": {"text": "коробка", "method": {
      "OPEN": {"nameEn": "OPEN", "nameRu": "ОТКРЫТЬ", "syntax": "b.OPEN(n)",
               "parameter": {"n": "номер"}, "returnValue": "1", "example": "? b.OPEN(1);",
               "seeAlso": {"#class:BOX:method:SHUT": "SHUT"}},
      "SHUT": {"nameEn": "SHUT", "nameRu": "ЗАКРЫТЬ", "description": "закрывает"}}}
  }
})json";

// The browser the last ___TEST__TEXTBROWSER call opened.
template <class T>
T *openedBrowser()
{
    for (QWidget *top : QApplication::topLevelWidgets())
        if (T *browser = top->findChild<T *>())
            return browser;
    return nullptr;
}

QString run(const QString &program, localContextUTF8 *context)
{
    localErrorType status = localErrorTypeOK;
    localContextUTF8 child(context);
    return textExec(status, w(program), &child) ? QString() : QString::number(int(status));
}

} // namespace

class tst_localVclHelpBrowser : public QObject {
    Q_OBJECT

    localContextUTF8 *context = nullptr;

private slots:
    void initTestCase()
    {
        localVclInstall();
        context = localTest::globalContext();
    }

    void cleanup()
    {
        for (QWidget *top : QApplication::topLevelWidgets())
            top->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    // Fragments of a page's HTML, '|' between them; the second column must not be there.
    void pages_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("present");
        QTest::addColumn<QString>("absent");
        QTest::newRow("class, whole") << "#class:BOX"
                                      << "<body>\n<a href=\"#main\">Главная</a><BR/>\n<BR/>\nЭто класс BOX<BR/>\n"
                                         "<BR/>\nкоробка<BR/>\n<BR/>\nДоступные методы:<BR/>\n"
                                         "&nbsp;&nbsp;&nbsp;&nbsp;<a href=\"#class:BOX:method:OPEN\" > OPEN()</a><BR/>\n"
                                         "&nbsp;&nbsp;&nbsp;&nbsp;<a href=\"#class:BOX:method:SHUT\" > SHUT()</a><BR/>\n"
                                         "</body>\n"
                                      << "<style";
        QTest::newRow("class without methods") << "#class:EMPTY" << "Доступные методы:<BR/>\n</body>\n" << "&nbsp;";
        QTest::newRow("console") << "#console" << "<body>\nконсоль</body>\n" << "<style";
        QTest::newRow("method with an example")
            << "#class:BOX:method:OPEN"
            << "<functionName>OPEN</functionName> <i>или</i> <functionName>ОТКРЫТЬ|<pre>b.OPEN(n)</pre><BR/>\n|"
               "&lt;n&gt; - номер<BR/>\n|<i><B>Пример:</B></i><BR>\n<pre>? b.OPEN(1);</pre>|"
               "<a href=\"#class:BOX:method:SHUT\">SHUT</a>"
            << "Описание:";
        QTest::newRow("method without an example")
            << "#class:BOX:method:SHUT"
            << "text-align:justyfy|<a href=\"#class:BOX\" >класс BOX</a>\n<BR/>\n|"
               "<i><B>Описание:</B></i><BR/>\nзакрывает<BR>\n"
            << "Пример:";
    }

    void pages()
    {
        QFETCH(QString, key);
        QFETCH(QString, present);
        QFETCH(QString, absent);
        localConsoleHelpBrowser browser(u"");
        QVERIFY(browser.parseHelpFromJson(w(helpFile)));
        const QString html = q(browser.pageFind(w(key)));
        for (const QString &part : present.split('|'))
            QVERIFY2(html.contains(part), qPrintable(part));
        QVERIFY(!html.contains(absent));
    }

    void navigation_data()
    {
        QTest::addColumn<QString>("link");
        QTest::addColumn<bool>("found");
        QTest::addColumn<QString>("shown");
        QTest::newRow("another case") << "#CLASS:box:METHOD:shut" << true << "закрывает";
        QTest::newRow("all pages") << "#allPages" << true
                                   << "main page / главная страница|console lkjhlkj / console страница|EMPTY|BOX|"
                                      "OPEN / ОТКРЫТЬ (BOX)|SHUT / ЗАКРЫТЬ (BOX)";
        QTest::newRow("unknown") << "#class:NONE" << false << "Страница не найдена!";
    }

    // The link is followed, then the way back and forward again.
    void navigation()
    {
        QFETCH(QString, link);
        QFETCH(bool, found);
        QFETCH(QString, shown);
        localConsoleHelpBrowser browser(u"");
        QVERIFY(browser.parseHelpFromJson(w(helpFile)));
        emit browser.anchorClicked(QUrl(link));
        for (const QString &part : shown.split('|'))
            QVERIFY2(browser.toPlainText().contains(part), qPrintable(part));
        QCOMPARE(browser.setPage(w(link)), found);
        QCOMPARE(q(browser.history.back()), found ? link : QStringLiteral("#404"));
        browser.backward();
        QVERIFY(browser.toPlainText().contains("главная"));
        browser.forward();
        QVERIFY(browser.toPlainText().contains(shown.section('|', 0, 0)));
        QCOMPARE(browser.historyPosition, 1);
    }

    void brokenHelpFileKeepsEarlierPages()
    {
        localConsoleHelpBrowser browser(u"с программы");
        localTest::coutCapture out;
        QVERIFY(!browser.parseHelpFromJson(u"{\"main\": \"из файла\", \"class\": {\"X\": 5}}"));
        QVERIFY(out.text().contains(q(localErrorText(localErrorTypeJSONparse))));
        QCOMPARE(q(browser.pageFind(u"#main")), QStringLiteral("<body>\nиз файла</body>\n"));
        QVERIFY(browser.pageFind(u"#class:X").empty());
    }

    void textBrowserFromList()
    {
        QTemporaryDir directory;
        QVERIFY(localTest::fileWrite(directory.filePath("page.htm"), QByteArray("\xcf\xf0\xe8\xe2\xe5\xf2"))); // CP1251
        const QString program = QStringLiteral(
                                    "l = CREATEOBJECT(\"VALUELIST\"); l.VALUEADD(\"Начало <a href='two'>2</a>\", "
                                    "\"Main.htm\"); l.VALUEADD(\"Вторая\", \"TWO\"); ___TEST__TEXTBROWSER(l);");
        QCOMPARE(run(program, context), QString());
        localVclTextBrowser *browser = openedBrowser<localVclTextBrowser>();
        QVERIFY(browser != nullptr);
        QVERIFY(browser->toPlainText().startsWith("Начало"));
        QVERIFY(!browser->windowIcon().isNull());
        browser->setSource(QUrl("#Two"));
        QCOMPARE(browser->toPlainText(), QStringLiteral("Вторая"));
        QVERIFY(browser->pageLoad(w(directory.filePath("page.htm"))));
        QCOMPARE(browser->toPlainText(), QStringLiteral("Привет"));
        QVERIFY(!browser->pageLoad(u"absent.htm"));
        QCOMPARE(browser->toPlainText(), QStringLiteral("Ошибка чтения файла!"));
        browser->backward();
        QVERIFY(browser->toPlainText().startsWith("Начало"));
        QCOMPARE(browser->history.size(), size_t(2));
    }

    void textBrowserArguments_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("status");
        QTest::addColumn<QString>("printed");
        QTest::newRow("not a list") << "___TEST__TEXTBROWSER(1);" << "33" << "";
        QTest::newRow("empty list") << "___TEST__TEXTBROWSER(CREATEOBJECT(\"VALUELIST\"));" << ""
                                    << " Ошибка! Пустой список значений\n";
    }

    void textBrowserArguments()
    {
        QFETCH(QString, program);
        QFETCH(QString, status);
        QFETCH(QString, printed);
        localTest::coutCapture out;
        QCOMPARE(run(program, context), status);
        if (!printed.isEmpty())
            QCOMPARE(out.text(), printed);
    }

    void helpFileThroughTheList()
    {
        const QString program = QStringLiteral("l = CREATEOBJECT(\"VALUELIST\"); l.VALUEADD(STRINGFROMFILE(\"%1\"), "
                                               "\"help.json\"); ___TEST__TEXTBROWSER(l);")
                                    .arg(QStringLiteral(KORVEL_MANUAL));
        QCOMPARE(run(program, context), QString());
        localConsoleHelpBrowser *browser = openedBrowser<localConsoleHelpBrowser>();
        QVERIFY(browser != nullptr);
        QVERIFY(!browser->pageFind(u"#class:VALUETABLE:method:ROWADD").empty());
        QVERIFY(browser->toPlainText().contains("VALUELIST"));
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QCOMPARE(browser->window()->x(), screen.x() + (screen.width() - screen.width() * 3 / 4) / 2);
        QCOMPARE(browser->window()->y(), screen.y() + screen.height() / 100);
    }
};

QTEST_MAIN(tst_localVclHelpBrowser)
#include "tst_localVclHelpBrowser.moc"
