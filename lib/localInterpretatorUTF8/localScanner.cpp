// The scanner and evaluator of expressions. There is no token stream and no
// tree: an expression is read from its text and reduced as it is read.
//
//   expression := [unary] operand { "?" expression ":" expression
//                                  | binary operand }
//   unary      := "-" | "!" | "NOT" | "НЕ"        (no word boundary checked)
//   binary     := "-" "+" "/" "%" "*" "AND" "И" "=" "<>" ">=" ">" "<=" "<" "OR" "ИЛИ"
//   operand    := number | string | name-chain | "(" expression ")"
//   number     := digits with at most one "." (16 characters at most)
//   string     := '"' any '"' | "'" any "'"       (no escapes)
//
// The operator's number is its precedence: higher binds tighter, equal
// numbers go left to right. The conditional applies to the operand on top
// of the stack, and only the branch taken is evaluated.
#include "localInterpretatorUTF8.h"

#include "localScratch.h"
#include "localStack.h"
#include "localString.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <limits>

namespace {

inline bool isSpace(char16_t c)
{
    return c == u'\t' || c == u' ' || c == u'\n' || c == u'\f' || c == u'\r';
}

inline bool isDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

inline char16_t upperOf(char16_t c)
{
    if ((c >= u'a' && c <= u'z') || (c >= 0x0430 && c <= 0x044F))
        return char16_t(c - 32);
    if (c == 0x0451)
        return 0x0401;
    return c;
}

// Does the text at `position` spell `word` (given in upper case), in any letter case?
inline bool wordAt(const std::u16string &text, size_t position, const char16_t *word)
{
    for (; *word != 0; ++word, ++position)
        if (position >= text.size() || upperOf(text[position]) != *word)
            return false;
    return true;
}

void contextNullStop(const char *routine)
{
    exit_FAILURE(std::string("localInterpretatorUTF8::") + routine + "() context may be NULL only in onlyCheck!");
}

[[gnu::noinline]] void unclosedString(char16_t quote)
{
    std::string out = localNarrow(u"ОШИБКА при сборке СТРОКОВОЙ костанты . Ожидается символ '");
    out += char(quote);
    out += "'\n";
    std::cout << out << std::flush;
}

void cannotOperate(int32_t operation, const char *func, int line)
{
    std::string out = localNarrow(u"Не могу выполниить операцию номер [");
    out += std::to_string(operation) + "]" + localDiagTail(func, __FILE__, line);
    std::cout << out << std::flush;
}

// The value of a number token. Whole numbers of up to 15 digits are exact in
// a double and are added up digit by digit, which gives what atof gives
// without its cost; anything else goes to atof.
double numberFromBuffer(const char *buffer, size_t count, bool pointSeen)
{
    const bool negative = count > 0 && buffer[0] == '-';
    const size_t digits = count - (negative ? 1 : 0);
    if (pointSeen || digits == 0 || digits > 15)
        return std::atof(buffer);
    int64_t whole = 0;
    for (size_t i = negative ? 1 : 0; i < count; ++i)
        whole = whole * 10 + (buffer[i] - '0');
    return negative ? -double(whole) : double(whole);
}

// Moves past a string literal whose quote stands at `position`; false, at
// the end of the text, when the closing quote is missing.
bool closingQuote(const std::u16string &text, size_t &position)
{
    const size_t end = text.find(text[position], position + 1);
    position = end == std::u16string::npos ? text.size() : end + 1;
    return end != std::u16string::npos;
}

// Truncation towards zero that saturates instead of overflowing.
int64_t truncateToInt64(double value)
{
    if (std::isnan(value))
        return 0;
    if (value >= 9.2233720368547758e18)
        return std::numeric_limits<int64_t>::max();
    if (value <= -9.2233720368547758e18)
        return std::numeric_limits<int64_t>::min();
    return int64_t(value);
}

// The evaluator's stacks. Every push of an operator first reduces all
// operators of higher or equal number, so the operator stack only ever
// holds strictly rising numbers: fourteen places are enough for both.
struct evaluatorStacks {
    static constexpr int depth = 16;
    localValueDescription *operands[depth];
    int32_t operators[depth];
    int operandCount = 0;
    int operatorCount = 0;

