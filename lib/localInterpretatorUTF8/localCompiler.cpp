// The statement compiler: program text in, a tree of localOperatorCompiled
// out. Only statements are compiled; every expression is checked with the
// scanner's onlyCheck mode and kept as its source text.
//
//   program    := { statement ";" }
//   statement  := "?" expression
//               | PRINT                                   (an empty statement)
//               | BREAK
//               | IF expression THEN block
//                    { ELSEIF expression THEN block } [ ELSE block ] ENDIF
//               | FOR name "=" expression TO expression DO block ENDDO
//               | WHILE expression DO block ENDDO
//               | (FUNCTION | PROCEDURE) name "(" [ parameter { "," parameter } ] ")"
//                    block (ENDFUNCTION | ENDPROCEDURE)
//               | RETURN expression
//               | immediate-statement                     (DO file, DISPLAY MEMORY...:
//                                                          one that reads past its word)
//               | [ VAR ] name "=" expression
//               | expression                              (a call or a member chain)
//   parameter  := [ VAR ] name
//   block      := { statement ";" }                       (ended by its closing word)
//
//   English        Russian
//   PRINT          -
//   BREAK          ПРЕРВАТЬ
//   IF THEN        ЕСЛИ ТОГДА
//   ELSEIF         ИНАЧЕЕСЛИ
//   ELSE           ИНАЧЕ
//   ENDIF          КОНЕЦЕСЛИ
//   FOR TO         ДЛЯ ПО
//   WHILE          ПОКА
//   DO             ЦИКЛ
//   ENDDO          КОНЕЦЦИКЛА
//   FUNCTION       ФУНКЦИЯ         PROCEDURE     ПРОЦЕДУРА
//   ENDFUNCTION    КОНЕЦФУНКЦИИ    ENDPROCEDURE  КОНЕЦПРОЦЕДУРЫ
//   RETURN         ВОЗВРАТ
//   VAR            ПЕРЕМЕННАЯ, or any prefix of it of four letters or more
//
// Words are compared whole after nameToUpper. A ";" ends every statement,
// compound ones included (ENDIF; ENDDO; ENDFUNCTION;), and is required even
// at the end of the text. A closing word ends the block being compiled and
// reports which one it was through the status (0 ELSE, 1 ELSEIF, 2 ENDDO,
// 3 ENDFUNCTION, 4 ENDIF); the level that opened the block judges it. IF
// takes any report other than ELSE and ENDIF as ELSEIF, so a stray ENDDO in
// a branch starts a further condition.
//
// FOR has no record kind of its own: FOR v = a TO b DO body ENDDO becomes
//   v = a;  WHILE v<=(b) DO body; v = v+1; ENDDO
// so b is evaluated each round and the loop leaves v at b + 1.
//
// Function bodies go into the `functions` of the block that defines them,
// not among its statements: a definition may stand after its first use.
// Every program ends with RETURN (1), which the caller takes as its proper end.
#include "localOperatorCompiled.h"

#include "localInterpretatorUTF8.h"
#include "localStack.h"

#include <iostream>

namespace {

typedef localInterpretatorUTF8 li;

enum keyword {
    keywordNone,
    keywordPrint,
    keywordBreak,
    keywordIf,
    keywordElseIf,
    keywordElse,
    keywordEndIf,
    keywordFor,
    keywordWhile,
    keywordEndDo,
    keywordFunction,
    keywordEndFunction,
    keywordReturn
};

keyword keywordOf(const std::u16string &word)
{
    if (word.empty())
        return keywordNone;
    if (word == u"PRINT")
        return keywordPrint;
    if (word == u"BREAK" || word == u"ПРЕРВАТЬ")
        return keywordBreak;
    if (word == u"IF" || word == u"ЕСЛИ")
        return keywordIf;
    if (word == u"ELSEIF" || word == u"ИНАЧЕЕСЛИ")
        return keywordElseIf;
    if (word == u"ELSE" || word == u"ИНАЧЕ")
        return keywordElse;
    if (word == u"ENDIF" || word == u"КОНЕЦЕСЛИ")
        return keywordEndIf;
    if (word == u"FOR" || word == u"ДЛЯ")
        return keywordFor;
    if (word == u"WHILE" || word == u"ПОКА")
        return keywordWhile;
    if (word == u"ENDDO" || word == u"КОНЕЦЦИКЛА")
        return keywordEndDo;
    if (word == u"FUNCTION" || word == u"PROCEDURE" || word == u"ФУНКЦИЯ" || word == u"ПРОЦЕДУРА")
        return keywordFunction;
    if (word == u"ENDFUNCTION" || word == u"ENDPROCEDURE" || word == u"КОНЕЦФУНКЦИИ" || word == u"КОНЕЦПРОЦЕДУРЫ")
        return keywordEndFunction;
    if (word == u"RETURN" || word == u"ВОЗВРАТ")
        return keywordReturn;
    return keywordNone;
}

// VAR exactly, or the Russian word cut to four letters or more.
bool isVarWord(const std::u16string &word)
{
    static const std::u16string russian = u"ПЕРЕМЕННАЯ";
    if (word == u"VAR")
        return true;
    return word.size() >= 4 && word.size() <= russian.size() && russian.compare(0, word.size(), word) == 0;
}

bool isWord(const std::u16string &word, const char16_t *english, const char16_t *russian)
{
    return word == english || word == russian;
}

class compiler {
public:
    compiler(localErrorType &status, const std::u16string &text, size_t &position, localOperatorCompiled &block)
        : status(status), text(text), position(position), block(block)
    {
    }

