#include "localVclPrgTextHighlighter.h"

#include "localGlobalFunctions.h"
#include "localString.h"

#include <QHash>

#include <array>
#include <cstring>

namespace {

typedef localVclPrgTextHighlighter highlighter;

const char *const keywords[] = {
    "while",    "пока",      "for",         "для",        "to",           "по",       "do",
    "цикл",     "break",     "прервать",    "enddo",      "конеццикла",   "если",     "тогда",
    "иначеесли", "иначе",    "конецесли",   "if",         "then",         "elseif",   "else",
    "endif",    "переменная", "перем",      "var",        "процедура",    "конецпроцедуры",
    "функция",  "конецфункции", "procedure", "endprocedure", "function",    "endfunction",
    "истина",   "ложь",      "true",        "false",      "или",          "or",       "и",
    "and",      "не",        "not",         "return",     "возврат",
};

// Written as they always stood: a backslash before a letter is no word
// boundary, and `\S` is any character but a blank.
const char *const fixedFunctions[] = {
    "\\bmessage\\b",           "\\сообщить\\b",     "\\StringFromReplace\\b", "\\строкаИзФайла\\b",
    "\\StringPartReplace\\b",  "\\СтрокаЧастьЗаменить\\b", "\\FileDelete\\b", "\\ФайлУдалить\\b",
    "\\FileExist\\b",          "\\ФайлСуществует\\b",
};

const char operators[] = "()+-*/<>=,;";

const QString classPattern = QStringLiteral("\\bQ[A-Za-zА-Яа-яЁё]+\\b");

QTextCharFormat makeFormat(Qt::GlobalColor color, int weight, bool italic)
{
    QTextCharFormat format;
    format.setForeground(color);
    if (weight != 0)
        format.setFontWeight(weight);
    if (italic)
        format.setFontItalic(true);
    return format;
}

// A word character as the expressions' `\b` sees it.
inline bool wordCharacter(QChar c)
{
    return c.isLetterOrNumber() || c.isMark() || c == QLatin1Char('_');
}

inline bool classLetter(QChar c)
{
    const ushort u = c.unicode();
    return (u >= 'A' && u <= 'Z') || (u >= 'a' && u <= 'z') || (u >= 0x0410 && u <= 0x044F) || u == 0x0401
           || u == 0x0451;
}

// A whole word that the class rule matches: Q and at least one letter more.
bool classWord(const QChar *word, int length)
{
    if (length < 2 || (word[0] != QLatin1Char('Q') && word[0] != QLatin1Char('q')))
        return false;
    for (int i = 1; i < length; ++i)
        if (!classLetter(word[i]))
            return false;
    return true;
}

QRegExp insensitive(const QString &pattern)
{
    QRegExp expression(pattern);
    expression.setCaseSensitivity(Qt::CaseInsensitive);
    return expression;
}

QString wordPattern(const QString &word)
{
    return QStringLiteral("\\b") + word + QStringLiteral("\\b");
}

// The generated names: both spellings of every global function that answers
// calls, in their declared order.
QStringList functionNames()
{
    QStringList names;
    size_t count = 0;
    const localGlobalFunctionRow *rows = localGlobalFunctionRows(count);
    for (size_t i = 0; i < count; ++i) {
        if (rows[i].handler == nullptr || rows[i].attribute)
            continue;
        for (const char16_t *name : {rows[i].english, rows[i].russian}) {
            const QString trimmed = name != nullptr ? localToQString(localString::trim(name)) : QString();
            if (!trimmed.isEmpty())
                names.append(trimmed);
        }
    }
    return names;
}

// What every highlighter shares, built at the first use.
struct compiledRules {
    std::array<QTextCharFormat, highlighter::formatCount> formats;
    QVector<localVclPrgTextHighlighterRule> plain;
    // Lower-case word -> the word rules' outcome: keyword or function (the
    // class rule depends on the spelling and is tested apart).
    QHash<QString, highlighter::formatKind> words;
    // The patterns that are no whole words, each with a literal piece that a
    // line must hold to be worth the expression.
    struct fixedRule {
        QRegExp pattern;
        QString literal;
    };
    QVector<fixedRule> fixed;
    QRegExp commentStart{QStringLiteral("//")};
    QRegExp commentEnd{QStringLiteral("[^\\n]*")};

    compiledRules()
    {
        formats[highlighter::formatKeyword] = makeFormat(Qt::red, 0, false);
        formats[highlighter::formatClass] = makeFormat(Qt::darkMagenta, 75, false);
        formats[highlighter::formatFunction] = makeFormat(Qt::red, 0, true);
        formats[highlighter::formatOperator] = makeFormat(Qt::red, 0, true);
        formats[highlighter::formatQuotation] = makeFormat(Qt::black, 0, false);
        formats[highlighter::formatComment] = makeFormat(Qt::darkGreen, 0, true);

        for (const char *keyword : keywords) {
            const QString word = QString::fromUtf8(keyword);
            add(wordPattern(word), highlighter::formatKeyword);
            words.insert(word.toLower(), highlighter::formatKeyword);
        }
        add(classPattern, highlighter::formatClass);
        for (const char *pattern : fixedFunctions) {
            const QString text = QString::fromUtf8(pattern);
            add(text, highlighter::formatFunction);
            fixed.append({insensitive(text), text.mid(2, text.size() - 4)});
        }
        for (const QString &name : functionNames()) {
            add(wordPattern(name), highlighter::formatFunction);
            words.insert(name.toLower(), highlighter::formatFunction);
        }
        for (const char *c = operators; *c != 0; ++c)
            add(QStringLiteral("\\") + QLatin1Char(*c), highlighter::formatOperator);
        add(QStringLiteral("\".*\""), highlighter::formatQuotation);
        add(QStringLiteral("'.*'"), highlighter::formatQuotation);
    }

