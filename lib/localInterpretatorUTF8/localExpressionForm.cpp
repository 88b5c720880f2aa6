#include "localExpressionForm.h"

#include "localErrorType.h"
#include "localInterpretatorUTF8.h"

#include <algorithm>
#include <functional>

typedef localInterpretatorUTF8 li;

namespace {

typedef localExpressionForm::plan plan;

bool arithmetic(int32_t operation)
{
    return operation >= localOperatorMINUS && operation <= localOperatorMULTIPLY;
}

bool comparison(int32_t operation)
{
    return operation >= localOperatorEQUAL && operation <= localOperatorLESS;
}

// Follows what the evaluator's run of a plan does with operands and cells,
// in its order: operands pushed, operators reduced by their numbers, a
// number's cell, a bracket's copy and each partial result taken lowest
// first, the cells of the operands given back after the result's is taken.
// Slot k stands for the k-th lowest cell free when the expression starts.
class numericCompiler {
public:
    explicit numericCompiler(const std::function<const plan *(size_t)> &innerPlan) : planAt(innerPlan) {}

    struct held {
        bool temporary = false; // a cell of the expression's own, not a variable's
        int slot = 0;
        bool boolean = false;
    };

    std::vector<plan::numericOperation> operations;
    bool brackets = false;

    // The operations of `p`, its value's cell in `result`; false when the
    // plan is not numeric.
    bool emit(const plan &p, held &result)
    {
        if (p.unary != localUnaryNONE || p.steps.empty())
            return false;
        constexpr int depth = 16;
        held operands[depth];
        int32_t operators[depth];
        int operandCount = 0;
        int operatorCount = 0;
        auto reduce = [&]() {
            const int32_t operation = operators[--operatorCount];
            const held right = operands[--operandCount];
            const held left = operands[--operandCount];
            if (left.boolean || right.boolean || !(arithmetic(operation) || comparison(operation)))
                return false;
            held made;
            if (!take(made.slot))
                return false;
            made.temporary = true;
            made.boolean = comparison(operation);
            giveBack(left);
            giveBack(right);
            operands[operandCount++] = made;
            push(plan::numericOperation::operate, operation, 0.0, nullptr, -1);
            return true;
        };
        for (size_t i = 0; i < p.steps.size(); ++i) {
            const plan::step &step = p.steps[i];
            if (i > 0)
                while (operatorCount > 0 && operators[operatorCount - 1] >= step.operation)
                    if (!reduce())
                        return false;
            if (operandCount + 1 >= depth || !operand(step, operands[operandCount]))
                return false;
            ++operandCount;
            if (i > 0)
                operators[operatorCount++] = step.operation;
        }
        while (operatorCount > 0)
            if (!reduce())
                return false;
        result = operands[0];
        return true;
    }
    int deepest() const { return maximum; }
    // How many cells the plain run holds at most at once.
    int cellsHeld() const { return highest; }

private:
    std::function<const plan *(size_t)> planAt;
    uint64_t taken = 0;
    int highest = 0;
    int stacked = 0;
    int maximum = 0;

    bool take(int &slot)
    {
        if (~taken == 0)
            return false;
        slot = __builtin_ctzll(~taken);
        taken |= uint64_t(1) << slot;
        highest = std::max(highest, slot + 1);
        return true;
    }
    void giveBack(const held &cell)
    {
        if (cell.temporary)
            taken &= ~(uint64_t(1) << cell.slot);
    }
    void push(plan::numericOperation::kindType kind, int32_t operation, double number,
              const localExpressionForm::name *token, int change)
    {
        plan::numericOperation made;
        made.kind = kind;
        made.operation = operation;
        made.number = number;
        made.token = token;
        operations.push_back(made);
        stacked += change;
        maximum = std::max(maximum, stacked);
    }
    bool operand(const plan::step &step, held &cell)
    {
        switch (step.kind) {
        case plan::variable:
            push(plan::numericOperation::fromVariable, 0, 0.0, step.token, 1);
            cell = held();
            return true;
        case plan::number:
            push(plan::numericOperation::fromNumber, 0, step.number, nullptr, 1);
            cell = held();
            cell.temporary = true;
            return take(cell.slot);
        case plan::bracket: {
            // The inner value, then its copy in a cell of its own.
            const plan *inner = planAt(step.operandStart + 1);
            held value;
            if (inner == nullptr || !emit(*inner, value))
                return false;
            brackets = true;
            cell = held();
            cell.temporary = true;
            cell.boolean = value.boolean;
            if (!take(cell.slot))
                return false;
            giveBack(value);
            return true;
        }
        default:
            return false;
        }
    }
};

} // namespace

