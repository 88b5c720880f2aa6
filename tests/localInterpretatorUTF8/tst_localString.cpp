#include "localServices.h"
#include "localStd.h"
#include "localTestSupport.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <initializer_list>

using localTest::boxRecorder;
using localTest::fileBytes;
using localTest::q;
using localTest::w;
using namespace localString;

namespace {

QString chars(std::initializer_list<ushort> codes)
{
    QString text;
    for (ushort code : codes)
        text += QChar(code);
    return text;
}

std::u16string decodeBy(int page, const QByteArray &bytes)
{
    const std::string narrow = bytes.toStdString();
    return page == possibleCodePageCP1251 ? wideFromCp1251(narrow)
        : page == possibleCodePageCP866   ? wideFromCp866(narrow)
                                          : wideFromUtf8(narrow);
}

QByteArray encodeBy(int page, const QString &text)
{
    const std::u16string wide = w(text);
    return QByteArray::fromStdString(page == possibleCodePageCP1251 ? cp1251FromWide(wide)
            : page == possibleCodePageCP866                         ? cp866FromWide(wide)
                                                                    : utf8FromWide(wide));
}


const int cp1251 = possibleCodePageCP1251;
const int cp866 = possibleCodePageCP866;
const int utf8 = possibleCodePageUTF8;

} // namespace

class tst_localString : public QObject {
    Q_OBJECT

    QTemporaryDir scratch;
    QString startDirectory;
    QString programDirectory;

    QString scratchFile(const QString &name) const { return scratch.path() + "/" + name; }

private slots:
    void initTestCase()
    {
        QVERIFY(scratch.isValid());
        startDirectory = QDir::currentPath();
        programDirectory = scratchFile("программа");
        QVERIFY(QDir().mkpath(programDirectory));
        localStd::argv0Set((programDirectory + "/korvel").toUtf8().constData());
    }
    void cleanup()
    {
        QDir::setCurrent(startDirectory);
        localServices::install(nullptr);
    }