    bool run();

private:
    localErrorType &status;
    const std::u16string &text;
    size_t &position;
    localOperatorCompiled &block;

    bool atEnd() const { return position >= text.size(); }
    bool at(char16_t c) const { return position < text.size() && text[position] == c; }
    void skipSpace() { li::scanStringSkipSpace(text, position); }

    std::u16string readWordUpper()
    {
        std::u16string word = li::scanStringGetNameToken(text, position);
        li::nameToUpperInPlace(word);
        return word;
    }

    localOperatorCompiled record(int32_t type, size_t at) const
    {
        localOperatorCompiled made(block.execute);
        made.type = type;
        made.position = int32_t(at);
        return made;
    }

    bool scanExpression(std::u16string &expression);
    bool compileNested(localOperatorCompiled &nested);

    bool statement(bool &closed);
    bool statementPrint();
    bool statementIf(size_t start);
    bool statementFor(size_t start);
    bool statementWhile(size_t start);
    bool statementFunction();
    bool statementReturn(size_t start);
    bool statementOther(const std::u16string &word, size_t start);
    bool scanStringDefinitionParameter(localCompiledParameter &parameter);
};

// One expression under onlyCheck from the next non-blank; its text ends where
// the scan ended, so it carries no blanks at either end.
bool compiler::scanExpression(std::u16string &expression)
{
    skipSpace();
    const size_t start = position;
    localValueDescription *checked = nullptr;
    const bool done = li::scanStringGetExpressionAndEvaluete(status, text, position, &checked, nullptr, true);
    localValueRelease(checked);
    if (!done)
        return false;
    expression.assign(text, start, position - start);
    return true;
}

// A body or branch, compiled from here up to its closing word.
bool compiler::compileNested(localOperatorCompiled &nested)
{
    nested.position = int32_t(position);
    localOperatorCompiled *pointer = &nested;
    return textCompile(status, text, position, &pointer);
}

bool compiler::run()
{
    block.type = localCompiledOperatorTypeBLOCK;
    block.children.clear();
    status = localErrorTypeOK;
    while (position < text.size()) {
        skipSpace();
        if (atEnd())
            break;
        bool closed = false;
        if (!statement(closed))
            return false;
        if (closed)
            return true;
        const size_t statementEnd = position;
        skipSpace();
        if (!at(u';')) {
            position = statementEnd > 0 ? statementEnd - 1 : 0;
            status = localErrorTypeSYNTAXsemicolon;
            return false;
        }
        ++position;
    }
    if (status != localErrorTypeOK)
        return false;
    localOperatorCompiled end = record(localCompiledOperatorTypeRENURN, position);
    end.expression = u"(1)";
    block.children.push_back(std::move(end));
    return true;
}

// One statement from a non-blank character. `closed` tells that a closing
// word ended the block; its report stands in the status.
bool compiler::statement(bool &closed)
{
    const size_t start = position;
    if (at(u'?'))
        return statementPrint();
    const std::u16string word = readWordUpper();
    switch (keywordOf(word)) {
    case keywordPrint:
        return true;
    case keywordBreak:
        block.children.push_back(record(localCompiledOperatorTypeBREAK, start));
        return true;
    case keywordIf:
        return statementIf(start);
    case keywordElse:
        status = localErrorTypeELSE;
        closed = true;
        return true;
    case keywordElseIf:
        status = localErrorTypeELSEIF;
        closed = true;
        return true;
    case keywordEndIf:
        status = localErrorTypeENDIF;
        closed = true;
        return true;
    case keywordEndDo:
        status = localErrorTypeENDDO;
        closed = true;
        return true;
    case keywordEndFunction: {
        // A function that ends without RETURN returns 1.
        localOperatorCompiled end = record(localCompiledOperatorTypeRENURN, start);
        end.expression = u"(1.0)";
        block.children.push_back(std::move(end));
        status = localErrorTypeENDFUNCTION;
        closed = true;
        return true;
    }
    case keywordFor:
        return statementFor(start);
    case keywordWhile:
        return statementWhile(start);
    case keywordFunction:
        return statementFunction();
    case keywordReturn:
        return statementReturn(start);
    case keywordNone:
        break;
    }
    return statementOther(word, start);
}

bool compiler::statementPrint()
{
    const size_t start = position;
    ++position;
    skipSpace();
    const size_t expressionStart = position;
    localValueDescription *checked = nullptr;
    const bool done = li::scanStringGetExpressionAndEvaluete(status, text, position, &checked, nullptr, true);
    localValueRelease(checked);
    if (!done) {
        position = expressionStart;
        LOCAL_DIAG(u"ERROR!!!");
        return false;
    }
    localOperatorCompiled print = record(localCompiledOperatorTypePRINT, start);
    print.expression.assign(text, expressionStart, position - expressionStart);
    block.children.push_back(std::move(print));
    return true;
}

bool compiler::statementIf(size_t start)
{
    localOperatorCompiled statement = record(localCompiledOperatorTypeIF, start);
    bool elseSeen = false;
    while (!atEnd()) {
        std::u16string condition;
        if (!elseSeen) {
            if (!scanExpression(condition))
                return false;
            if (!isWord(readWordUpper(), u"THEN", u"ТОГДА")) {
                status = localErrorTypeSYNTAXthen;
                return false;
            }
        }
        localOperatorCompiled branch(block.execute);
        if (!compileNested(branch))
            return false;
        branch.expression = std::move(condition);
        statement.children.push_back(std::move(branch));
        const localErrorType report = status;
        status = localErrorTypeOK;
        if (report == localErrorTypeENDIF) {
            block.children.push_back(std::move(statement));
            return true;
        }
        if (report == localErrorTypeELSE)
            elseSeen = true;
    }
    status = localErrorTypeSYNTAXendif;
    return false;
}

bool compiler::statementFor(size_t start)
{
    const std::u16string variable = readWordUpper();
    if (variable.empty()) {
        status = localErrorTypeSYNTAX;
        return false;
    }
    skipSpace();
    if (!at(u'=')) {
        status = localErrorTypeSYNTAXequal;
        return false;
    }
    ++position;
    std::u16string from;
    if (!scanExpression(from))
        return false;
    if (!isWord(readWordUpper(), u"TO", u"ПО")) {
        status = localErrorTypeSYNTAXto;
        return false;
    }
    std::u16string to;
    if (!scanExpression(to))
        return false;
    if (!isWord(readWordUpper(), u"DO", u"ЦИКЛ")) {
        status = localErrorTypeSYNTAXdo;
        return false;
    }
    localOperatorCompiled body(block.execute);
    if (!compileNested(body))
        return false;
    if (status != localErrorTypeENDDO) {
        status = localErrorTypeSYNTAXenddo;
        return false;
    }
    status = localErrorTypeOK;

    localOperatorCompiled initial = record(localCompiledOperatorTypeEXPRESSION, start);
    initial.name = variable;
    initial.expression = std::move(from);
    block.children.push_back(std::move(initial));

    localOperatorCompiled loop = record(localCompiledOperatorTypeWHILE, start);
    loop.expression = variable + u"<=(" + to + u")";
    localOperatorCompiled step = record(localCompiledOperatorTypeEXPRESSION, start);
    step.name = variable;
    step.expression = variable + u"+1";
    loop.children.reserve(2);
    loop.children.push_back(std::move(body));
    loop.children.push_back(std::move(step));
    block.children.push_back(std::move(loop));
    return true;
}

bool compiler::statementWhile(size_t start)
{
    std::u16string condition;
    if (!scanExpression(condition))
        return false;
    if (!isWord(readWordUpper(), u"DO", u"ЦИКЛ")) {
        status = localErrorTypeSYNTAXdo;
        return false;
    }
    localOperatorCompiled body(block.execute);
    if (!compileNested(body))
        return false;
    if (status != localErrorTypeENDDO) {
        status = localErrorTypeSYNTAXenddo;
        return false;
    }
    status = localErrorTypeOK;
    localOperatorCompiled loop = record(localCompiledOperatorTypeWHILE, start);
    loop.expression = u"(" + condition + u")";
    loop.children.push_back(std::move(body));
    block.children.push_back(std::move(loop));
    return true;
}

// [VAR] name: a parameter of a definition's heading.
bool compiler::scanStringDefinitionParameter(localCompiledParameter &parameter)
{
    std::u16string written = li::scanStringGetNameToken(text, position);
    std::u16string upper = li::nameToUpper(written);
    if (isVarWord(upper)) {
        parameter.byValue = true;
        written = li::scanStringGetNameToken(text, position);
        upper = li::nameToUpper(written);
    }
    if (written.empty()) {
        LOCAL_DIAG(u" Ошибка считывания аргумента !!! ");
        status = localErrorTypeINTERNAL;
        return false;
    }
    parameter.name = std::move(upper);
    parameter.nameWritten = std::move(written);
    return true;
}

bool compiler::statementFunction()
{
    const std::u16string name = readWordUpper();
    if (name.empty()) {
        status = localErrorTypeSYNTAX;
        return false;
    }
    const size_t afterName = position;
    skipSpace();
    if (!at(u'(')) {
        position = afterName;
        status = localErrorTypeSYNTAXopenBracket;
        return false;
    }
    ++position;
    std::vector<localCompiledParameter> parameters;
    for (;;) {
        skipSpace();
        if (at(u')'))
            break;
        if (!parameters.empty()) {
            if (!at(u',')) {
                status = localErrorTypeSYNTAXopenBracket;
                return false;
            }
            ++position;
        }
        localCompiledParameter parameter;
        if (!scanStringDefinitionParameter(parameter))
            return false;
        parameters.push_back(std::move(parameter));
    }
    ++position;

    auto body = std::make_shared<localOperatorCompiled>(block.execute);
    body->name = name;
    body->parameters = std::move(parameters);
    if (!compileNested(*body))
        return false;
    if (status != localErrorTypeENDFUNCTION) {
        status = localErrorTypeSYNTAXendfunction;
        return false;
    }
    status = localErrorTypeOK;
    block.functions.push_back(localCompiledFunction{name, std::move(body)});
    return true;
}

bool compiler::statementReturn(size_t start)
{
    skipSpace();
    if (at(u';')) {
        LOCAL_DIAG(u"Внимание!!! Команда RETURN (ВОЗВРАТ) должна ВСЕГДА иметь возвращаемое значение!");
        status = localErrorTypeRETURNnoValue;
        return false;
    }
    std::u16string expression;
    if (!scanExpression(expression))
        return false;
    localOperatorCompiled result = record(localCompiledOperatorTypeRENURN, start);
    result.expression = u"(" + expression + u")";
    block.children.push_back(std::move(result));
    return true;
}

// An immediate statement, an assignment, or an expression whose value is
// dropped. `start` is where the word began; the position stands behind it.
bool compiler::statementOther(const std::u16string &word, size_t start)
{
    const size_t afterWord = position;
    position = start;
    if (!li::scanStringGetOperatorAndExec(status, text, position, nullptr, true)) {
        LOCAL_DIAG(u" Ошибка компиляции запрограммированной команды (оператора) !!! ");
        return false;
    }
    // QUIT and EXIT: the program text asks to leave, and nothing of it runs.
    if (status == localErrorTypeQUIT)
        return false;
    // Only a command that reads something behind its word is one here. A
    // word that reaches no further (HELP, DIR, RUN with no name) is taken as
    // any other word, so that it can name a variable: HELP = 2; assigns, and
    // HELP; alone is an assignment without its "=".
    if (position != start && position != afterWord) {
        localOperatorCompiled command = record(localCompiledOperatorTypeCOMMAND, start);
        command.expression.assign(text, start, position - start);
        block.children.push_back(std::move(command));
        return true;
    }
    position = afterWord;
    if (atEnd()) {
        status = localErrorTypeSYNTAX;
        return false;
    }
    size_t next = afterWord;
    li::scanStringSkipSpace(text, next);
    const bool call = text[afterWord] == u'.' || (next < text.size() && text[next] == u'(');

    localOperatorCompiled statement = record(localCompiledOperatorTypeEXPRESSION, start);
    if (!call) {
        if (isVarWord(word)) {
            statement.name = readWordUpper();
            statement.declares = true;
        } else {
            statement.name = word;
        }
        if (statement.name.empty()) {
            status = localErrorTypeSYNTAX;
            return false;
        }
        skipSpace();
        if (!at(u'=')) {
            status = localErrorTypeSYNTAX;
            return false;
        }
        ++position;
    } else {
        position = start;
    }
    if (!scanExpression(statement.expression)) {
        std::string out = localNarrow(localRestOfLine(text, position));
        out += '\n';
        localNarrowAppend(out, localErrorText(status));
        out += '\n';
        std::cout << out << std::flush;
        return false;
    }
    block.children.push_back(std::move(statement));
    return true;
}

} // namespace

bool textCompile(localErrorType &status, const std::u16string &text, size_t &position, localOperatorCompiled **block)
{
    if (block == nullptr || *block == nullptr) {
        LOCAL_DIAG(u"Для компиляции необходимо передавать уже инициализированный объект будущего влока, который "
                   u"определяет функцию обработки ");
        status = localErrorTypeINTERNAL;
        return false;
    }
    // Nested blocks compile through here.
    if (!localStackCheck(status, "textCompile"))
        return false;
    compiler compiling(status, text, position, **block);
    return compiling.run();
}