    ~evaluatorStacks()
    {
        for (int i = 0; i < operandCount; ++i)
            operands[i]->linkCounterDec();
    }
    void push(localValueDescription *cell) { operands[operandCount++] = cell; }
    localValueDescription *pop() { return operands[--operandCount]; }
};

// An operator on two numbers, a comparison giving 1.0 or 0.0. Inline: most
// reductions of a running program are these.
[[gnu::always_inline]] inline bool numberCompute(localErrorType &status, int32_t operation, double a, double b,
                                                 double &value)
{
    switch (operation) {
    case localOperatorMINUS: value = a - b; return true;
    case localOperatorPLUS: value = a + b; return true;
    case localOperatorMULTIPLY: value = a * b; return true;
    case localOperatorDIVIDE:
        if (b == 0.0) {
            status = localErrorTypeDIVISIONbyZERO;
            return false;
        }
        value = a / b;
        return true;
    case localOperatorREMAINDER: {
        const int64_t divisor = truncateToInt64(b);
        // A divisor of magnitude below 1 passes the test for 0 and truncates to it.
        if (b == 0.0 || divisor == 0) {
            status = localErrorTypeDIVISIONbyZERO;
            return false;
        }
        const int64_t dividend = truncateToInt64(a);
        value = divisor == -1 ? 0.0 : double(dividend % divisor);
        return true;
    }
    case localOperatorEQUAL: value = a == b ? 1.0 : 0.0; return true;
    case localOperatorNOTEQUAL: value = a != b ? 1.0 : 0.0; return true;
    case localOperatorGREATEROREQUAL: value = a >= b ? 1.0 : 0.0; return true;
    case localOperatorGREATER: value = a > b ? 1.0 : 0.0; return true;
    case localOperatorLESSOREQUAL: value = a <= b ? 1.0 : 0.0; return true;
    case localOperatorLESS: value = a < b ? 1.0 : 0.0; return true;
    default:
        status = localErrorTypeINTERNAL;
        return false;
    }
}

// The same into a result cell: a comparison's value is a boolean.
[[gnu::always_inline]] inline bool numberOperation(localErrorType &status, localValueDescription *result,
                                                   int32_t operation, double a, double b)
{
    double value = 0.0;
    if (!numberCompute(status, operation, a, b, value))
        return false;
    if (operation >= localOperatorEQUAL && operation <= localOperatorLESS)
        result->setBool(value != 0.0);
    else
        result->setVal(value);
    return true;
}

// The operator on top applied by `operate` to the two operands on top, into
// a result cell taken before the operands are given back.
template <typename Operate>
[[gnu::always_inline]] inline bool reduceTop(evaluatorStacks &stacks, Operate operate)
{
    const int32_t operation = stacks.operators[--stacks.operatorCount];
    localValueDescription *right = stacks.pop();
    localValueDescription *left = stacks.pop();
    localValueDescription *cell = localValueNew();
    const bool done = operate(cell, operation, left, right);
    left->linkCounterDec();
    right->linkCounterDec();
    if (!done) {
        cell->linkCounterDec();
        return false;
    }
    stacks.push(cell);
    return true;
}

// (The GNU spelling of the attribute is the one that reaches a lambda's call.)
[[gnu::always_inline]] inline bool reduceNumbers(localErrorType &status, evaluatorStacks &stacks)
{
    return reduceTop(stacks, [&](localValueDescription *cell, int32_t operation, localValueDescription *left,
                                 localValueDescription *right) __attribute__((always_inline)) {
        return numberOperation(status, cell, operation, left->localValueNumber, right->localValueNumber);
    });
}

// The same for operands of any kind; only checking, the result is 1.
[[gnu::noinline]] bool reduceOnce(localErrorType &status, evaluatorStacks &stacks, bool onlyCheck)
{
    const localValueDescription *top = stacks.operands[stacks.operandCount - 1];
    const localValueDescription *below = stacks.operands[stacks.operandCount - 2];
    if (!onlyCheck && top->type == localValueTypeNUM && below->type == localValueTypeNUM)
        return reduceNumbers(status, stacks);
    return reduceTop(stacks, [&](localValueDescription *cell, int32_t operation, localValueDescription *left,
                                 localValueDescription *right) {
        if (onlyCheck) {
            cell->setVal(1.0);
            return true;
        }
        return localInterpretatorUTF8::binaryOperationByEnumEvaluate(status, cell, operation, left, right);
    });
}

// reduceOnce, with two numbers, most reductions of a running program, inline.
[[gnu::always_inline]] inline bool reduceRunning(localErrorType &status, evaluatorStacks &stacks)
{
    if (stacks.operands[stacks.operandCount - 1]->type == localValueTypeNUM
        && stacks.operands[stacks.operandCount - 2]->type == localValueTypeNUM)
        return reduceNumbers(status, stacks);
    return reduceOnce(status, stacks, false);
}

// The rest of a conditional after its "?": both branches are read, only the
// one taken is evaluated, and its value replaces the condition on top of the
// stack. Out of line, as most expressions have none.
[[gnu::noinline]] bool conditionalEvaluate(localErrorType &status, const std::u16string &text, size_t &position,
                                           localValueDescription *&condition, localContextUTF8 *context,
                                           bool onlyCheck, localExpressionForm *form)
{
    typedef localInterpretatorUTF8 li;
    const bool taken = condition->isTrue();
    localValueDescription *first = nullptr;
    if (!li::scanStringGetExpressionAndEvaluete(status, text, position, &first, context, onlyCheck || !taken, form))
        return false;
    li::scanStringSkipSpace(text, position, form);
    if (position >= text.size() || text[position] != u':') {
        localValueRelease(first);
        status = localErrorTypeSYNTAXcolon;
        return false;
    }
    ++position;
    localValueDescription *second = nullptr;
    if (!li::scanStringGetExpressionAndEvaluete(status, text, position, &second, context, onlyCheck || taken, form)) {
        localValueRelease(first);
        return false;
    }
    localValueRelease(condition);
    if (taken) {
        condition = first;
        localValueRelease(second);
    } else {
        condition = second;
        localValueRelease(first);
    }
    return true;
}

// An operand in round brackets, its "(" at `position`.
bool bracketedOperand(localErrorType &status, const std::u16string &text, size_t &position,
                      localValueDescription **result, localContextUTF8 *context, bool onlyCheck,
                      localExpressionForm *form)
{
    typedef localInterpretatorUTF8 li;
    ++position;
    localValueDescription *inner = nullptr;
    if (!li::expressionAt(status, text, position, &inner, context, onlyCheck, form))
        return false;
    // A copy, so that a prefix or a reference parameter cannot reach a variable in brackets.
    localValueMoveToNewCell(inner);
    *result = inner;
    li::scanStringSkipSpace(text, position, form);
    if (position >= text.size() || text[position] != u')') {
        localValueRelease(*result);
        status = localErrorTypeSYNTAXcloseBracket;
        return false;
    }
    ++position;
    return true;
}

typedef std::vector<localExpressionForm::plan::step> planSteps;

// An operand of a plan other than a variable found or a number, evaluated
// as the scanner's operand reading would from where it starts, and leaving
// `position` where that reading would.
[[gnu::noinline]] bool planOperandRead(localErrorType &status, const std::u16string &text, size_t &position,
                                       const localExpressionForm::plan::step &step, localValueDescription **result,
                                       localContextUTF8 *context, localExpressionForm *form)
{
    typedef localExpressionForm::plan plan;
    if (step.kind == plan::string) {
        position = step.operandEnd;
        *result = localValueNew();
        (*result)->type = localValueTypeSTR;
        (*result)->localValueString = step.token->literal;
        return true;
    }
    if (step.kind == plan::call) {
        // What the name chain does with a kept name that a "(" follows.
        position = step.operandStart;
        return localInterpretatorUTF8::scanStringGetNameChainCalled(status, text, position, result, context, form);
    }
    position = step.operandStart;
    if (step.kind == plan::bracket) {
        const plan *inner = form->planAt(position + 1);
        if (inner == nullptr)
            return bracketedOperand(status, text, position, result, context, false, form);
        // As bracketedOperand, with the inner reading's plan run at once;
        // the ")" stood where it ends when the plan was kept.
        if (!localStackCheck(status, "scanStringGetExpressionAndEvaluete"))
            return false;
        ++position;
        localValueDescription *value = nullptr;
        if (!localInterpretatorUTF8::planRun(status, text, position, *inner, &value, context, form))
            return false;
        localValueMoveToNewCell(value);
        *result = value;
        position = step.operandEnd;
        return true;
    }
    return localInterpretatorUTF8::scanStringGetNameTokenAndEvaluete(status, text, position, result, context, false,
                                                                    form);
}

// One operand of a plan. The commonest ones stay here: what the name chain
// answers first for a kept bare name, and a number's own cell.
[[gnu::always_inline]] inline bool planOperand(localErrorType &status, const std::u16string &text, size_t &position,
                                               const localExpressionForm::plan::step &step,
                                               localValueDescription **result, localContextUTF8 *context,
                                               localExpressionForm *form)
{
    typedef localExpressionForm::plan plan;
    if (step.kind == plan::variable) {
        if (localVariable *variable = step.token->variableIn(context)) {
            position = step.operandEnd;
            variable->value->linkCounterInc();
            *result = variable->value;
            return true;
        }
    } else if (step.kind == plan::number) {
        position = step.operandEnd;
        *result = localValueNew();
        (*result)->setVal(step.number);
        return true;
    }
    return planOperandRead(status, text, position, step, result, context, form);
}

// Where the reading of the operand at `position` starts, for a recording.
inline localExpressionForm::plan::step planStep(const std::u16string &text, size_t position, int32_t operation,
                                                localExpressionForm *form)
{
    localExpressionForm::plan::step step;
    step.operation = operation;
    step.operatorEnd = uint32_t(position);
    form->skipSpace(text, position);
    step.operandStart = uint32_t(position);
    return step;
}

// The reading itself. With `recording`, each operand's start and the
// operator before it are noted, and the plan kept at the end.
bool expressionReading(localErrorType &status, const std::u16string &text, size_t &position,
                       localValueDescription **result, localContextUTF8 *context, bool onlyCheck,
                       localExpressionForm *form, planSteps *recording)
{
    typedef localInterpretatorUTF8 li;
    const size_t start = position;
    evaluatorStacks stacks;
    const int32_t unary =
        form != nullptr ? form->unaryOperator(text, position) : li::scanStringGetUnaryOperator(text, position);
    if (recording != nullptr)
        recording->push_back(planStep(text, position, localOperatorNONE, form));
    localValueDescription *operand = nullptr;
    if (!li::scanStringGetOperandAndEvaluete(status, text, position, &operand, context, onlyCheck, form))
        return false;
    if (recording != nullptr)
        recording->back().operandEnd = uint32_t(position);
    stacks.push(operand);
    // The prefix works on the operand's own cell: on a bare variable it
    // changes the variable.
    if (unary != localUnaryNONE && !onlyCheck && !li::unaryOperationByEnumEvaluate(status, operand, unary, operand))
        return false;

    for (;;) {
        const size_t remembered = position;
        li::scanStringSkipSpace(text, position, form);
        if (position < text.size() && text[position] == u'?') {
            if (recording != nullptr) {
                form->planRefuse(start);
                recording = nullptr;
            }
            ++position;
            if (!conditionalEvaluate(status, text, position, stacks.operands[stacks.operandCount - 1], context,
                                     onlyCheck, form))
                return false;
            continue;
        }
        const int32_t operation =
            form != nullptr ? form->binaryOperator(text, position) : li::scanStringGetBinaryOperator(text, position);
        if (operation == localOperatorNONE) {
            position = remembered;
            break;
        }
        while (stacks.operatorCount > 0 && stacks.operators[stacks.operatorCount - 1] >= operation)
            if (!reduceOnce(status, stacks, onlyCheck))
                return false;
        if (recording != nullptr)
            recording->push_back(planStep(text, position, operation, form));
        localValueDescription *next = nullptr;
        if (!li::scanStringGetOperandAndEvaluete(status, text, position, &next, context, onlyCheck, form))
            return false;
        if (recording != nullptr)
            recording->back().operandEnd = uint32_t(position);
        stacks.push(next);
        stacks.operators[stacks.operatorCount++] = operation;
    }

    if (stacks.operandCount != stacks.operatorCount + 1) {
        status = localErrorTypeINTERNAL;
        LOCAL_DIAG(u"Err = " + localErrorText(status));
        return false;
    }
    while (stacks.operatorCount > 0)
        if (!reduceOnce(status, stacks, onlyCheck))
            return false;
    *result = stacks.pop();
    if (recording != nullptr)
        form->planKeep(text, start, unary, *recording);
    return true;
}

} // namespace

