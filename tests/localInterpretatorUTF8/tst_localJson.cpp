#include "localLibraryTestSupport.h"

#include "localJson.h"

#include <QTemporaryDir>
#include <QThread>

#include <cmath>
#include <limits>

using localTest::q;
using localTest::w;

namespace {

// Values and nested lists in a compact form: numbers as they print, strings
// quoted, booleans as true/false, lists as [presentation=value,...].
QString render(const localValueDescription &value)
{
    if (const localValueList *list = localValueList::fromValue(&value)) {
        QStringList parts;
        for (const localValueListItem &item : list->items)
            parts << (item.presentation.empty() ? QString() : q(item.presentation) + "=") + render(item.value);
        return "[" + parts.join(",") + "]";
    }
    switch (value.getType()) {
    case localValueTypeNUM:
        return q(value.toString());
    case localValueTypeSTR:
        return "\"" + q(value.localValueString) + "\"";
    case localValueTypeBOO:
        return value.localValueNumber > 0.0 ? "true" : "false";
    default:
        return "object";
    }
}

// The general reader on `text`: "ok <render> @<position>" or "fail <status>".
QString parse(const QString &text, QString *printed = nullptr)
{
    localTest::coutCapture capture;
    localErrorType status = localErrorTypeOK;
    size_t position = 0;
    localValueDescription *result = nullptr;
    const std::u16string wide = w(text);
    const bool done = localJson::scanStringParseJson(status, wide, position, &result);
    if (printed != nullptr)
        *printed = capture.text();
    if (!done) {
        if (result != nullptr)
            return "result left behind";
        return QString("fail %1").arg(int(status));
    }
    const QString line = QString("ok %1 @%2").arg(render(*result)).arg(position);
    localValueRelease(result);
    return line;
}

// The reader and the restoring step: "<kind word> <render>" or "fail <status>".
QString restore(const std::u16string &text, QString *printed = nullptr)
{
    localTest::coutCapture capture;
    localErrorType status = localErrorTypeOK;
    localValueDescription *result = nullptr;
    const bool done = localJson::valueFromJson(status, localTest::globalContext(), text, &result);
    if (printed != nullptr)
        *printed = capture.text();
    if (!done)
        return result == nullptr ? QString("fail %1").arg(int(status)) : QString("result left behind");
    const QString line = q(localValueTypeWord(result->getType())) + " " + render(*result);
    localValueRelease(result);
    return line;
}

localValueDescription *evaluated(const QString &expression)
{
    localErrorType status = localErrorTypeOK;
    localValueDescription *result = nullptr;
    const bool done = localInterpretatorUTF8::evaluate(status, w(expression), &result, localTest::globalContext());
    if (!done)
        localValueRelease(result);
    return result;
}

// A list with every kind and a nested list, for the round trips.
void fillSample(localValueList &list)
{
    localTest::numberAdd(list, 1, u"one");
    localTest::stringAdd(list, u"строка \"в кавычках\"\n", u"s");
    localTest::numberAdd(list, 2.5, u"");
    localTest::numberAdd(list, 3, u"one");
    localValueDescription innerHolder;
    localValueList *inner = localValueList::newInCell(&innerHolder);
    localTest::stringAdd(*inner, u"x", u"ключ/путь");
    localValueDescription emptyHolder;
    localValueList::newInCell(&emptyHolder);
    inner->valueAdd(&emptyHolder, u"empty");
    list.valueAdd(&innerHolder, u"inner");
}

} // namespace

