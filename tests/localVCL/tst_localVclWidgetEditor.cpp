// The program editor offscreen: the line-number margin, commenting by key,
// go to line, the search that wraps round, the procedure list, the change
// mark and files in two code pages. Boxes are read through the recorder.
#include "localVclServices.h"
#include "localVclWidgetEditor.h"

#include "localValueList.h"

#include "localTestSupport.h"

#include <QTemporaryDir>
#include <QTextBlock>
#include <QtTest>

namespace {

QString numberedLines(int count)
{
    QStringList lines;
    for (int i = 1; i <= count; ++i)
        lines.append(QStringLiteral("line %1").arg(i));
    return lines.join(QLatin1Char('\n'));
}

QStringList captionsSeen;
size_t rowToChoose = 0;

size_t chooser(const std::u16string &, const QStringList &captions, size_t)
{
    captionsSeen = captions;
    return rowToChoose;
}

} // namespace

class tst_localVclWidgetEditor : public QObject {
    Q_OBJECT

    localTest::boxRecorder *boxes = nullptr;
    QTemporaryDir directory;

private slots:
    void init() { boxes = localTest::boxRecorder::install(); }
    void cleanupTestCase() { localServices::install(nullptr); }

    void marginGrowsWithTheDigits()
    {
        localVclWidgetEditor editor;
        editor.setPlainText(numberedLines(999));
        const int digit = editor.fontMetrics().horizontalAdvance(QLatin1Char('9'));
        const auto margin = [&editor]() { return editor.viewport()->geometry().left() - editor.contentsRect().left(); };
        QCOMPARE(margin(), 3 * digit + 23);
        editor.appendPlainText(QStringLiteral("line 1000"));
        QCOMPARE(margin(), 4 * digit + 23);
        QCOMPARE(editor.lineNumberArea->width(), 4 * digit + 2);
    }

    // The end moves by 4 for 2 inserted: a short line after the selection is taken too.
    void commentKeyOnThreeLines()
    {
        localVclWidgetEditor editor;
        editor.setPlainText(QStringLiteral("alpha\nbeta\ngamma\ndelta\nepsilon is long enough"));
        QTextCursor cursor = editor.textCursor();
        cursor.setPosition(2);
        cursor.setPosition(editor.document()->findBlockByNumber(2).position() + 3, QTextCursor::KeepAnchor);
        editor.setTextCursor(cursor);
        QTest::keyClick(&editor, Qt::Key_Period, Qt::ControlModifier);
        QCOMPARE(editor.toPlainText(),
                 QStringLiteral("//alpha\n//beta\n//gamma\n//delta\nepsilon is long enough"));
    }

    void gotoLine_data()
    {
        QTest::addColumn<int>("line");
        QTest::addColumn<int>("position");
        QTest::newRow("third") << 3 << 14;
        QTest::newRow("zero: the document's start") << 0 << 0;
        QTest::newRow("past the end") << 40 << 0;
    }
    void gotoLine()
    {
        QFETCH(int, line);
        QFETCH(int, position);
        localVclWidgetEditor editor;
        editor.setPlainText(numberedLines(5));
        editor.moveCursor(QTextCursor::End);
        editor.gotoLine(line);
        QCOMPARE(editor.textCursor().position(), position);
    }