namespace {

// A numeric operand's value; false when a variable holds no number.
[[gnu::always_inline]] inline bool numericOperand(const localExpressionForm::plan::numericOperation &step,
                                                  localContextUTF8 *context, double &value)
{
    if (step.kind == localExpressionForm::plan::numericOperation::fromNumber) {
        value = step.number;
        return true;
    }
    const localVariable *variable = step.token->variableIn(context);
    if (variable == nullptr || variable->value->type != localValueTypeNUM)
        return false;
    value = variable->value->localValueNumber;
    return true;
}

} // namespace

bool localInterpretatorUTF8::planNumeric(const localExpressionForm::plan &plan, localContextUTF8 *context,
                                         double &value)
{
    typedef localExpressionForm::plan::numericOperation operation;
    // A bracket asks for stack room, and the cells must be there: at either
    // limit the plain run reports it.
    if ((plan.numericBrackets && localStackExhausted())
        || localMemoryManager::instance().getFreeCount() < plan.numericCells)
        return false;
    localErrorType status = localErrorTypeOK;
    const operation *steps = plan.numeric.data();
    // Two operands and their operator, the commonest shape, without the stack.
    if (plan.numeric.size() == 3 && steps[2].kind == operation::operate) {
        double left = 0.0;
        double right = 0.0;
        return numericOperand(steps[0], context, left) && numericOperand(steps[1], context, right)
               && numberCompute(status, steps[2].operation, left, right, value);
    }
    double stack[localExpressionForm::plan::numericDepth];
    int top = 0;
    for (const operation &step : plan.numeric) {
        if (step.kind != operation::operate) {
            if (!numericOperand(step, context, stack[top++]))
                return false;
        } else {
            --top;
            if (!numberCompute(status, step.operation, stack[top - 1], stack[top], stack[top - 1]))
                return false;
        }
    }
    value = stack[0];
    return true;
}

