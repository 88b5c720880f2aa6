#include "localExpressionForm.h"

#include "localErrorType.h"
#include "localInterpretatorUTF8.h"

typedef localInterpretatorUTF8 li;

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
    answers[position].expression = &made;
}
