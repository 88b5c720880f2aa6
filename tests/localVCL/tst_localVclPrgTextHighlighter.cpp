// The program colouring: each reference text beside this file against its
// readable list of coloured stretches, the word table against the plain
// rules it stands for, and the document's formats against the kinds.
// KORVEL_HIGHLIGHTER_REGENERATE=1 rewrites the lists (tests/localVCL/highlighter/regenerate).
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

QString referenceFolder()
{
    return QStringLiteral(KORVEL_TESTS_SOURCE "/localVCL/highlighter");
}

// One line per coloured stretch: "line:column kind text".
QString stretches(const QStringList &lines)
{
    QString out;
    int state = 0;
    for (int n = 0; n < lines.size(); ++n) {
        const QVector<highlighter::formatKind> kinds = highlighter::lineFormats(lines[n], state, state);
        for (int i = 0; i < kinds.size();) {
            int end = i + 1;
            while (end < kinds.size() && kinds[end] == kinds[i])
                ++end;
            if (kinds[i] != highlighter::formatNone)
                out += QStringLiteral("%1:%2 %3 %4\n").arg(n + 1).arg(i + 1).arg(kindNames[kinds[i]],
                                                                                  lines[n].mid(i, end - i));
            i = end;
        }
    }
    return out;
}

// The rules applied one after the other as plain expressions, with the
// comment pass behind them: what the word table must reproduce. Function
// and operator share a format, so formats are compared, not kinds.
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

QVector<QTextCharFormat> formatsOf(const QVector<highlighter::formatKind> &kinds)
{
    QVector<QTextCharFormat> formats;
    for (highlighter::formatKind kind : kinds)
        formats.append(highlighter::format(kind));
    return formats;
}

QStringList fileLines(const QString &name)
{
    QString text = QString::fromUtf8(localTest::fileBytes(name));
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    return text.split(QLatin1Char('\n'));
}

} // namespace

class tst_localVclPrgTextHighlighter : public QObject {
    Q_OBJECT

    void references()
    {
        QTest::addColumn<QString>("program");
        for (const QString &name : QDir(referenceFolder()).entryList({QStringLiteral("*.prg")}))
            QTest::newRow(qPrintable(name)) << referenceFolder() + QLatin1Char('/') + name;
    }

private slots:
    void referenceStretches_data() { references(); }
    void referenceStretches()
    {
        QFETCH(QString, program);
        const QString found = stretches(fileLines(program));
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
        for (const QString &name : QDir(referenceFolder()).entryList({QStringLiteral("*.prg")}))
            for (const QString &line : fileLines(referenceFolder() + QLatin1Char('/') + name))
                QTest::newRow(qPrintable(name + QStringLiteral(": ") + line)) << line;
        QTest::newRow("marks and underscores") << QStringLiteral("if_x x\u0301if qif Qы1 q");
        QTest::newRow("fixed patterns mid-word") << QStringLiteral("aFileExist bFileDelete1 \u0441\u043e\u043e\u0431\u0449\u0438\u0442\u044cx");
        QTest::newRow("lone quotes") << QStringLiteral("\"a ' b");
    }
    void sameAsPlainRules()
    {
        QFETCH(QString, line);
        int state = 0;
        QCOMPARE(formatsOf(highlighter::lineFormats(line, 0, state)), plainFormats(line));
        QCOMPARE(state, 0);
    }

    void documentFormats()
    {
        const QStringList lines = fileLines(referenceFolder() + QStringLiteral("/edges.prg"));
        QTextDocument document(lines.join(QLatin1Char('\n')));
        highlighter colouring(&document);
        colouring.rehighlight();
        int state = 0;
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
            const QVector<highlighter::formatKind> kinds = highlighter::lineFormats(block.text(), state, state);
            QVector<QTextCharFormat> found(block.length() - 1);
            for (const QTextLayout::FormatRange &range : block.layout()->formats())
                std::fill(found.begin() + range.start, found.begin() + range.start + range.length, range.format);
            for (int i = 0; i < kinds.size(); ++i)
                QVERIFY2(found[i] == highlighter::format(kinds[i]),
                         qPrintable(QStringLiteral("%1 at %2").arg(block.text()).arg(i)));
        }
    }

    // Rules come from the core's declarations: a Russian name, not in the
    // fixed list, has one.
    void generatedRules()
    {
        const QVector<localVclPrgTextHighlighterRule> &rules = highlighter::highlightingRules();
        QVERIFY(rules.size() > 200);
        const auto has = [&rules](const QString &pattern) {
            return std::any_of(rules.begin(), rules.end(),
                               [&pattern](const localVclPrgTextHighlighterRule &rule) {
                                   return rule.pattern.pattern() == pattern;
                               });
        };
        QVERIFY(has(QStringLiteral("\\bСТРОКАДЛИНА\\b")));
        QVERIFY(has(QStringLiteral("\\StringFromReplace\\b")));
        QVERIFY(!has(QStringLiteral("\\bUSERDIR\\b"))); // declared, never answered
    }
};

QTEST_MAIN(tst_localVclPrgTextHighlighter)
#include "tst_localVclPrgTextHighlighter.moc"