    void search_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<bool>("backward");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("found"); // selection start; -1: not found, the cursor stays
        QTest::newRow("forward") << 0 << false << "b" << 2;
        QTest::newRow("forward wraps") << 9 << false << "a b" << 0;
        QTest::newRow("backward wraps at the start") << 0 << true << "b" << 10;
        QTest::newRow("nowhere") << 3 << false << "zz" << -1;
    }
    void search()
    {
        QFETCH(int, from);
        QFETCH(bool, backward);
        QFETCH(QString, text);
        QFETCH(int, found);
        localVclWidgetEditor editor;
        editor.setPlainText(QStringLiteral("a b\na b\na b"));
        QTextCursor cursor = editor.textCursor();
        cursor.setPosition(from);
        editor.setTextCursor(cursor);
        editor.searchHistory.push_back({text, backward ? QTextDocument::FindBackward : QTextDocument::FindFlags()});
        QTest::keyClick(&editor, Qt::Key_F3);
        QCOMPARE(editor.textCursor().selectionStart(), found < 0 ? from : found);
        QCOMPARE(boxes->boxes.size(), size_t(found < 0 ? 1 : 0));
        if (found < 0)
            QCOMPARE(localTest::q(boxes->boxes[0].text), QStringLiteral("String not found."));
    }

    void procedureList()
    {
        localVclWidgetEditor editor;
        editor.setPlainText(QStringLiteral("x = 1;\n"
                                           "   ФУНКЦИЯ имя(а)\n"
                                           "procedure Beta()\n"
                                           "FUNCTION // not a name\n"
                                           "\tfunction\t alpha(b)"));
        localListDialogs::handlers.rowChoose = chooser;
        rowToChoose = 2;
        QTest::keyClick(&editor, Qt::Key_P, Qt::AltModifier);
        localListDialogs::handlers.rowChoose = nullptr;
        QCOMPARE(captionsSeen, QStringList({"\tfunction\t alpha(b)", "procedure Beta()", "   ФУНКЦИЯ имя(а)"}));
        QCOMPARE(editor.textCursor().blockNumber(), 2);
    }

    void filesAndChangeMark_data()
    {
        QTest::addColumn<int>("codePage");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("CP1251") << 2 << QByteArray("\xc8\xec\xff = 1;");
        QTest::newRow("UTF-8") << 4 << QByteArray("Имя = 1;");
    }
    void filesAndChangeMark()
    {
        QFETCH(int, codePage);
        QFETCH(QByteArray, bytes);
        const QString name = directory.filePath(QStringLiteral("program.prg"));
        QVERIFY(localTest::fileWrite(name, bytes));
        localVclWidgetEditor editor;
        QVERIFY(editor.load(localTest::w(name), codePage));
        QCOMPARE(editor.toPlainText(), QStringLiteral("Имя = 1;"));
        QCOMPARE(editor.windowTitle(), name);
        QTest::keyClick(&editor, Qt::Key_X);
        QCOMPARE(editor.windowTitle(), QStringLiteral("[!] ") + name);
        // Ctrl and the key of S in the Cyrillic layout saves, always in UTF-8.
        QKeyEvent yeru(QEvent::KeyPress, 0x042B, Qt::ControlModifier, QStringLiteral("ы"));
        QApplication::sendEvent(&editor, &yeru);
        QCOMPARE(editor.windowTitle(), name);
        QCOMPARE(localTest::fileBytes(name), QByteArray("xИмя = 1;"));
    }

    void editCommandOpensTheFile()
    {
        const QString name = directory.filePath(QStringLiteral("edit.prg"));
        QVERIFY(localTest::fileWrite(name, QByteArray("a = 1;")));
        localVclServices().editFile(localTest::w(name), 4, true);
        localVclWidgetEditor *opened = nullptr;
        for (QWidget *top : QApplication::topLevelWidgets())
            for (localVclWidgetEditor *editor : top->findChildren<localVclWidgetEditor *>())
                opened = editor->fileName == localTest::w(name) ? editor : opened;
        QVERIFY(opened != nullptr);
        QCOMPARE(opened->toPlainText(), QStringLiteral("a = 1;"));
        delete opened->window();
    }

    void failedSaveKeepsTheText()
    {
        localVclWidgetEditor editor;
        editor.setPlainText(QStringLiteral("kept"));
        editor.fileName = localTest::w(directory.filePath(QStringLiteral("no/such/folder.prg")));
        editor.saveSlot();
        QCOMPARE(editor.toPlainText(), QStringLiteral("kept"));
        QVERIFY(localTest::q(boxes->boxes.back().text).startsWith(QStringLiteral("Файл не сохранён!")));
    }
};

QTEST_MAIN(tst_localVclWidgetEditor)
#include "tst_localVclWidgetEditor.moc"