namespace {

// The rest of a plan's run after its first operand, `operand`: the prefix,
// the further operands and the reductions. Out of line: the stacks it sets
// up would burden the lone operands of brackets and arguments.
[[gnu::noinline]] bool planRunStacked(localErrorType &status, const std::u16string &text, size_t &position,
                                      const localExpressionForm::plan &plan, localValueDescription *operand,
                                      localValueDescription **result, localContextUTF8 *context,
                                      localExpressionForm *form)
{
    typedef localExpressionForm::plan::step step;
    const step *at = plan.steps.data();
    const step *const end = at + plan.steps.size();
    evaluatorStacks stacks;
    stacks.push(operand);
    if (plan.unary != localUnaryNONE
        && !localInterpretatorUTF8::unaryOperationByEnumEvaluate(status, operand, plan.unary, operand))
        return false;
    for (++at; at != end; ++at) {
        position = at->operatorEnd;
        while (stacks.operatorCount > 0 && stacks.operators[stacks.operatorCount - 1] >= at->operation)
            if (!reduceRunning(status, stacks))
                return false;
        localValueDescription *next = nullptr;
        if (!planOperand(status, text, position, *at, &next, context, form))
            return false;
        stacks.push(next);
        stacks.operators[stacks.operatorCount++] = at->operation;
    }
    while (stacks.operatorCount > 0)
        if (!reduceRunning(status, stacks))
            return false;
    *result = stacks.pop();
    return true;
}

} // namespace