localExpressionForm::localExpressionForm(const std::u16string &text) : answers(text.size() + 1) {}

size_t localExpressionForm::skipSpaceReading(const std::u16string &text, size_t position)
{
    answer &at = answers[position];
    li::scanStringSkipSpace(text, position);
    at.skipEnd = int32_t(position);
    return position;
}

int32_t localExpressionForm::operatorReading(const std::u16string &text, size_t &position, operatorPlace place)
{
    answer &at = answers[position];
    at.operation[place] = int8_t(place == prefix ? li::scanStringGetUnaryOperator(text, position)
                                                 : li::scanStringGetBinaryOperator(text, position));
    at.operatorEnd[place] = int32_t(position);
    return at.operation[place];
}

const localExpressionForm::token *localExpressionForm::nameTokenReading(const std::u16string &text, size_t position)
{
    token &read = tokens.emplace_back();
    answers[position].name = &read;
    li::scanStringGetNameTokenInto(text, position, read.text.written, read.text.upper);
    read.end = uint32_t(position);
    return &read;
}

const localExpressionForm::token &localExpressionForm::literalReading(const std::u16string &text, size_t position,
                                                                     bool number)
{
    token &read = tokens.emplace_back();
    answers[position].literal = &read;
    if (number) {
        localErrorType status = localErrorTypeOK;
        read.readable = li::scanStringGetNumber(status, text, position, read.number);
    } else {
        read.readable = li::scanStringGetStringLiteral(text, position, read.text.written);
        if (read.readable)
            read.text.literal = localText::kept(read.text.written);
    }
    read.end = uint32_t(position);
    return read;
}

void localExpressionForm::planKeep(const std::u16string &text, size_t position, int32_t unary,
                                   const std::vector<plan::step> &steps)
{
    // A recursive evaluation of the same text may have kept it first.
    if (answers[position].expression != nullptr)
        return;
    std::vector<plan::step> kept = steps;
    for (plan::step &step : kept) {
        const answer &at = answers[step.operandStart];
        const char16_t c = step.operandStart < text.size() ? text[step.operandStart] : char16_t(0);
        if (c == u'(') {
            step.kind = plan::bracket;
        } else if (at.literal != nullptr && at.literal->readable) {
            step.kind = c == u'"' || c == u'\'' ? plan::string : plan::number;
            step.number = at.literal->number;
            step.token = &at.literal->text;
        } else if (at.name != nullptr) {
            const size_t end = at.name->end;
            const char16_t after = end < text.size() ? text[end] : char16_t(0);
            if (at.name->text.written.empty())
                step.kind = plan::name;
            else if (after == u'(')
                step.kind = plan::call;
            else
                step.kind = after == u'.' ? plan::name : plan::variable;
            step.token = &at.name->text;
        } else {
            // Not read through this form: no plan, rather than a wrong one.
            answers[position].planRefused = true;
            return;
        }
    }
    plan &made = plans.emplace_back();
    made.unary = unary;
    made.steps = std::move(kept);
    numericKeep(made);
    answers[position].expression = &made;
}

void localExpressionForm::numericKeep(plan &made) const
{
    numericCompiler compiler([this](size_t position) { return answers[position].expression; });
    numericCompiler::held result;
    // A lone variable's value is the variable's own cell: nothing to gain.
    if (!compiler.emit(made, result) || !result.temporary || compiler.deepest() > plan::numericDepth)
        return;
    made.numeric = std::move(compiler.operations);
    made.numericCell = uint8_t(result.slot);
    made.numericCells = uint8_t(compiler.cellsHeld());
    made.numericBool = result.boolean;
    made.numericBrackets = compiler.brackets;
}

void localExpressionForm::argumentsKeep(size_t position, const std::vector<uint32_t> &starts, size_t close)
{
    if (answers[position].arguments != nullptr)
        return;
    argumentList &made = argumentLists.emplace_back();
    made.starts = starts;
    made.close = uint32_t(close);
    answers[position].arguments = &made;
}
