// The program colouring: each reference text beside this file against its
// readable list of coloured stretches (and the document's formats against
// it), and the word table against the plain rules it stands for.
// tests/localVCL/highlighter/regenerate rewrites the lists.
#include "localVclPrgTextHighlighter.h"

#include "localTestSupport.h"

#include <QDir>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <QtTest>

namespace {

typedef localVclPrgTextHighlighter highlighter;

const char *const kindNames[] = {"none", "keyword", "class", "function", "operator", "quotation", "comment"};
const QString folder = QStringLiteral(KORVEL_TESTS_SOURCE "/localVCL/highlighter/");

QStringList fileLines(const QString &name)
{
    QString text = QString::fromUtf8(localTest::fileBytes(name));
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    return text.split(QLatin1Char('\n'));
}

QVector<QTextCharFormat> formatsOf(const QVector<highlighter::formatKind> &kinds)
{
    QVector<QTextCharFormat> formats;
    for (highlighter::formatKind kind : kinds)
        formats.append(highlighter::format(kind));
    return formats;
}

// The rules one after the other as plain expressions, the comment last.
// Function and operator share a format, so formats are compared, not kinds.
QVector<QTextCharFormat> plainFormats(const QString &text)
{
    QVector<QTextCharFormat> formats(text.size());
    for (const localVclPrgTextHighlighterRule &rule : highlighter::highlightingRules()) {
        QRegExp expression = rule.pattern;
        for (int at = expression.indexIn(text); at >= 0 && expression.matchedLength() > 0;
             at = expression.indexIn(text, at + expression.matchedLength()))
            std::fill(formats.begin() + at, formats.begin() + at + expression.matchedLength(), rule.format);
    }
    const int comment = text.indexOf(QStringLiteral("//"));
    if (comment >= 0)
        std::fill(formats.begin() + comment, formats.end(), highlighter::format(highlighter::formatComment));
    return formats;
}

} // namespace

class tst_localVclPrgTextHighlighter : public QObject {
    Q_OBJECT

private slots:
    void references_data()
    {
        QTest::addColumn<QString>("program");
        for (const QString &name : QDir(folder).entryList({QStringLiteral("*.prg")}))
            QTest::newRow(qPrintable(name)) << folder + name;
    }
    // One line per stretch, "line:column kind text".
    void references()
    {
        QFETCH(QString, program);
        QTextDocument document(fileLines(program).join(QLatin1Char('\n')));
        highlighter colouring(&document);
        colouring.rehighlight();
        QString found;
        int state = 0;
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
            const QVector<highlighter::formatKind> kinds = highlighter::lineFormats(block.text(), state, state);
            QVector<QTextCharFormat> shown(kinds.size());
            for (const QTextLayout::FormatRange &range : block.layout()->formats())
                std::fill(shown.begin() + range.start, shown.begin() + range.start + range.length, range.format);
            QCOMPARE(shown, formatsOf(kinds));
            for (int i = 0, end = 1; i < kinds.size(); i = end++) {
                while (end < kinds.size() && kinds[end] == kinds[i])
                    ++end;
                if (kinds[i] != highlighter::formatNone)
                    found += QStringLiteral("%1:%2 %3 %4\n").arg(block.blockNumber() + 1).arg(i + 1)
                                 .arg(kindNames[kinds[i]], block.text().mid(i, end - i));
            }
        }
        const QString expectedName = program.left(program.size() - 3) + QStringLiteral("expected");
        if (qEnvironmentVariableIsSet("KORVEL_HIGHLIGHTER_REGENERATE"))
            QVERIFY(localTest::fileWrite(expectedName, found.toUtf8()));
        QCOMPARE(found, QString::fromUtf8(localTest::fileBytes(expectedName)));
    }

    // The word table and the prefilters of the odd patterns change the
    // method, never the colours.
    void sameAsPlainRules_data()
    {
        QTest::addColumn<QString>("line");
        for (const QString &name : QDir(folder).entryList({QStringLiteral("*.prg")}))
            for (const QString &line : fileLines(folder + name))
                QTest::newRow(qPrintable(name + QStringLiteral(": ") + line)) << line;
        QTest::newRow("marks and underscores") << QStringLiteral("if_x x\u0301if qif Qы1 q");
        QTest::newRow("fixed patterns mid-word") << QStringLiteral("aFileExist bFileDelete1 сообщитьx");
        QTest::newRow("lone quotes") << QStringLiteral("\"a ' b");
    }
    void sameAsPlainRules()
    {
        QFETCH(QString, line);
        int state = 0;
        QCOMPARE(formatsOf(highlighter::lineFormats(line, 0, state)), plainFormats(line));
        QCOMPARE(state, 0);
    }
};

QTEST_MAIN(tst_localVclPrgTextHighlighter)
#include "tst_localVclPrgTextHighlighter.moc"