    void codePageWord_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<int>("page");
        QTest::newRow("lower case 866") << "cp866" << cp866;
        QTest::newRow("blanks around 1251") << " \tCp1251\n" << cp1251;
        QTest::newRow("prefix is enough") << "cp1251-ru" << cp1251;
        QTest::newRow("unknown word") << "koi8" << utf8;
        QTest::newRow("short of 866") << "cp86" << utf8;
        QTest::newRow("not at the start") << "xcp866" << utf8;
    }
    void codePageWord()
    {
        QFETCH(QString, word);
        QFETCH(int, page);
        QCOMPARE(int(codePageFromWord(w(word))), page);
    }

    // Each row of the tables, in the directions it names: "both", "read" or "write".
    void conversion_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("direction");
        QTest::newRow("1251 ascii") << cp1251 << QByteArray("Az09 ~\x7F") << "Az09 ~\x7F" << "both";
        QTest::newRow("1251 Yo, A-ya") << cp1251 << QByteArray("\xA8\xB8\xC0\xFF") << chars({0x401, 0x451, 0x410, 0x44F})
                                      << "both";
        QTest::newRow("1251 80 B9 shifted") << cp1251 << QByteArray("\x80\xB9") << chars({0x3D0, 0x409}) << "read";
        QTest::newRow("1251 latin-1 as is") << cp1251 << QByteArray("\xE9\xFF") << chars({0xE9, 0xFF}) << "write";
        QTest::newRow("1251 unmapped") << cp1251 << QByteArray("\xFF\xFF\xFF\xFF")
                                       << chars({0x400, 0x450, 0x456, 0x20AC}) << "write";
        QTest::newRow("866 Yo, A-p, r-ya") << cp866 << QByteArray("\xF0\xF1\x80\xAF\xE0\xEF")
                                           << chars({0x401, 0x451, 0x410, 0x43F, 0x440, 0x44F}) << "both";
        QTest::newRow("866 others unchanged")
            << cp866 << QByteArray("a\xB0\xDF\xF2\xFF") << chars({'a', 0xB0, 0xDF, 0xF2, 0xFF}) << "both";
        QTest::newRow("866 unmapped") << cp866 << QByteArray("\xFF\xFF") << chars({0x456, 0x20AC}) << "write";
        QTest::newRow("utf8 ascii and e acute") << utf8 << QByteArray("Az\xE9") << chars({'A', 'z', 0xE9}) << "both";
        QTest::newRow("utf8 Yo, A-p, r-ya") << utf8 << QByteArray("\xD0\x81\xD1\x91\xD0\x90\xD0\xBF\xD1\x80\xD1\x8F")
                                            << chars({0x401, 0x451, 0x410, 0x43F, 0x440, 0x44F}) << "both";
        QTest::newRow("utf8 second byte is signed")
            << utf8 << QByteArray("\xD0\xC0\xD1\x41") << chars({0x440, 0x501}) << "read";
        QTest::newRow("utf8 other pairs") << utf8 << QByteArray("\xC3\xA9") << chars({0xC3, 0xA9}) << "read";
        QTest::newRow("utf8 NUL stops") << utf8 << QByteArray("ab\0cd", 5) << "ab" << "read";
        QTest::newRow("utf8 lead at the end") << utf8 << QByteArray("a\xD1") << chars({'a', 0xD1}) << "read";
        QTest::newRow("utf8 lead before NUL") << utf8 << QByteArray("\xD0\0x", 3) << chars({0xD0}) << "read";
        QTest::newRow("utf8 unmapped") << utf8 << QByteArray("\xFF\xFF\xFF") << chars({0x40F, 0x456, 0x20AC})
                                       << "write";
    }
    void conversion()
    {
        QFETCH(int, page);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QFETCH(QString, direction);
        if (direction != "write")
            QCOMPARE(q(decodeBy(page, bytes)), text);
        if (direction != "read")
            QCOMPARE(encodeBy(page, text), bytes);
    }

    void fileRoundTrip_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("readPage");
        QTest::newRow("utf8, e acute as one byte") << utf8 << "Ёлка " + chars({0xE9})
                                                   << QByteArray("\xD0\x81\xD0\xBB\xD0\xBA\xD0\xB0 \xE9") << utf8;
        QTest::newRow("1251") << cp1251 << "Ёлка ёж" << QByteArray("\xA8\xEB\xEA\xE0\x20\xB8\xE6") << cp1251;
        QTest::newRow("866") << cp866 << "Ёлка ёж" << QByteArray("\xF0\xAB\xAA\xA0\x20\xF1\xA6") << cp866;
        QTest::newRow("none writes utf8") << int(possibleCodePageNONE) << "Ёж" << QByteArray("\xD0\x81\xD0\xB6") << utf8;
        QTest::newRow("base64") << int(possibleCodePageBASE64) << "AAEKDf8=" << QByteArray("\0\1\n\r\xFF", 5)
                                << int(possibleCodePageBASE64);
    }
    void fileRoundTrip()
    {
        QFETCH(int, page);
        QFETCH(QString, text);
        QFETCH(QByteArray, bytes);
        QFETCH(int, readPage);
        const QString name = scratchFile("круг.txt");
        QVERIFY(fileWrite(false, possibleCodePage(page), w(text), w(name)));
        QCOMPARE(fileBytes(name), bytes);
        localErrorType status = localErrorTypeOK;
        std::u16string read;
        QVERIFY(fileRead(status, w(name), read, possibleCodePage(readPage)));
        QCOMPARE(q(read), text);
    }

    // Every row starts from the text "<": reading appends.
    void fileReadLines_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero-length") << utf8 << QByteArray() << "<";
        QTest::newRow("empty lines kept") << utf8 << QByteArray("a\n\n\nb") << "<a\n\n\nb";
        QTest::newRow("final line feed dropped") << utf8 << QByteArray("a\nb\n") << "<a\nb";
        QTest::newRow("only a line feed") << utf8 << QByteArray("\n") << "<";
        QTest::newRow("NUL ends only its line") << utf8 << QByteArray("ab\0c\nd", 6) << "<ab\nd";
        QTest::newRow("pair cut by line feed") << utf8 << QByteArray("\xD0\n\x90") << "<" + chars({0xD0, '\n', 0x90});
        QTest::newRow("1251 keeps NUL") << cp1251 << QByteArray("a\0b", 3) << "<" + chars({'a', 0, 'b'});
        QTest::newRow("base64 binary bytes") << int(possibleCodePageBASE64) << QByteArray("\0\n\r\xFF", 4) << "<AAoN/w==";
    }
    void fileReadLines()
    {
        QFETCH(int, page);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        const QString name = scratchFile("строки.txt");
        QVERIFY(localTest::fileWrite(name, bytes));
        localErrorType status = localErrorTypeOK;
        std::u16string read = u"<";
        QVERIFY(fileRead(status, w(name), read, possibleCodePage(page)));
        QCOMPARE(q(read), text);
    }

    void fileReadTakesCodePageWord()
    {
        const QString name = scratchFile("слово.txt");
        QVERIFY(localTest::fileWrite(name, "\xF0\xA8"));
        localErrorType status = localErrorTypeOK;
        std::u16string read;
        QVERIFY(fileRead(status, w(name), read, u" cp866 "));
        QCOMPARE(q(read), chars({0x401, 0x438}));
    }

    void fileReadMissing()
    {
        for (int page : {int(possibleCodePageBASE64), utf8}) {
            localErrorType status = localErrorTypeOK;
            std::u16string read = u"kept";
            QVERIFY(!fileRead(status, w(scratchFile("нет.txt")), read, possibleCodePage(page)));
            QCOMPARE(int(status), int(localErrorTypeFILEnotFound));
            QCOMPARE(q(read), QString("kept"));
        }
    }

    void fileWriteModes()
    {
        const QString name = scratchFile("режим.txt");
        QVERIFY(fileWrite(false, possibleCodePageUTF8, u"аб", w(name)));
        QVERIFY(fileWrite(true, possibleCodePageCP1251, u"в", w(name)));
        QCOMPARE(fileBytes(name), QByteArray("\xD0\xB0\xD0\xB1\xE2"));
        QVERIFY(fileWrite(false, possibleCodePageCP866, u"г", w(name)));
        QCOMPARE(fileBytes(name), QByteArray("\xA3"));
        // A page it does not know still truncates, and writes nothing.
        QVERIFY(fileWrite(false, possibleCodePage(5), u"abc", w(name)));
        QCOMPARE(fileBytes(name), QByteArray());
    }

    void fileWriteFailures()
    {
        boxRecorder *recorder = boxRecorder::install();
        QVERIFY(!fileWrite(false, possibleCodePageUTF8, u"x", u""));
        QCOMPARE(recorder->boxes.size(), size_t(0));

        const QString name = scratchFile("нет/файл.txt");
        QVERIFY(!fileWrite(false, possibleCodePageUTF8, u"x", w(name)));
        QCOMPARE(recorder->boxes.size(), size_t(1));
        QCOMPARE(recorder->boxes[0].kind, localServices::boxCritical);
        QCOMPARE(q(recorder->boxes[0].title), QString("save"));
        const QString text = q(recorder->boxes[0].text);
        QVERIFY2(text.startsWith("Ошибка записи файла [" + name + "] func: fileWrite file: "), qPrintable(text));
        QVERIFY2(text.contains(QRegularExpression("localString\\.cpp line: \\d+\\z")), qPrintable(text));
    }

    void fileSystemTests()
    {
        const QString directory = scratchFile("папка с файлом");
        QVERIFY(QDir().mkpath(directory));
        const QString name = directory + "/файл.txt";
        QVERIFY(!fileExist(w(name)));
        QVERIFY(fileWrite(false, possibleCodePageUTF8, u"x", w(name)));
        QVERIFY(QFile::exists(name)); // the name reached the file system as UTF-8
        QVERIFY(fileExist(w(name)));
        QVERIFY(pathExist(w(directory)));
        QVERIFY(pathExist(w(name)));
        QVERIFY(!pathExist(w(directory + "/нет")));
        QVERIFY(fileDelete(w(name)));
        QVERIFY(!QFile::exists(name));
        QVERIFY(!fileDelete(w(name)));
    }

    void workingDirectory()
    {
        const QString directory = scratchFile("рабочая");
        QVERIFY(QDir().mkpath(directory));
        const QString canonical = QDir(directory).canonicalPath();
        QVERIFY(cwdSet(w(directory)));
        QCOMPARE(q(cwdGet()), canonical);
        QVERIFY(!cwdSet(w(directory + "/нет")));
        QCOMPARE(q(cwdGet()), canonical);
    }

    void pathSearch_data()
    {
        QTest::addColumn<bool>("inWorking");
        QTest::addColumn<bool>("inProgram");
        QTest::addColumn<QString>("found");
        QTest::newRow("working directory") << true << false << "working";
        QTest::newRow("working directory first") << true << true << "working";
        QTest::newRow("program directory") << false << true << "program";
        QTest::newRow("nowhere") << false << false << "";
    }
    void pathSearch()
    {
        QFETCH(bool, inWorking);
        QFETCH(bool, inProgram);
        QFETCH(QString, found);
        const QString working = scratchFile("поиск");
        QVERIFY(QDir().mkpath(working));
        const QString fileName = "история.log";
        for (const QString &directory : {working, programDirectory})
            QFile::remove(directory + "/" + fileName);
        if (inWorking)
            QVERIFY(localTest::fileWrite(working + "/" + fileName, "x"));
        if (inProgram)
            QVERIFY(localTest::fileWrite(programDirectory + "/" + fileName, "x"));
        QVERIFY(QDir::setCurrent(working));
        const QString expected = found == "working" ? QDir(working).canonicalPath()
            : found == "program"                    ? programDirectory
                                                    : QString();
        QCOMPARE(q(localString::pathSearch(w(fileName))), expected);
    }

    void toUpper_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("upper");
        QTest::newRow("latin") << "abc xyz" << "ABC XYZ";
        QTest::newRow("cyrillic") << "абв эюя" << "АБВ ЭЮЯ";
        QTest::newRow("yo") << "ёЁ" << "ЁЁ";
        QTest::newRow("neighbours of a-z") << "`{@[" << "`{@[";
        QTest::newRow("other letters stay") << chars({0xE9, 0x456, 0x450, 0x42F}) << chars({0xE9, 0x456, 0x450, 0x42F});
    }
    void toUpper()
    {
        QFETCH(QString, text);
        QFETCH(QString, upper);
        QCOMPARE(q(localString::toUpper(w(text))), upper);
    }

    void trims_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("left");
        QTest::addColumn<QString>("right");
        QTest::addColumn<QString>("both");
        QTest::newRow("tab line feed blank") << " \t\nab c\n\t " << "ab c\n\t " << " \t\nab c" << "ab c";
        const QString others = chars({'\r', 0xA0, 'a', 0xA0, '\r'});
        QTest::newRow("carriage return and no-break space stay") << others << others << others << others;
        QTest::newRow("only blanks") << " \t\n " << "" << "" << "";
    }
    void trims()
    {
        QFETCH(QString, text);
        QFETCH(QString, left);
        QFETCH(QString, right);
        QFETCH(QString, both);
        QCOMPARE(q(trimLeft(w(text))), left);
        QCOMPARE(q(trimRight(w(text))), right);
        QCOMPARE(q(trim(w(text))), both);
    }

    void formatNumber_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("text");
        const QString error = "#FORMAT ERROR";
        QTest::newRow("empty format") << 1.5 << "" << "1.5";
        QTest::newRow("blanks in front") << 1234.5 << "N10.2" << "   1234.50";
        QTest::newRow("zero padding") << 1.0 << "N(0)3" << "001";
        QTest::newRow("exact width") << 123.0 << "N3" << "123";
        QTest::newRow("half away at decimals") << 0.125 << "N4.2" << "0.13";
        QTest::newRow("negative half") << -2.5 << "N2" << "-3";
        QTest::newRow("negative to zero") << -0.004 << "N5.2" << " 0.00";
        QTest::newRow("sign behind blanks") << -5.0 << "N4" << "  -5";
        QTest::newRow("sign in front of zeros") << -5.0 << "N(0)4" << "-005";
        QTest::newRow("separators") << 1234567.891 << "N12.2,." << "1.234.567,89";
        QTest::newRow("cyrillic letter, no decimals") << 1234567.0 << "Ч12.0.," << "   1,234,567";
        QTest::newRow("blank keeps default point") << 1234.5 << "N10.2 ," << "  1,234.50";
        QTest::newRow("group at thousand") << 1000.0 << "N5.0 ," << "1,000";
        QTest::newRow("zeros left of groups") << 1234567.5 << "N(0)12.1,." << "01.234.567,5";
        QTest::newRow("decimal separator only") << 1.5 << "N5.2," << " 1,50";
        QTest::newRow("21 digits grouped") << 1e20 << "N30.0 ," << "   100,000,000,000,000,000,000";
        QTest::newRow("error lower case n") << 1.0 << "n5" << error;
        QTest::newRow("error too wide") << 123456.0 << "N3" << error;
        QTest::newRow("error sign too wide") << -123.0 << "N3" << error;
        QTest::newRow("error rounding carries") << 9.996 << "N4.2" << error;
        QTest::newRow("error decimals too wide") << 1.0 << "N3.2" << error;
        QTest::newRow("error bracket 1") << 1.0 << "N(1)3" << error;
        QTest::newRow("error bracket open") << 1.0 << "N(0" << error;
        QTest::newRow("error ends at letter") << 1.0 << "N" << error;
        QTest::newRow("error text after separators") << 1.0 << "N10.2,.x" << error;
        QTest::newRow("widest field") << 1.0 << "N(0)100000" << QString(99999, '0') + "1";
        QTest::newRow("error field wider than the limit") << 1.0 << "N100001" << error;
        QTest::newRow("error decimal count past any number") << 1.0 << "N3.99999999999999999999999" << error;
    }
    void formatNumber()
    {
        QFETCH(double, value);
        QFETCH(QString, format);
        QFETCH(QString, text);
        QCOMPARE(q(localString::formatNumber(value, w(format))), text);
    }
};

LOCAL_TEST_MAIN(tst_localString)
#include "tst_localString.moc"