// An expression evaluated from its plan: the operands and reductions of
// expressionReading, in the same order, without the reads.
bool localInterpretatorUTF8::planRun(localErrorType &status, const std::u16string &text, size_t &position,
                                     const localExpressionForm::plan &plan, localValueDescription **result,
                                     localContextUTF8 *context, localExpressionForm *form)
{
    double number = 0.0;
    if (!plan.numeric.empty() && planNumeric(plan, context, number)) {
        localValueDescription *cell = localMemoryManager::instance().allocateRanked(plan.numericCell);
        cell->type = plan.numericBool ? localValueTypeBOO : localValueTypeNUM;
        cell->localValueNumber = number;
        *result = cell;
        position = plan.steps.back().operandEnd;
        return true;
    }
    localValueDescription *operand = nullptr;
    if (!planOperand(status, text, position, plan.steps.front(), &operand, context, form))
        return false;
    // A lone operand, as a bracket's or an argument's often is, is the value.
    if (plan.steps.size() == 1 && plan.unary == localUnaryNONE) {
        *result = operand;
        return true;
    }
    return planRunStacked(status, text, position, plan, operand, result, context, form);
}

void localInterpretatorUTF8::scanStringSkipSpaceAndComments(const std::u16string &text, size_t &position)
{
    const size_t length = text.size();
    while (position < length) {
        const char16_t c = text[position];
        if (isSpace(c)) {
            ++position;
        } else if (c == u'/' && position + 1 < length && text[position + 1] == u'/') {
            const size_t lineEnd = text.find(u'\n', position + 2);
            position = lineEnd == std::u16string::npos ? length : lineEnd;
        } else {
            break;
        }
    }
}

