#include "localTestSupport.h"
#include "localWidgetTestSupport.h"

#include "localSxl.h"
#include "localSxlWidget.h"
#include "localVclDialogs.h"

#include <QBuffer>
#include <QCheckBox>
#include <QComboBox>
#include <QInputDialog>
#include <QTemporaryDir>
#include <QtTest>

using localTest::q;

namespace {

// The calls the event functions received: name and arguments.
QStringList calls;

template <const char *name>
bool recordCall(localErrorType &, localContextUTF8 *, void **, const std::u16string &, localValueVector *arguments,
                localValueDescription **result)
{
    const localValueVector &a = *arguments;
    calls << QString("%1 %2 %3 %4")
                 .arg(name)
                 .arg(int(localSxl::fromValue(a[0]) != nullptr))
                 .arg(a[1]->localValueNumber)
                 .arg(a[2]->localValueNumber);
    *result = localValueNew();
    return true;
}
constexpr char russianName[] = "ru";
constexpr char englishName[] = "en";

// A window of 400 x 200 pixels: eight whole rows of 21 and four whole
// columns of 86 fit beside the headers.
struct shownDocument {
    localSxl *sxl;
    localSxlWidget widget;
    explicit shownDocument(localContextUTF8 *context = nullptr)
        : sxl(new localSxl(context)), widget(*sxl)
    {
        widget.resize(400, 200);
    }
    QString state() const
    {
        return QString("%1 %2 %3 %4").arg(sxl->firstRow).arg(sxl->firstColumn).arg(sxl->cursorRow).arg(sxl->cursorColumn);
    }
};

QByteArray redSquare()
{
    QImage image(4, 4, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

// Builds a document from "text ROW COLUMN TEXT", "font ROW COLUMN FAMILY
// SIZE FLAGS", "picture ROW COLUMN" and "cursor ROW COLUMN" steps separated by ";" and paints it;
// answers the pixels of the cell (1, 2). The cursor is elsewhere unless moved.
QImage cellPainted(const QString &steps)
{
    shownDocument shown;
    shown.sxl->cursorRow = shown.sxl->cursorColumn = 3;
    for (const QString &step : steps.split(';', Qt::SkipEmptyParts)) {
        const QStringList p = step.trimmed().split(' ');
        if (p[0] == "text")
            shown.sxl->document.textSet(p[1].toUInt(), p[2].toUInt(), p[3]);
        else if (p[0] == "picture")
            shown.sxl->document.pictureSet(p[1].toUInt(), p[2].toUInt(), redSquare());
        else if (p[0] == "cursor")
            std::tie(shown.sxl->cursorRow, shown.sxl->cursorColumn) = std::make_tuple(p[1].toUInt(), p[2].toUInt());
        else
            shown.sxl->document.fontSet(p[1].toUInt(), p[2].toUInt(), localTest::w(p[3]), p[4].toInt(), p[5].toInt());
    }
    return shown.widget.grab().toImage().copy(QRect(118, 21, 86, 21));
}

void press(QWidget &widget, const QString &keys)
{
    for (const QString &key : keys.split(' ', Qt::SkipEmptyParts)) {
        const QKeySequence sequence(key);
        QTest::keyClick(&widget, Qt::Key(sequence[0] & ~Qt::KeyboardModifierMask),
                        Qt::KeyboardModifiers(sequence[0] & Qt::KeyboardModifierMask));
    }
}

} // namespace

class tst_localSxlWidget : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        localSxlInstall();
        localTest::globalContext();
    }

