#include "localErrorType.h"
#include "localTestSupport.h"

using localTest::q;
using localTest::w;

LOCAL_CHILD_CASE(fatalStop)
{
    exit_FAILURE(u"Memory manager (localMemoryManager) overflow. Resize not available");
}

class tst_localErrorType : public QObject {
    Q_OBJECT
private slots:
    void statusText_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("text");
        QTest::newRow("ok") << 54 << "Ок. Ошибки отсутствуют";
        QTest::newRow("enddo misspelt") << 2 << "Непредвиденное использование зарезарвированного слова КонецЦикла (EndDo)";
        QTest::newRow("constructor misspelt") << 11 << "Не задан конструктор для каласса.";
        QTest::newRow("precision") << 36
                                   << "Ошибка точности! Возможно, указано число сослишком большим количеством значащих символов";
        QTest::newRow("json restore keeps trailing blank")
            << 35
            << "Ошибка восстановления значения из строки JSON. В частности возникает когда в списке значений после "
               "парсинга JSON не хватает информации для воззтановления ValueDescription. ";
        QTest::newRow("equal sign quoted") << 39 << "Синтаксическая ошибка. Ожидается \"=\"";
        QTest::newRow("do keyword") << 43 << "Синтаксическая ошибка. Ожидается ключевое слово \"ЦИКЛ\" (\"do\") ";
        QTest::newRow("interrupted") << 55 << "Прервано пользователем.";
        for (int status : {0, 6, 25, 29, 38, 59, -1, 1000})
            QTest::newRow(qPrintable(QString("no text %1").arg(status)))
                << status << QString("Неизвестный статус возврата ном: %1").arg(status);
    }
    void statusText()
    {
        QFETCH(int, status);
        QFETCH(QString, text);
        QCOMPARE(q(localErrorText(status)), text);
    }

    void positionDescription_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("description");
        QTest::newRow("second line") << "ab\ncd" << 4 << "pos :4( line:2, pos: 1)";
        // A line feed at the position already counts, so it reads as one before line 2.
        QTest::newRow("on the line feed") << "ab\ncd" << 2 << "pos :2( line:2, pos: -1)";
        QTest::newRow("start of line 2") << "ab\ncd" << 3 << "pos :3( line:2, pos: 0)";
        QTest::newRow("at the length") << "ab\ncd" << 5 << "Unabel resolve pos 5 in line with length 5";
        QTest::newRow("empty text") << "" << 0 << "Unabel resolve pos 0 in line with length 0";
    }
    void positionDescription()
    {
        QFETCH(QString, text);
        QFETCH(int, position);
        QFETCH(QString, description);
        QCOMPARE(q(localPositionDescription(w(text), size_t(position))), description);
    }

    void lineResolve_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("position");
        QTest::addColumn<int>("line");
        QTest::addColumn<int>("lineStart");
        QTest::newRow("empty") << "" << 0 << 1 << 0;
        QTest::newRow("capped to last char") << "ab\ncd" << 50 << 2 << 3;
        QTest::newRow("trailing line feed capped") << "ab\n" << 10 << 2 << 3;
    }
    void lineResolve()
    {
        QFETCH(QString, text);
        QFETCH(int, position);
        QFETCH(int, line);
        QFETCH(int, lineStart);
        size_t start = 99;
        QCOMPARE(localLineResolve(w(text), size_t(position), start), line);
        QCOMPARE(int(start), lineStart);
    }

    void restOfLine_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("rest");
        QTest::newRow("to line feed") << "x = ;\ny = 1;" << 0 << "x = ;";
        QTest::newRow("last line") << "x = ;\ny = 1;" << 6 << "y = 1;";
        QTest::newRow("at end") << "abc" << 3 << "";
    }
    void restOfLine()
    {
        QFETCH(QString, text);
        QFETCH(int, position);
        QFETCH(QString, rest);
        QCOMPARE(q(localRestOfLine(w(text), size_t(position))), rest);
    }

    void narrow_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("ascii") << "? 2+2" << QByteArray("? 2+2");
        QTest::newRow("latin-1 as one byte") << QString(QChar(0xE9)) << QByteArray("\xE9");
        QTest::newRow("cyrillic as utf-8") << "Ёё Яа" << QByteArray("Ёё Яа");
        QTest::newRow("other as digit 1") << QString(QChar(0x0456)) + QChar(0x20AC) << QByteArray("11");
        QTest::newRow("byte 255") << QString(QChar(0xFF)) << QByteArray("\xFF");
    }
    void narrow()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, bytes);
        QCOMPARE(QByteArray::fromStdString(localNarrow(w(text))), bytes);
    }

    void diagnosticTail()
    {
        QCOMPARE(QString::fromStdString(localDiagTail("f", "a.cpp", 12)), QString(" func: f file: a.cpp line: 12\n"));
    }

    void fatalStopPrintsAndExitsWithOne()
    {
        const localTest::childResult result = localTest::runChild("fatalStop");
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.output.startsWith(
                     "Error!!!  Memory manager (localMemoryManager) overflow. Resize not available func: exit_FAILURE"),
                 result.output.constData());
    }
};

LOCAL_TEST_MAIN(tst_localErrorType)
#include "tst_localErrorType.moc"