class tst_localJson : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { localTest::globalContext(); }

    void escape_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("escaped");
        QTest::newRow("every escaped character") << "'\"\\/\t\n\r\f\b[]{}" << "\\'\\\"\\\\\\/\\t\\n\\r\\f\\b\\[\\]\\{\\}";
        QTest::newRow("Cyrillic and the rest as they are") << "Ёжик: 1 < 2 & ü" << "Ёжик: 1 < 2 & ü";
    }
    void escape()
    {
        QFETCH(QString, text);
        QFETCH(QString, escaped);
        QCOMPARE(q(localJson::jsonEscape(w(text))), escaped);
    }

    void typedWriter_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("json");
        QTest::newRow("twenty digits") << "1/10"
                                       << "{\"t\": \"NUM\",\"vP\": \"0.10000000000000000555\",\"v\": "
                                          "\"0.10000000000000000555\"}";
        QTest::newRow("true") << "ИСТИНА" << "{\"t\": \"BOO\",\"vP\": \"ИСТИНА\",\"v\": \"true\"}";
        QTest::newRow("false") << "FALSE" << "{\"t\": \"BOO\",\"vP\": \"ЛОЖЬ\",\"v\": \"false\"}";
        QTest::newRow("string with escapes") << "'say \"hi\" / [x]'"
                                             << "{\"t\": \"STR\",\"vP\": \"say \\\"hi\\\" \\/ \\[x\\]\",\"v\": "
                                                "\"say \\\"hi\\\" \\/ \\[x\\]\"}";
    }
    void typedWriter()
    {
        QFETCH(QString, expression);
        QFETCH(QString, json);
        localValueDescription *value = evaluated(expression);
        QVERIFY(value != nullptr);
        QCOMPARE(q(localJson::valueToJson(*value)), json);
        localValueRelease(value);
    }

    void writerOfOddCells()
    {
        localValueDescription unknown;
        unknown.type = 7;
        QCOMPARE(q(localJson::valueToJson(unknown)),
                 QString("{\"t\": \"UNK\",\"vP\": \" **** Error *** при вызове метода toString() \",\"v\": }"));
        localValueDescription classless;
        classless.type = localValueTypeOBJ;
        QCOMPARE(q(localJson::valueToJson(classless)), QString("{\"t\": \"OBJ\",\"tN\": \"\",\"vP\": \"\",\"v\": \"\"}"));
    }

    void listWriter()
    {
        localValueDescription holder;
        localValueList &list = *localValueList::newInCell(&holder);
        QCOMPARE(q(list.toJson()), QString("[\n]"));
        localTest::numberAdd(list, 1, u"a");
        localTest::stringAdd(list, u"x", u"b/c");
        const QString expected = "[\n{\"p\": \"a\",\"v\": {\"t\": \"NUM\",\"vP\": \"1\",\"v\": \"1\"}}"
                                 "\n,{\"p\": \"b\\/c\",\"v\": {\"t\": \"STR\",\"vP\": \"x\",\"v\": \"x\"}}\n]";
        QCOMPARE(q(localJson::valueListToJson(list)), expected);
        // As a value, the list's "v" is that array: the list round-trip program prints it.
        localTest::globalContext()->variableSet(u"L", &holder);
        QCOMPARE(localTest::run("L.TOJSON()"), "СТРОКА " + expected);
    }

    // A table has no TOJSON: its "v" is its quoted string form.
    void tableWritesItsStringForm()
    {
        localValueDescription holder;
        localValueTable *table = localValueTable::newInCell(&holder);
        table->columnAdd(u"a");
        const QString form = q(localJson::jsonEscape(table->toString()));
        QCOMPARE(q(localJson::valueToJson(holder)),
                 "{\"t\": \"OBJ\",\"tN\": \"VALUETABLE\",\"vP\": \"" + form + "\",\"v\": \"" + form + "\"}");
    }

    void reader_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("array, text behind is left") << "[1,2] tail" << "ok [1,2] @5";
        QTest::newRow("object keys become presentations") << "{\"a\": 1, \"b\": \"x\"}" << "ok [a=1,b=\"x\"] @18";
        QTest::newRow("nesting and words") << "{\"a\": [1, {\"b\": null}], \"c\": true, \"d\": false}"
                                           << "ok [a=[1,[b=0]],c=true,d=false] @46";
        QTest::newRow("empty list as written") << "[\n]" << "ok [] @3";
        QTest::newRow("blanks in empty braces") << "{ \n }" << "ok [] @5";
        QTest::newRow("open bracket at the end") << "[" << "ok [] @1";
        QTest::newRow("escaped quote in a key") << "{\"a\\\"b\": 1}" << "ok [a\"b=1] @11";
        QTest::newRow("negative and fraction") << "[-1.5, 0.25]" << "ok [-1.5,0.25] @12";
        QTest::newRow("known pairs") << "[\"a\\\\b\\/c\\'d\\te\\nf\\rg\\fh\\bi\"]"
                                     << "ok [\"a\\b/c'd\te\nf\rg\fh\bi\"] @29";
        QTest::newRow("unicode pairs") << "[\"\\u0041\\u0436\"]" << "ok [\"Aж\"] @16";
        QTest::newRow("short unicode stays") << "[\"\\u00\"]" << "ok [\"\\u00\"] @8";
        QTest::newRow("bad unicode digits stay") << "[\"\\uZZZZ\"]" << "ok [\"\\uZZZZ\"] @10";
        QTest::newRow("other pairs keep the backslash") << "[\"\\[x\\]\\{\\}\\q\"]"
                                                        << "ok [\"\\[x\\]\\{\\}\\q\"] @15";
        QTest::newRow("nothing") << "" << "fail 34";
        QTest::newRow("a word") << "x" << "fail 34";
        QTest::newRow("missing comma") << "[1 2]" << "fail 34";
        QTest::newRow("missing colon") << "{\"a\" 1}" << "fail 34";
        QTest::newRow("unquoted key") << "{a: 1}" << "fail 34";
        QTest::newRow("unknown word") << "[tru]" << "fail 34";
        QTest::newRow("unterminated string") << "[\"abc" << "fail 34";
        QTest::newRow("wrong closing") << "{\"a\": [1}" << "fail 34";
        QTest::newRow("too many digits") << "[12345678901234567]" << "fail 36";
    }
    void reader()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(parse(text), expected);
    }

    void readerReportsTheRest()
    {
        QString printed;
        QCOMPARE(parse("[1 2]", &printed), QString("fail 34"));
        QVERIFY2(printed.startsWith("Json 2] func: "), qPrintable(printed));
        QCOMPARE(parse("{\"a\": [x]}", &printed), QString("fail 34"));
        // The inner array reports, then the object around it.
        QCOMPARE(printed.count("Json "), 2);
        QVERIFY2(printed.contains("Json x]}"), qPrintable(printed));
    }

    // Twenty significant digits bring every double back, exponents and
    // denormals included.
    void roundTripOfNumbers()
    {
        for (const double number : {1.0 / 3.0, -7.0, 1e300, 5e-324}) {
            localValueDescription value;
            value.setVal(number);
            QCOMPARE(restore(localJson::valueToJson(value)), "ЧИСЛО " + q(value.toString()));
            localErrorType status = localErrorTypeOK;
            localValueDescription *result = nullptr;
            QVERIFY(localJson::valueFromJson(status, nullptr, localJson::valueToJson(value), &result));
            QCOMPARE(result->localValueNumber, number);
            localValueRelease(result);
        }
    }

    void roundTripOfStrings_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("back");
        QTest::newRow("empty") << "" << "";
        QTest::newRow("every pair the reader knows") << "' \" \\ / \t \n \r \f \b" << "' \" \\ / \t \n \r \f \b";
        QTest::newRow("brackets and braces gain a backslash") << "[x]{y}" << "\\[x\\]\\{y\\}";
    }
    void roundTripOfStrings()
    {
        QFETCH(QString, text);
        QFETCH(QString, back);
        localValueDescription value;
        value.setString(w(text));
        QCOMPARE(restore(localJson::valueToJson(value)), "СТРОКА \"" + back + "\"");
    }

    void booleansComeBackAsZero_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("written true") << "{\"t\": \"BOO\",\"vP\": \"ИСТИНА\",\"v\": \"true\"}" << "ЧИСЛО 0";
        QTest::newRow("hand-written true") << "{\"t\": \"BOO\",\"v\": true}" << "ЧИСЛО 1";
        QTest::newRow("no v") << "{\"t\": \"BOO\"}" << "ЧИСЛО 0";
    }
    void booleansComeBackAsZero()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QString printed;
        QCOMPARE(restore(w(text), &printed), expected);
        QVERIFY2(printed.startsWith("Это булево!!! func: "), qPrintable(printed));
    }

    void restoring_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("printed");
        QTest::newRow("number without v") << "{\"t\": \"NUM\"}" << "ЧИСЛО 0" << "";
        QTest::newRow("number text read as atof") << "{\"t\": \"NUM\",\"v\": \" 12abc\"}" << "ЧИСЛО 12" << "";
        QTest::newRow("bare number") << "{\"t\": \"NUM\",\"v\": 7}" << "ЧИСЛО 7" << "";
        QTest::newRow("string without v") << "{\"t\": \"STR\"}" << "СТРОКА \"\"" << "";
        QTest::newRow("string of a number") << "{\"t\": \"STR\",\"v\": 5}" << "СТРОКА \"5\"" << "";
        QTest::newRow("no type") << "{\"v\": \"1\"}" << "fail 35" << "";
        QTest::newRow("unknown type") << "{\"t\": \"XYZ\",\"v\": \"1\"}" << "fail 35" << "typeMnemo=XYZ func: ";
        QTest::newRow("object without class name") << "{\"t\": \"OBJ\",\"v\": []}" << "fail 35" << "";
        QTest::newRow("object of an unknown class") << "{\"t\": \"OBJ\",\"tN\": \"NOCLASS\",\"v\": []}" << "fail 14"
                                                    << "";
        QTest::newRow("object whose v is no list") << "{\"t\": \"OBJ\",\"tN\": \"VALUELIST\",\"v\": \"x\"}"
                                                   << "fail 35" << "";
        QTest::newRow("other classes are not restored") << "{\"t\": \"OBJ\",\"tN\": \"VALUETABLE\",\"v\": []}"
                                                        << "fail 35"
                                                        << "Разбор jsonList для VALUETABLE не реализован! func: ";
        QTest::newRow("item without v") << "{\"t\": \"OBJ\",\"tN\": \"VALUELIST\",\"v\": [{\"p\": \"a\"}]}"
                                        << "fail 35" << "";
        QTest::newRow("item without p") << "{\"t\": \"OBJ\",\"tN\": \"VALUELIST\",\"v\": [{\"v\": {\"t\": \"NUM\"}}]}"
                                        << "fail 35" << "";
        QTest::newRow("hand-written list") << "{\"t\": \"OBJ\",\"tN\": \"списокзначений\",\"v\": [{\"p\": \"a\","
                                              "\"v\": {\"t\": \"NUM\",\"v\": \"2\"}}, {\"p\": 3,\"v\": {\"t\": "
                                              "\"STR\",\"v\": \"x\"}}]}"
                                           << "ОБЪЕКТ [a=2,3=\"x\"]" << "";
        QTest::newRow("not JSON at all") << "t" << "fail 34" << "Json t func: ";
    }
    void restoring()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QFETCH(QString, printed);
        QString output;
        QCOMPARE(restore(w(text), &output), expected);
        if (printed.isEmpty())
            QCOMPARE(output, QString());
        else
            QVERIFY2(output.startsWith(printed), qPrintable(output));
    }

    void roundTripOfLists()
    {
        localValueDescription holder;
        localValueList *list = localValueList::newInCell(&holder);
        fillSample(*list);
        const QString before = render(holder);
        QCOMPARE(before, QString("[one=1,s=\"строка \"в кавычках\"\n\",2.5,one=3,inner=[ключ/путь=\"x\",empty=[]]]"));
        QCOMPARE(restore(localJson::valueToJson(holder)), "ОБЪЕКТ " + before);

        localValueDescription emptyHolder;
        localValueList::newInCell(&emptyHolder);
        QCOMPARE(restore(localJson::valueToJson(emptyHolder)), QString("ОБЪЕКТ []"));
    }

    void listFromFile()
    {
        QTemporaryDir directory;
        QVERIFY(directory.isValid());
        localValueDescription holder;
        localValueList *list = localValueList::newInCell(&holder);
        fillSample(*list);
        const std::u16string name = w(directory.filePath("options.json"));
        QVERIFY(localString::fileWrite(false, localString::possibleCodePageUTF8, localJson::valueToJson(holder), name));
        const int64_t liveBefore = localValueList::counterStaticTotal;
        localTest::coutCapture capture;
        localValueList *read = localJson::valueListFromJsonFile(name);
        QCOMPARE(capture.text(), QString());
        QCOMPARE(localValueList::counterStaticTotal, liveBefore + 3); // the list and the two inside it
        localValueDescription readHolder;
        readHolder.setObject(read, localValueList::classDeclaration());
        QCOMPARE(render(readHolder), render(holder));
    }

    void listFromFileNeverFails_data()
    {
        QTest::addColumn<QString>("content");
        QTest::addColumn<int>("status");
        QTest::newRow("missing file") << QString() << 23;
        QTest::newRow("not JSON") << "hello" << 34;
        QTest::newRow("not a typed record") << "[1, 2]" << 35;
        QTest::newRow("a typed number") << "{\"t\": \"NUM\",\"vP\": \"1\",\"v\": \"1\"}" << 35;
    }
    void listFromFileNeverFails()
    {
        QFETCH(QString, content);
        QFETCH(int, status);
        QTemporaryDir directory;
        const std::u16string name = w(directory.filePath("broken.json"));
        if (!content.isNull())
            QVERIFY(localString::fileWrite(false, localString::possibleCodePageUTF8, w(content), name));
        const int64_t liveBefore = localValueList::counterStaticTotal;
        localTest::coutCapture capture;
        localValueList *read = localJson::valueListFromJsonFile(name);
        QVERIFY(read != nullptr);
        QCOMPARE(read->size(), size_t(0));
        delete read;
        QCOMPARE(localValueList::counterStaticTotal, liveBefore);
        QVERIFY2(capture.text().contains(q(localErrorText(status)) + " func: "), qPrintable(capture.text()));
    }

    void tableReader()
    {
        localValueDescription holder;
        localValueTable *table = localValueTable::newInCell(&holder);
        localErrorType status = localErrorTypeOK;
        const std::u16string text = u"  {\"a\": \"1\",\n \"b\": {\"c\": \"2\"}} rest";
        size_t position = 0;
        QVERIFY(localJson::scanStringGetValueTableFromJson(status, text, position, &holder));
        QCOMPARE(int(status), 54);
        QCOMPARE(position, text.size() - 5);
        QCOMPARE(table->columns, std::vector<std::u16string>({u"KEY", u"VALUE"}));
        QCOMPARE(table->rowsCount(), size_t(2));
        QCOMPARE(q(table->cell(1, 1)->toString()), QString("a"));
        QCOMPARE(q(table->cell(1, 2)->toString()), QString("1"));
        const localValueTable *inner = localValueTable::fromValue(table->cell(2, 2));
        QVERIFY(inner != nullptr);
        QCOMPARE(q(inner->cell(1, 1)->toString()), QString("c"));
        QCOMPARE(q(inner->cell(1, 2)->toString()), QString("2"));

        // Anything but a table in the result is skipped.
        localValueDescription number;
        position = 0;
        QVERIFY(!localJson::scanStringGetValueTableFromJson(status, text, position, &number));
        QCOMPARE(int(status), 54);
        QCOMPARE(position, size_t(0));
    }

    void tableReaderReportsLineAndPosition_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("report");
        QTest::addColumn<QString>("rest");
        QTest::newRow("number value") << "{\n  \"a\": 1}" << "синтаксическая ошибка в строке 2 позиция 8" << "1}";
        QTest::newRow("unquoted key") << "{\"a\": \"1\", b}" << "синтаксическая ошибка в строке 1 позиция 12" << "b}";
        QTest::newRow("no colon") << "{\"a\" \"1\"}" << "синтаксическая ошибка в строке 1 позиция 6" << "\"1\"}";
        QTest::newRow("no closing brace") << "{\"a\": \"1\"\n\n]" << "синтаксическая ошибка в строке 3 позиция 1"
                                          << "]";
        QTest::newRow("no opening brace") << "x" << "синтаксическая ошибка в строке 1 позиция 1" << "x";
    }
    void tableReaderReportsLineAndPosition()
    {
        QFETCH(QString, text);
        QFETCH(QString, report);
        QFETCH(QString, rest);
        localValueDescription holder;
        localValueTable::newInCell(&holder);
        localErrorType status = localErrorTypeOK;
        size_t position = 0;
        localTest::coutCapture capture;
        QVERIFY(!localJson::scanStringGetValueTableFromJson(status, w(text), position, &holder));
        QCOMPARE(int(status), 34);
        const QStringList lines = capture.text().split('\n');
        QVERIFY2(lines.size() >= 2 && lines[0].startsWith(report + " func: "), qPrintable(capture.text()));
        QCOMPARE(lines[1], rest);
    }

    // The readers and the writer take ten thousand levels and refuse more
    // with a status and a line, giving every cell back; far deeper text once
    // ran the table reader out of stack. The work runs on a stack as large
    // as korvel-cli gives the interpreter, so that the limit, not the
    // stack, is what it meets.
    void nestingLimit_data()
    {
        QTest::addColumn<QString>("work");
        QTest::addColumn<int>("depth");
        QTest::addColumn<int>("status");
        QTest::newRow("list reader at the limit") << "list" << 10000 << 54;
        QTest::newRow("list reader past the limit") << "list" << 10001 << 34;
        QTest::newRow("table reader at the limit") << "table" << 10000 << 54;
        QTest::newRow("table reader far past the limit") << "table" << 200000 << 34;
        QTest::newRow("writer at the limit") << "writer" << 10000 << 54;
        QTest::newRow("writer past the limit") << "writer" << 10001 << 32;
    }
    void nestingLimit()
    {
        QFETCH(QString, work);
        QFETCH(int, depth);
        QFETCH(int, status);
        const size_t cellsBefore = localMemoryManager::instance().getUsedCount();
        localTest::coutCapture capture;
        localErrorType answer = localErrorTypeOK;
        bool done = false;
        QThread *thread = QThread::create([&] {
            size_t position = 0;
            if (work == "table") {
                const std::u16string text = w(QString("{\"a\": ").repeated(depth) + "\"x\"" + QString("}").repeated(depth));
                localValueDescription holder;
                localValueTable::newInCell(&holder);
                done = localJson::scanStringGetValueTableFromJson(answer, text, position, &holder);
            } else if (work == "list") {
                const std::u16string text = w(QString("[").repeated(depth) + QString("]").repeated(depth));
                localValueDescription *result = nullptr;
                done = localJson::scanStringParseJson(answer, text, position, &result);
                localValueRelease(result);
            } else {
                localValueDescription *chain = localValueNew();
                localValueList::newInCell(chain);
                for (int level = 1; level < depth; ++level) {
                    localValueDescription *outer = localValueNew();
                    localValueList::newInCell(outer)->valueAdd(chain, u"");
                    localValueRelease(chain);
                    chain = outer;
                }
                std::u16string text;
                done = localJson::valueToJsonAppend(answer, text, *chain);
                localValueRelease(chain);
            }
        });
        thread->setStackSize(64u * 1024 * 1024);
        thread->start();
        thread->wait();
        delete thread;
        QCOMPARE(done, status == 54);
        QCOMPARE(int(answer), status);
        QCOMPARE(capture.text().contains("JSON nested deeper than 10000 levels"), status != 54);
        QCOMPARE(localMemoryManager::instance().getUsedCount(), cellsBefore);
    }

    void numberFromText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("number");
        QTest::newRow("trimmed, minus") << " \t-12.5\n" << -12.5;
        QTest::newRow("plus sign") << "+3" << 3.0;
        QTest::newRow("two signs") << "+-1" << 0.0;
        QTest::newRow("trailing letters") << "12abc" << 12.0;
        QTest::newRow("letters") << "abc" << 0.0;
        QTest::newRow("Cyrillic after digits") << "7ж" << 7.0;
        QTest::newRow("overflow") << "1e999" << std::numeric_limits<double>::infinity();
        QTest::newRow("underflow") << "1e-999" << 0.0;
    }
    void numberFromText()
    {
        QFETCH(QString, text);
        QFETCH(double, number);
        QCOMPARE(localJson::numberFromText(w(text)), number);
    }
};

LOCAL_TEST_MAIN(tst_localJson)
#include "tst_localJson.moc"