std::u16string localInterpretatorUTF8::scanStringGetNameToken(const std::u16string &text, size_t &position)
{
    std::u16string name;
    scanStringGetNameTokenInto(text, position, name);
    return name;
}

void localInterpretatorUTF8::scanStringGetNameTokenInto(const std::u16string &text, size_t &position,
                                                        std::u16string &name)
{
    scanStringSkipSpace(text, position);
    const size_t start = position;
    while (position < text.size() && isNameChar(text[position]))
        ++position;
    name.assign(text, start, position - start);
}

void localInterpretatorUTF8::nameToUpperInPlace(std::u16string &name)
{
    for (char16_t &c : name)
        c = upperOf(c);
}

void localInterpretatorUTF8::scanStringGetNameTokenInto(const std::u16string &text, size_t &position,
                                                        std::u16string &name, std::u16string &nameUpper)
{
    scanStringSkipSpace(text, position);
    const char16_t *from = text.data() + position;
    const char16_t *end = text.data() + text.size();
    const char16_t *after = from;
    while (after < end && isNameChar(*after))
        ++after;
    const size_t length = size_t(after - from);
    position += length;
    // Both buffers keep their capacity between calls: no allocation here.
    if (name.size() != length)
        name.resize(length);
    if (nameUpper.size() != length)
        nameUpper.resize(length);
    for (size_t i = 0; i < length; ++i) {
        name[i] = from[i];
        nameUpper[i] = upperOf(from[i]);
    }
}

const std::u16string &localInterpretatorUTF8::nameToUpperInto(const std::u16string &name, std::u16string &storage)
{
    size_t i = 0;
    while (i < name.size() && upperOf(name[i]) == name[i])
        ++i;
    if (i == name.size())
        return name;
    storage = name;
    for (; i < storage.size(); ++i)
        storage[i] = upperOf(storage[i]);
    return storage;
}

std::u16string localInterpretatorUTF8::nameToUpper(const std::u16string &name)
{
    std::u16string upper = name;
    nameToUpperInPlace(upper);
    return upper;
}

bool localInterpretatorUTF8::scanStringGetNumber(localErrorType &status, const std::u16string &text, size_t &position,
                                                  double &value)
{
    // Seventeen characters already fail, so the buffer never needs more.
    char buffer[20];
    size_t count = 0;
    auto take = [&](char16_t c) {
        if (count < 17)
            buffer[count] = char(c);
        ++count;
    };
    if (position < text.size() && text[position] == u'-') {
        take(u'-');
        ++position;
        scanStringSkipSpace(text, position);
    }
    bool pointSeen = false;
    while (position < text.size()) {
        const char16_t c = text[position];
        if (isDigit(c)) {
            take(c);
        } else if (c == u'.' && !pointSeen) {
            pointSeen = true;
            take(c);
        } else {
            break;
        }
        ++position;
    }
    if (count > 16) {
        status = localErrorTypePRECISION;
        return false;
    }
    buffer[count] = 0;
    value = numberFromBuffer(buffer, count, pointSeen);
    return true;
}

bool localInterpretatorUTF8::scanStringGetNumberTokenAndEvaluete(localErrorType &status, const std::u16string &text,
                                                                  size_t &position, localValueDescription **result)
{
    localResultMustBeNull(result, "localInterpretatorUTF8::scanStringGetNumberTokenAndEvaluete()");
    double value = 0.0;
    if (!scanStringGetNumber(status, text, position, value))
        return false;
    *result = localValueNew();
    (*result)->setVal(value);
    return true;
}

bool localInterpretatorUTF8::scanStringGetStringLiteral(const std::u16string &text, size_t &position,
                                                        std::u16string &literal)
{
    const size_t start = position;
    if (!closingQuote(text, position))
        return false;
    literal.assign(text, start + 1, position - start - 2);
    return true;
}

bool localInterpretatorUTF8::scanStringGetStringTokenAndEvaluete(const std::u16string &text, size_t &position,
                                                                  localValueDescription **result)
{
    localResultMustBeNull(result, "localInterpretatorUTF8::scanStringGetStringTokenAndEvaluete()");
    const size_t start = position;
    if (!closingQuote(text, position))
        return false;
    // Into the cell's own text, whose room stays from its last use.
    *result = localValueNew();
    (*result)->type = localValueTypeSTR;
    (*result)->localValueString.assign(text, start + 1, position - start - 2);
    return true;
}