    void add(const QString &pattern, highlighter::formatKind kind) { plain.append({insensitive(pattern), formats[kind]}); }

    static const compiledRules &instance()
    {
        static const compiledRules rules;
        return rules;
    }
};

void fill(QVector<highlighter::formatKind> &kinds, int from, int length, highlighter::formatKind kind)
{
    std::fill(kinds.begin() + from, kinds.begin() + from + length, kind);
}

void wordRules(const compiledRules &rules, const QString &text, QVector<highlighter::formatKind> &kinds)
{
    QString lower;
    const QChar *data = text.constData();
    const int size = text.size();
    for (int i = 0; i < size;) {
        if (!wordCharacter(data[i])) {
            ++i;
            continue;
        }
        int end = i;
        while (end < size && wordCharacter(data[end]))
            ++end;
        const int length = end - i;
        lower.resize(length);
        for (int k = 0; k < length; ++k)
            lower[k] = data[i + k].toLower();
        const highlighter::formatKind word = rules.words.value(lower, highlighter::formatNone);
        highlighter::formatKind kind = word;
        if (word != highlighter::formatFunction && classWord(data + i, length))
            kind = highlighter::formatClass;
        if (kind != highlighter::formatNone)
            fill(kinds, i, length, kind);
        i = end;
    }
}

void fixedRules(const compiledRules &rules, const QString &text, QVector<highlighter::formatKind> &kinds)
{
    for (const compiledRules::fixedRule &rule : rules.fixed) {
        if (!text.contains(rule.literal, Qt::CaseInsensitive))
            continue;
        for (int at = rule.pattern.indexIn(text); at >= 0 && rule.pattern.matchedLength() > 0;
             at = rule.pattern.indexIn(text, at + rule.pattern.matchedLength()))
            fill(kinds, at, rule.pattern.matchedLength(), highlighter::formatFunction);
    }
}

void operatorRules(const QString &text, QVector<highlighter::formatKind> &kinds)
{
    const int size = text.size();
    for (int i = 0; i < size; ++i) {
        const ushort u = text[i].unicode();
        if (u < 128 && u != 0 && std::strchr(operators, char(u)) != nullptr)
            kinds[i] = highlighter::formatOperator;
    }
}

// `".*"` is greedy: the first quote to the last one of the line.
void quotationRule(const QString &text, QChar quote, QVector<highlighter::formatKind> &kinds)
{
    const int first = text.indexOf(quote);
    if (first < 0)
        return;
    const int last = text.lastIndexOf(quote);
    if (last > first)
        fill(kinds, first, last - first + 1, highlighter::formatQuotation);
}

} // namespace

localVclPrgTextHighlighter::localVclPrgTextHighlighter(QTextDocument *document) : QSyntaxHighlighter(document)
{
    compiledRules::instance();
}

const QVector<localVclPrgTextHighlighterRule> &localVclPrgTextHighlighter::highlightingRules()
{
    return compiledRules::instance().plain;
}

const QRegExp &localVclPrgTextHighlighter::commentStartExpression()
{
    return compiledRules::instance().commentStart;
}

const QRegExp &localVclPrgTextHighlighter::commentEndExpression()
{
    return compiledRules::instance().commentEnd;
}

const QTextCharFormat &localVclPrgTextHighlighter::format(formatKind kind)
{
    return compiledRules::instance().formats[kind];
}

QVector<localVclPrgTextHighlighter::formatKind> localVclPrgTextHighlighter::lineFormats(const QString &text,
                                                                                        int previousState,
                                                                                        int &state)
{
    const compiledRules &rules = compiledRules::instance();
    QVector<formatKind> kinds(text.size(), formatNone);
    wordRules(rules, text, kinds);
    fixedRules(rules, text, kinds);
    operatorRules(text, kinds);
    quotationRule(text, QLatin1Char('"'), kinds);
    quotationRule(text, QLatin1Char('\''), kinds);

    state = 0;
    int start = previousState == 1 ? 0 : rules.commentStart.indexIn(text);
    while (start >= 0) {
        const int end = rules.commentEnd.indexIn(text, start);
        int length;
        if (end == -1) {
            state = 1;
            length = text.size() - start;
        } else {
            length = end - start + rules.commentEnd.matchedLength();
        }
        fill(kinds, start, length, formatComment);
        start = rules.commentStart.indexIn(text, start + qMax(length, 1));
    }
    return kinds;
}

void localVclPrgTextHighlighter::highlightBlock(const QString &text)
{
    int state = 0;
    const QVector<formatKind> kinds = lineFormats(text, previousBlockState(), state);
    const compiledRules &rules = compiledRules::instance();
    for (int i = 0; i < kinds.size();) {
        int end = i + 1;
        while (end < kinds.size() && kinds[end] == kinds[i])
            ++end;
        if (kinds[i] != formatNone)
            setFormat(i, end - i, rules.formats[kinds[i]]);
        i = end;
    }
    setCurrentBlockState(state);
}
