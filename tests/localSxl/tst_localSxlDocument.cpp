#include "localTestSupport.h"

#include "localSxlDocument.h"

#include <QtTest>

using localTest::q;
using localTest::w;

namespace {

const QString head = "{\"type\" : \"SXL\",\n\"cloumns\" : [],\n\"rows\" : [],\n\"cells\" : [";
const QString defaultCell = "{\"rowNumber\" : 0,\"colNumber\" : 0,\"text\" : \"\",\"details\" : \"\","
                            "\"colorBorder\":0,\"colorFon\":16777215,\"colorPattern\":0,\"colorText\":0,"
                            "\"alignmentH\":1,\"alignmentV\":128}\n";

// The places of the cells behind the default one, as "row:column" words.
QString places(const localSxlDocument &document)
{
    QStringList out;
    for (size_t i = 1; i < document.cells.size(); ++i)
        out << QString("%1:%2").arg(document.cells[i].rowNumber).arg(document.cells[i].colNumber);
    return out.join(' ');
}

QString fontState(const localSxlCell &cell)
{
    const localSxlFont::face &f = cell.font->qfont;
    return QString("%1 %2 %3 | %4 %5 b%6 i%7 s%8 u%9").arg(q(cell.font->family)).arg(cell.font->size)
        .arg(cell.font->flags).arg(f.family).arg(f.pointSize).arg(f.weight == 75).arg(f.italic)
        .arg(f.strikeOut).arg(f.underline);
}

} // namespace