bool localInterpretatorUTF8::scanStringGetOperandAndEvaluete(localErrorType &status, const std::u16string &text,
                                                             size_t &position, localValueDescription **result,
                                                             localContextUTF8 *context, bool onlyCheck,
                                                             localExpressionForm *form)
{
    localResultMustBeNull(result, "localInterpretatorUTF8::scanStringGetOperandAndEvaluete()");
    if (context == nullptr && !onlyCheck)
        contextNullStop("scanStringGetOperandAndEvaluete");
    scanStringSkipSpace(text, position, form);
    if (position >= text.size()) {
        status = localErrorTypeSYNTAX;
        return false;
    }
    const char16_t c = text[position];
    if (isDigit(c) || c == u'.') {
        if (form == nullptr)
            return scanStringGetNumberTokenAndEvaluete(status, text, position, result);
        double value = 0.0;
        if (!form->number(text, position, value)) {
            status = localErrorTypePRECISION;
            return false;
        }
        *result = localValueNew();
        (*result)->setVal(value);
        return true;
    }
    if (c == u'"' || c == u'\'') {
        if (form == nullptr) {
            if (scanStringGetStringTokenAndEvaluete(text, position, result))
                return true;
        } else if (const localText *literal = form->stringLiteral(text, position)) {
            *result = localValueNew();
            (*result)->type = localValueTypeSTR;
            (*result)->localValueString = *literal;
            return true;
        }
        unclosedString(c);
        status = localErrorTypeSYNTAX;
        return false;
    }
    if (c < 0x20 || c > 0x3F)
        return scanStringGetNameTokenAndEvaluete(status, text, position, result, context, onlyCheck, form);
    if (c == u'(')
        return bracketedOperand(status, text, position, result, context, onlyCheck, form);
    status = localErrorTypeSYNTAX;
    return false;
}

int32_t localInterpretatorUTF8::scanStringGetUnaryOperator(const std::u16string &text, size_t &position)
{
    scanStringSkipSpace(text, position);
    if (position >= text.size())
        return localUnaryNONE;
    const char16_t c = text[position];
    if (c == u'-') {
        ++position;
        return localUnaryMINUS;
    }
    if (c == u'!') {
        ++position;
        return localUnaryNOT;
    }
    // The words start with N or Н, in either case.
    if (upperOf(c) != u'N' && upperOf(c) != u'Н')
        return localUnaryNONE;
    if (wordAt(text, position, u"НЕ")) {
        position += 2;
        return localUnaryNOT;
    }
    if (wordAt(text, position, u"NOT")) {
        position += 3;
        return localUnaryNOT;
    }
    return localUnaryNONE;
}

int32_t localInterpretatorUTF8::scanStringGetBinaryOperator(const std::u16string &text, size_t &position)
{
    scanStringSkipSpace(text, position);
    if (position >= text.size())
        return localOperatorNONE;
    const char16_t c = text[position];
    const char16_t next = position + 1 < text.size() ? text[position + 1] : char16_t(0);
    switch (c) {
    case u'%': ++position; return localOperatorREMAINDER;
    case u'*': ++position; return localOperatorMULTIPLY;
    case u'+': ++position; return localOperatorPLUS;
    case u'-': ++position; return localOperatorMINUS;
    case u'/': ++position; return localOperatorDIVIDE;
    case u'=': ++position; return localOperatorEQUAL;
    case u'<':
        if (next == u'=') {
            position += 2;
            return localOperatorLESSOREQUAL;
        }
        if (next == u'>') {
            position += 2;
            return localOperatorNOTEQUAL;
        }
        ++position;
        return localOperatorLESS;
    case u'>':
        if (next == u'=') {
            position += 2;
            return localOperatorGREATEROREQUAL;
        }
        ++position;
        return localOperatorGREATER;
    default:
        break;
    }
    // The words start with O, A or И, in either case.
    const char16_t upper = upperOf(c);
    if (upper != u'O' && upper != u'A' && upper != u'И')
        return localOperatorNONE;
    if (wordAt(text, position, u"OR")) {
        position += 2;
        return localOperatorOR;
    }
    if (wordAt(text, position, u"AND")) {
        position += 3;
        return localOperatorAND;
    }
    if (wordAt(text, position, u"ИЛИ")) {
        position += 3;
        return localOperatorOR;
    }
    if (wordAt(text, position, u"И")) {
        position += 1;
        return localOperatorAND;
    }
    return localOperatorNONE;
}

