// The program editor on a long program: a generated text of 10 000 lines
// (functions, loops, strings, comments, both languages) loaded offscreen and
// coloured whole, then single characters typed in its middle. Prints the
// times; the plain rules, applied one by one as expressions, are timed on the
// same lines for comparison.
//   build/bench/editor [lines]
#include "localVclPrgTextHighlighter.h"
#include "localVclWidgetEditor.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTextBlock>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

const char *const pattern[] = {
    "// the %1th round: totals in both languages",
    "FUNCTION total%1(a, b)",
    "    IF a > b THEN",
    "        RETURN a - b; // the larger first",
    "    ENDIF;",
    "    RETURN STRINGLEN(\"total \" + STRING(a + b));",
    "ENDFUNCTION",
    "ФУНКЦИЯ итог%1(а, б)",
    "    ПОКА а < б ЦИКЛ",
    "        а = а + 1; СООБЩИТЬ(\"шаг \" + СТРОКА(а));",
    "    КОНЕЦЦИКЛА;",
    "    ВОЗВРАТ а * 2;",
    "КОНЕЦФУНКЦИИ",
    "FOR i = 1 TO 10 DO x = total%1(i, 3) + итог%1(i, 5); ENDDO;",
    "w = QWidget; s = 'one' + 'two'; MESSAGE(s);",
    "",
};

QString program(int lines)
{
    const int size = int(sizeof pattern / sizeof pattern[0]);
    QStringList text;
    for (int i = 0; i < lines; ++i)
        text.append(QString::fromUtf8(pattern[i % size]).replace(QStringLiteral("%1"), QString::number(i / size)));
    return text.join(QLatin1Char('\n'));
}

double milliseconds(const QElapsedTimer &timer)
{
    return timer.nsecsElapsed() / 1e6;
}

// The rules one after the other over every line, as the plain design does.
double plainRules(const QString &text)
{
    QElapsedTimer timer;
    timer.start();
    int matches = 0;
    for (const QString &line : text.split(QLatin1Char('\n'))) {
        for (const localVclPrgTextHighlighterRule &rule : localVclPrgTextHighlighter::highlightingRules()) {
            QRegExp expression = rule.pattern;
            for (int at = expression.indexIn(line); at >= 0 && expression.matchedLength() > 0;
                 at = expression.indexIn(line, at + expression.matchedLength()))
                ++matches;
        }
    }
    return matches > 0 ? milliseconds(timer) : -1.0;
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const int lines = argc > 1 ? std::atoi(argv[1]) : 10000;
    const QString text = program(lines);

    localVclWidgetEditor editor;
    editor.resize(900, 700);
    editor.show();
    localVclPrgTextHighlighter::highlightingRules(); // the rules are built once per process
    QElapsedTimer timer;
    timer.start();
    editor.setPlainText(text);
    const double load = milliseconds(timer);
    timer.restart();
    editor.highlighter->rehighlight();
    const double whole = milliseconds(timer);

    QTextCursor cursor(editor.document()->findBlockByNumber(lines / 2));
    cursor.movePosition(QTextCursor::EndOfBlock);
    std::vector<double> typed;
    for (int i = 0; i < 21; ++i) {
        timer.restart();
        cursor.insertText(QStringLiteral("x"));
        typed.push_back(milliseconds(timer));
    }
    std::sort(typed.begin(), typed.end());

    std::printf("lines: %d, rules: %d\n", lines, int(localVclPrgTextHighlighter::highlightingRules().size()));
    std::printf("load with colouring: %.1f ms (%.2f us a line)\n", load, load * 1000 / lines);
    std::printf("colouring the whole document again: %.1f ms (%.2f us a line)\n", whole, whole * 1000 / lines);
    std::printf("a character typed in the middle: median %.3f ms, worst %.3f ms\n", typed[typed.size() / 2],
                typed.back());
    const double plain = plainRules(text);
    std::printf("the plain rules on the same lines: %.1f ms (%.1f times the colouring)\n", plain, plain / whole);
    return 0;
}