    // State after the keys: first row, first column, cursor row, cursor column.
    void keys_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("expected");
        QTest::newRow("down within the window") << "Down Down Down" << "1 1 4 1";
        QTest::newRow("down past the last whole row")
            << "Down Down Down Down Down Down Down Down" << "2 1 8 1";
        QTest::newRow("up at the top stays") << "Up Left" << "1 1 1 1";
        QTest::newRow("page down to the last row") << "PgDown" << "1 1 8 1";
        QTest::newRow("page down again scrolls") << "PgDown PgDown" << "8 1 8 1";
        QTest::newRow("page up: cursor first, then rows") << "PgDown PgDown PgUp" << "8 1 1 1";
        QTest::newRow("page up back to the top") << "PgDown PgDown PgUp PgUp" << "1 1 1 1";
        QTest::newRow("up scrolls at the top row") << "PgDown PgDown PgUp Up" << "7 1 1 1";
        QTest::newRow("right past the last whole column") << "Right Right Right Right" << "1 2 1 4";
        QTest::newRow("left scrolls back") << "Right Right Right Right Left Left Left Left" << "1 1 1 1";
        QTest::newRow("ctrl+end shows the last cell") << "Ctrl+End" << "23 6 8 4";
        QTest::newRow("ctrl+home") << "Ctrl+End Ctrl+Home" << "1 1 1 1";
    }
    void keys()
    {
        QFETCH(QString, keys);
        QFETCH(QString, expected);
        shownDocument shown;
        shown.sxl->document.textSet(2, 3, "a");
        shown.sxl->document.textSet(30, 9, "last");
        press(shown.widget, keys);
        QCOMPARE(shown.state(), expected);
    }

    void painting_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::addColumn<bool>("same");
        QTest::newRow("underline flag is not drawn")
            << "text 1 2 Word; font 1 2 Serif 10 8" << "text 1 2 Word; font 1 2 Serif 10 0" << true;
        QTest::newRow("strikeout is drawn")
            << "text 1 2 Word; font 1 2 Serif 10 4" << "text 1 2 Word; font 1 2 Serif 10 0" << false;
        QTest::newRow("a bold neighbour leaves the cell alone")
            << "text 1 1 x; font 1 1 Serif 10 1; text 1 2 Word" << "text 1 2 Word" << true;
        QTest::newRow("text is drawn") << "text 1 2 Word" << "" << false;
        QTest::newRow("a picture is drawn") << "picture 1 2" << "" << false;
        QTest::newRow("the cursor cell is complemented") << "cursor 1 2" << "" << false;
    }
    void painting()
    {
        QFETCH(QString, first);
        QFETCH(QString, second);
        QFETCH(bool, same);
        QCOMPARE(cellPainted(first) == cellPainted(second), same);
    }

    // SHOW from a program: the window's title, and the object kept alive by
    // the window after the program dropped it.
    void showFromAProgram()
    {
        struct screen : localServices {
            bool graphical() const override { return true; }
        };
        localServices::install(new screen);
        localSxlVclInstall();
        const int64_t live = localSxl::counterStaticTotal;
        {
            localContextUTF8 program(localContextUTF8::globalContext);
            const QString line = "CREATEOBJECT(\"TABLEDOCUMENT\").ПОКАЗАТЬ(\"Счёт\", \"118\")";
            QCOMPARE(localTest::evaluate(line, &program).text, QString("ИСТИНА"));
        }
        QCOMPARE(localSxl::counterStaticTotal, live + 1);
        QWidget *window = nullptr;
        for (QWidget *top : QApplication::topLevelWidgets())
            if (top->findChild<localSxlWidget *>() != nullptr)
                window = top;
        QVERIFY(window != nullptr);
        QCOMPARE(window->windowTitle(), QString("Счёт [118]"));
        window->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(localSxl::counterStaticTotal, live);
        localServices::install(nullptr);
    }

    // A wide column at the cursor moves the window on until it fits.
    void rightOntoAWideColumn()
    {
        shownDocument shown;
        shown.sxl->document.columnWidthSet(5, 300);
        press(shown.widget, "Right Right Right Right");
        QCOMPARE(shown.state(), QString("1 5 1 1"));
    }

    // Which function Return calls: the Russian name from the context or above
    // it, the English one only from the context itself.
    void cellActivate_data()
    {
        QTest::addColumn<QString>("russian");
        QTest::addColumn<QString>("english");
        QTest::addColumn<QString>("expected");
        QTest::newRow("russian in the context") << "self" << "self" << "ru 1 3 2";
        QTest::newRow("russian above") << "parent" << "self" << "ru 1 3 2";
        QTest::newRow("english in the context") << "" << "self" << "en 1 3 2";
        QTest::newRow("english above does not count") << "" << "parent" << "";
        QTest::newRow("none: nothing happens") << "" << "" << "";
    }
    void cellActivate()
    {
        QFETCH(QString, russian);
        QFETCH(QString, english);
        QFETCH(QString, expected);
        localContextUTF8 parent(localContextUTF8::globalContext);
        localContextUTF8 context(&parent);
        for (const auto &[where, name, function] :
             {std::make_tuple(russian, u"СОБЫТИЕЯЧЕЙКААКТИВИРОВАТЬ", &recordCall<russianName>),
              std::make_tuple(english, u"EVENTCELLACTIVATE", &recordCall<englishName>)})
            if (!where.isEmpty())
                (where == "self" ? context : parent).functionRegister(name, function);
        calls.clear();
        shownDocument shown(&context);
        localTest::coutCapture output;
        press(shown.widget, "Down Down Right Return");
        QCOMPARE(calls.join('|'), expected);
        QCOMPARE(output.text(), QString());
    }

    void find_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("caseSensitive");
        QTest::addColumn<QString>("state");
        QTest::addColumn<QString>("box");
        QTest::newRow("found, trailing blanks cut") << "итог  " << false << "37 9 5 3" << "";
        QTest::newRow("case counts when checked") << "итог" << true << "1 1 1 1" << "Не нашел \"итог\"";
        QTest::newRow("not found") << "нет" << false << "1 1 1 1" << "Не нашел \"нет\"";
    }
    void find()
    {
        QFETCH(QString, typed);
        QFETCH(bool, caseSensitive);
        QFETCH(QString, state);
        QFETCH(QString, box);
        shownDocument shown;
        shown.sxl->document.textSet(41, 11, "Итого");
        localTest::boxRecorder *recorder = localTest::boxRecorder::install();
        localTest::modalAnswer answer([&](QWidget *widget) {
            localDialogFindString *dialog = qobject_cast<localDialogFindString *>(widget);
            dialog->combo->setEditText(typed);
            dialog->caseCheck->setChecked(caseSensitive);
            dialog->accept();
        });
        press(shown.widget, "Ctrl+F");
        QCOMPARE(answer.answered, 1);
        QCOMPARE(shown.state(), state);
        QStringList texts;
        for (const localTest::boxRecorder::box &shownBox : recorder->boxes)
            texts << q(shownBox.text);
        QCOMPARE(texts.join('|'), box);
        localServices::install(nullptr);
    }

    void columnWidthByDoubleClick()
    {
        shownDocument shown;
        localTest::modalAnswer answer([](QWidget *widget) {
            QInputDialog *dialog = qobject_cast<QInputDialog *>(widget);
            dialog->setIntValue(150);
            dialog->accept();
        });
        // x 130 lies in the second column (31 + 86 .. 31 + 172).
        QTest::mouseDClick(&shown.widget, Qt::LeftButton, Qt::NoModifier, QPoint(130, 5));
        QCOMPARE(answer.title, QString("Колонка 2 (2) :"));
        QCOMPARE(shown.sxl->document.columnWidth(2), 150);
        QCOMPARE(shown.state(), QString("1 1 1 2"));
    }

    // One page per printed page: the PDF holds as many as print() reports,
    // one for a single cell and a page more in both directions for a large
    // document.
    void pdfPages()
    {
        QTemporaryDir directory;
        const QString name = directory.filePath("document.pdf");
        for (const auto &[rows, columns] : {std::make_pair(1, 1), std::make_pair(200, 20)}) {
            shownDocument shown;
            shown.sxl->document.textSet(uint32_t(rows), uint32_t(columns), "x");
            const int pages = shown.widget.exportPdf(name);
            const QByteArray pdf = localTest::fileBytes(name);
            QCOMPARE(pdf.count("/Type /Page\n") + pdf.count("/Type /Page\r") + pdf.count("/Type /Page "), pages);
            QVERIFY(rows == 1 ? pages == 1 : pages >= 4);
        }
    }
};

QTEST_MAIN(tst_localSxlWidget)
#include "tst_localSxlWidget.moc"