bool localInterpretatorUTF8::scanStringGetExpressionAndEvaluete(localErrorType &status, const std::u16string &text,
                                                                size_t &position, localValueDescription **result,
                                                                localContextUTF8 *context, bool onlyCheck,
                                                                localExpressionForm *form)
{
    localResultMustBeNull(result, "localInterpretatorUTF8::scanStringGetExpressionAndEvaluete()");
    if (context == nullptr && !onlyCheck)
        contextNullStop("scanStringGetExpressionAndEvaluete");
    // Brackets and calls nest through here.
    if (!localStackCheck(status, "scanStringGetExpressionAndEvaluete"))
        return false;
    if (form != nullptr && !onlyCheck) {
        if (const localExpressionForm::plan *plan = form->planAt(position))
            return planRun(status, text, position, *plan, result, context, form);
        if (form->planWanted(position)) {
            const localScratch<planSteps> steps;
            steps->clear();
            return expressionReading(status, text, position, result, context, onlyCheck, form, &*steps);
        }
    }
    return expressionReading(status, text, position, result, context, onlyCheck, form, nullptr);
}

bool localInterpretatorUTF8::binaryOperationByEnumEvaluate(localErrorType &status, localValueDescription *result,
                                                           int32_t operation, const localValueDescription *left,
                                                           const localValueDescription *right)
{
    switch (left->type) {
    case localValueTypeNUM: {
        if (right->type != localValueTypeNUM) {
            status = localErrorTypeOPERANDtype;
            return false;
        }
        return numberOperation(status, result, operation, left->localValueNumber, right->localValueNumber);
    }
    case localValueTypeSTR: {
        if (right->type != localValueTypeSTR) {
            if (right->type != localValueTypeNUM && right->type != localValueTypeBOO
                && right->type != localValueTypeOBJ) {
                cannotOperate(operation, __func__, __LINE__);
                status = localErrorTypeINTERNAL;
                return false;
            }
            status = localErrorTypeOPERANDtype;
            return false;
        }
        const localText &a = left->localValueString;
        const localText &b = right->localValueString;
        switch (operation) {
        case localOperatorPLUS:
            // Left texts that end their block (t = t + a + b) grow in place.
            result->setString(a.joined(b.view()));
            return true;
        case localOperatorEQUAL: result->setBool(a == b); return true;
        case localOperatorNOTEQUAL: result->setBool(a != b); return true;
        case localOperatorGREATEROREQUAL: result->setBool(a >= b); return true;
        case localOperatorGREATER: result->setBool(a > b); return true;
        case localOperatorLESSOREQUAL: result->setBool(a <= b); return true;
        case localOperatorLESS: result->setBool(a < b); return true;
        default:
            // Not defined for strings: fails and leaves the status as it was.
            return false;
        }
    }
    case localValueTypeBOO: {
        if (right->type != localValueTypeBOO) {
            status = localErrorTypeOPERANDtype;
            return false;
        }
        const double a = left->localValueNumber;
        const double b = right->localValueNumber;
        switch (operation) {
        case localOperatorAND: result->setBool(!(a == 0.0 || b == 0.0)); return true;
        case localOperatorOR: result->setBool(!(a == 0.0 && b == 0.0)); return true;
        case localOperatorEQUAL: result->setBool(a == b); return true;
        case localOperatorNOTEQUAL: result->setBool(a != b); return true;
        default:
            status = localErrorTypeINTERNAL;
            return false;
        }
    }
    default:
        cannotOperate(operation, __func__, __LINE__);
        status = localErrorTypeINTERNAL;
        return false;
    }
}

bool localInterpretatorUTF8::unaryOperationByEnumEvaluate(localErrorType &status, localValueDescription *result,
                                                          int32_t operation, const localValueDescription *operand)
{
    if (operation == localUnaryMINUS) {
        if (operand->type != localValueTypeNUM) {
            status = localErrorTypeOPERANDtype;
            return false;
        }
        result->setVal(0.0 - operand->localValueNumber);
        return true;
    }
    if (operation == localUnaryNOT) {
        if (operand->type != localValueTypeBOO) {
            status = localErrorTypeOPERANDtype;
            return false;
        }
        result->setBool(operand->localValueNumber <= 0.0);
        return true;
    }
    cannotOperate(operation, __func__, __LINE__);
    status = localErrorTypeINTERNAL;
    return false;
}
