// Colours program text on any QTextDocument: keywords of both languages,
// class names, the global functions, operators, strings and comments.
//
// The rules are an ordered list of regular expressions, a later one
// overriding an earlier one on the text they share. Most of them are whole
// words, so a line is cut into words once and each word is looked up in one
// table that already holds the outcome of all the word rules; only the few
// patterns that are no whole words run as expressions. The table and the
// expressions are built once per process and shared by every highlighter.
#ifndef LOCALVCLPRGTEXTHIGHLIGHTER_H
#define LOCALVCLPRGTEXTHIGHLIGHTER_H

#include <QRegExp>
#include <QSyntaxHighlighter>
#include <QTextCharFormat>
#include <QVector>

struct localVclPrgTextHighlighterRule {
    QRegExp pattern;
    QTextCharFormat format;
};

class localVclPrgTextHighlighter : public QSyntaxHighlighter {
    Q_OBJECT
public:
    // The formats, in the order of their rules; `formatNone` is no rule's.
    enum formatKind : quint8 {
        formatNone,
        formatKeyword,
        formatClass,
        formatFunction,
        formatOperator,
        formatQuotation,
        formatComment,
        formatCount
    };

    explicit localVclPrgTextHighlighter(QTextDocument *document);

    // The rules in order of application, the comment pair last, as plain
    // expressions: what the word table stands for.
    static const QVector<localVclPrgTextHighlighterRule> &highlightingRules();
    static const QRegExp &commentStartExpression();
    static const QRegExp &commentEndExpression();
    static const QTextCharFormat &format(formatKind kind);

    // The format of every character of one line whose previous line left
    // `previousState`; `state` receives the line's own state (1: an open
    // comment).
    static QVector<formatKind> lineFormats(const QString &text, int previousState, int &state);

protected:
    void highlightBlock(const QString &text) override;
};

#endif