class tst_localSxlDocument : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { localTest::globalContext(); }

    // The text is assembled by hand; every byte counts.
    void written_data()
    {
        QTest::addColumn<int>("setup");
        QTest::addColumn<QString>("expected");
        QTest::newRow("new document: one cell") << 0 << head + defaultCell + "]\n}";
        QTest::newRow("text escaped, colours in file order")
            << 1
            << head + defaultCell
                   + ",{\"rowNumber\" : 1,\"colNumber\" : 2,\"text\" : \"a\\\"b\\[c\\]\\n\",\"details\" : \"\","
                     "\"colorBorder\":3,\"colorFon\":2,\"colorPattern\":4,\"colorText\":1,"
                     "\"alignmentH\":1,\"alignmentV\":128}\n]\n}";
        QTest::newRow("font: family unescaped, every flag")
            << 2
            << head + defaultCell
                   + ",{\"rowNumber\" : 2,\"colNumber\" : 1,\"text\" : \"\",\"details\" : \"\","
                     "\"fontFamily\": \"A\"B\",\"fontSize\":12,\"fontBold\":1,\"fontItalic\":1,"
                     "\"fontStrikeout\":1,\"fontUnderline\":1}\n]\n}";
    }
    void written()
    {
        QFETCH(int, setup);
        QFETCH(QString, expected);
        localSxlDocument document;
        if (setup == 1) {
            document.textSet(1, 2, "a\"b[c]\n");
            document.colorSet(1, 2, 1, 2, 3, 4);
        } else if (setup == 2) {
            document.fontSet(2, 1, u"A\"B", 12, 15);
        }
        QCOMPARE(q(document.toJson()), expected);
    }

    void sortedLookup_data()
    {
        QTest::addColumn<QString>("writes");
        QTest::addColumn<QString>("expected");
        QTest::newRow("row order appends") << "1:1 1:2 2:1" << "1:1 1:2 2:1";
        QTest::newRow("reverse order") << "3:2 3:1 1:5" << "1:5 3:1 3:2";
        QTest::newRow("same cell twice") << "2:2 1:1 2:2" << "1:1 2:2";
        QTest::newRow("between two rows") << "1:9 4:1 2:3 2:1" << "1:9 2:1 2:3 4:1";
    }
    void sortedLookup()
    {
        QFETCH(QString, writes);
        QFETCH(QString, expected);
        localSxlDocument document;
        for (const QString &place : writes.split(' ')) {
            const QStringList parts = place.split(':');
            document.textSet(parts[0].toUInt(), parts[1].toUInt(), place);
        }
        QCOMPARE(places(document), expected);
        for (const QString &place : writes.split(' ')) {
            const QStringList parts = place.split(':');
            QCOMPARE(document.cellTextGet(parts[0].toUInt(), parts[1].toUInt()), place);
        }
    }

    // Each step: family (or "-" for keep), size, flags.
    void fontSetting_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QString>("expected");
        QTest::newRow("underline flag kept, not drawn")
            << "Serif 10 8" << "Serif 10 8 | Serif 10 b0 i0 s0 u0";
        QTest::newRow("strikeout also underlines") << "Serif 10 4" << "Serif 10 4 | Serif 10 b0 i0 s1 u1";
        QTest::newRow("later flags replace") << "Serif 10 3;- 0 2" << "Serif 10 2 | Serif 10 b0 i1 s0 u0";
        QTest::newRow("keep everything") << "Mono 14 1;- 0 -1" << "Mono 14 1 | Mono 14 b1 i0 s0 u0";
        QTest::newRow("new family keeps weight and size")
            << "Serif 9 5;Mono 0 -1" << "Mono 9 5 | Mono 9 b1 i0 s1 u1";
    }
    void fontSetting()
    {
        QFETCH(QString, steps);
        QFETCH(QString, expected);
        localSxlDocument document;
        for (const QString &step : steps.split(';')) {
            const QStringList parts = step.split(' ');
            document.fontSet(1, 1, parts[0] == "-" ? u"" : w(parts[0]), parts[1].toInt(), parts[2].toInt());
        }
        QCOMPARE(fontState(*document.cellFind(1, 1)), expected);
    }

    // Written and read back: the old default cell comes along as a second
    // (0, 0); styles and fonts survive, details and widths do not.
    void roundTrip()
    {
        localSxlDocument document;
        document.textSet(3, 2, "x");
        document.colorSet(3, 2, 0x112233, -1, 7, -1);
        document.alignmentSet(3, 2, 4, 32);
        document.fontSet(3, 2, u"Mono", 11, 9);
        document.cells[document.cellIndex(3, 2)].details = u"note";
        document.cells[document.cellIndex(3, 2)].style->width = 300;
        localSxlDocument read;
        QVERIFY(read.fromJson(document.toJson()));
        QCOMPARE(places(read), QString("0:0 3:2"));
        QCOMPARE(q(read.toJson()), head + defaultCell + "," + defaultCell
                                       + ",{\"rowNumber\" : 3,\"colNumber\" : 2,\"text\" : \"x\",\"details\" : \"\","
                                         "\"colorBorder\":7,\"colorFon\":16777215,\"colorPattern\":0,\"colorText\":1122867,"
                                         "\"alignmentH\":4,\"alignmentV\":32,\"fontFamily\": \"Mono\",\"fontSize\":11,"
                                         "\"fontBold\":1,\"fontUnderline\":1}\n]\n}");
        QCOMPARE(fontState(read.cells[2]), QString("Mono 11 9 | Mono 11 b1 i0 s0 u0"));
        QCOMPARE(read.cells[2].style->width, 85);
        QCOMPARE(read.cellTextGet(3, 2), QString("x"));
    }

    // The file's order is kept; "columns", unknown keys and non-objects add nothing but cells.
    void readKeepsFileOrder()
    {
        localSxlDocument document;
        const std::u16string text = u"{\"columns\" : [{\"colNumber\" : 1, \"width\" : 200}],"
                                    u"\"cells\" : [{\"rowNumber\" : 5, \"colNumber\" : 1.6, \"odd\" : 1},"
                                    u"7, {\"rowNumber\" : 2, \"colNumber\" : 1, \"text\" : 12}]}";
        QVERIFY(document.fromJson(text));
        QCOMPARE(places(document), QString("5:2 0:0 2:1"));
        QCOMPARE(document.cells[3].text, QString("12"));
        QVERIFY(document.cells[1].style == nullptr && document.cells[1].font == nullptr);
        QCOMPARE(document.columnWidth(1), 85);
        QVERIFY(document.columns.empty());
    }
};

QTEST_GUILESS_MAIN(tst_localSxlDocument)
#include "tst_localSxlDocument.moc"
