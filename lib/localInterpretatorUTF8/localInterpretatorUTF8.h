// The scanner and evaluator: an expression is kept as text and evaluated in
// one pass each time it runs; the same routines with `onlyCheck` only move the
// position and check the syntax. Also the name chain and the immediate
// statements (the console's `? expr`, `DO file`, `DISPLAY MEMORY`...).
#ifndef LOCALINTERPRETATORUTF8_H
#define LOCALINTERPRETATORUTF8_H

#include "localContextUTF8.h"
#include "localExpressionForm.h"
#include "localStack.h"

#include <string>

// Operator numbers are also their precedence: higher binds tighter.
enum localOperatorType : int32_t {
    localOperatorNONE = 0,
    localOperatorMINUS = 1,
    localOperatorPLUS = 2,
    localOperatorDIVIDE = 3,
    localOperatorREMAINDER = 4,
    localOperatorMULTIPLY = 5,
    localOperatorAND = 7,
    localOperatorEQUAL = 8,
    localOperatorNOTEQUAL = 9,
    localOperatorGREATEROREQUAL = 10,
    localOperatorGREATER = 11,
    localOperatorLESSOREQUAL = 12,
    localOperatorLESS = 13,
    localOperatorOR = 14
};
enum localUnaryOperatorType : int32_t { localUnaryNONE = 0, localUnaryMINUS = 1, localUnaryNOT = 2 };

// The characters of a name below 128 (digits, Latin letters and "_"): one
// look-up per character.
struct localAsciiNameTable {
    bool allowed[128] = {};
    constexpr localAsciiNameTable()
    {
        for (int c = 0; c < 128; ++c)
            allowed[c] = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
    }
};
inline constexpr localAsciiNameTable localAsciiNameChars{};

class localInterpretatorUTF8 {
public:
    static void scanStringSkipSpace(const std::u16string &text, size_t &position)
    {
        // Most calls stand on a character that is neither blank nor "/".
        if (position < text.size() && text[position] > u' ' && text[position] != u'/')
            return;
        scanStringSkipSpaceAndComments(text, position);
    }
    static void scanStringSkipSpaceAndComments(const std::u16string &text, size_t &position);
    // The same through the kept form of the text, when there is one.
    static void scanStringSkipSpace(const std::u16string &text, size_t &position, localExpressionForm *form)
    {
        if (position < text.size() && text[position] > u' ' && text[position] != u'/')
            return;
        if (form != nullptr)
            form->skipSpace(text, position);
        else
            scanStringSkipSpace(text, position);
    }
    static std::u16string scanStringGetNameToken(const std::u16string &text, size_t &position);
    // The same into a buffer the caller keeps, which saves an allocation.
    static void scanStringGetNameTokenInto(const std::u16string &text, size_t &position, std::u16string &name);
    // And its upper-case form beside it, made in the same pass.
    static void scanStringGetNameTokenInto(const std::u16string &text, size_t &position, std::u16string &name,
                                           std::u16string &nameUpper);
    static std::u16string nameToUpper(const std::u16string &name);
    static void nameToUpperInPlace(std::u16string &name);
    // The upper-case form without a copy where there is nothing to change:
    // `name` itself when it is in upper case already, else `storage` filled.
    static const std::u16string &nameToUpperInto(const std::u16string &name, std::u16string &storage);
    static bool isNameChar(char16_t c)
    {
        if (c < 128)
            return localAsciiNameChars.allowed[c];
        return (c >= 0x0410 && c <= 0x044F) || c == 0x0401 || c == 0x0451;
    }

    // A number token (an optional "-", digits, at most one "."); status 36
    // when it has more than 16 characters.
    static bool scanStringGetNumber(localErrorType &status, const std::u16string &text, size_t &position,
                                    double &value);
    // The text between the quote at `position` and the next one like it.
    static bool scanStringGetStringLiteral(const std::u16string &text, size_t &position, std::u16string &literal);
    static bool scanStringGetNumberTokenAndEvaluete(localErrorType &status, const std::u16string &text,
                                                     size_t &position, localValueDescription **result);
    static bool scanStringGetStringTokenAndEvaluete(const std::u16string &text, size_t &position,
                                                     localValueDescription **result);
    static bool scanStringGetOperandAndEvaluete(localErrorType &status, const std::u16string &text,
                                                size_t &position, localValueDescription **result,
                                                localContextUTF8 *context, bool onlyCheck,
                                                localExpressionForm *form = nullptr);
    static bool scanStringGetExpressionAndEvaluete(localErrorType &status, const std::u16string &text,
                                                   size_t &position, localValueDescription **result,
                                                   localContextUTF8 *context, bool onlyCheck,
                                                   localExpressionForm *form = nullptr);
    // The same; a plan that `form` keeps for `position` is run without the
    // entry's call layer, which the statements and arguments of a running
    // program would pass on every evaluation.
    [[gnu::always_inline]] static bool expressionAt(localErrorType &status, const std::u16string &text,
                                                    size_t &position, localValueDescription **result,
                                                    localContextUTF8 *context, bool onlyCheck,
                                                    localExpressionForm *form)
    {
        if (form != nullptr && !onlyCheck && context != nullptr && *result == nullptr) {
            if (const localExpressionForm::plan *plan = form->planAt(position)) {
                if (!localStackCheck(status, "scanStringGetExpressionAndEvaluete"))
                    return false;
                return planRun(status, text, position, *plan, result, context, form);
            }
        }
        return scanStringGetExpressionAndEvaluete(status, text, position, result, context, onlyCheck, form);
    }
    static int32_t scanStringGetUnaryOperator(const std::u16string &text, size_t &position);
    static int32_t scanStringGetBinaryOperator(const std::u16string &text, size_t &position);
    static bool binaryOperationByEnumEvaluate(localErrorType &status, localValueDescription *result,
                                              int32_t operation, const localValueDescription *left,
                                              const localValueDescription *right);
    static bool unaryOperationByEnumEvaluate(localErrorType &status, localValueDescription *result,
                                             int32_t operation, const localValueDescription *operand);

    static bool scanStringGetNameTokenAndEvaluete(localErrorType &status, const std::u16string &text,
                                                  size_t &position, localValueDescription **result,
                                                  localContextUTF8 *context, bool onlyCheck,
                                                  localExpressionForm *form = nullptr);
    // The same for a name that `form` has kept at `position`, a "(" right
    // after it, as it reads when not only checking.
    static bool scanStringGetNameChainCalled(localErrorType &status, const std::u16string &text, size_t &position,
                                             localValueDescription **result, localContextUTF8 *context,
                                             localExpressionForm *form);
    static bool scanStringGetParameters(localErrorType &status, const std::u16string &text, size_t &position,
                                        localValueVector &parameters, localContextUTF8 *context, bool onlyCheck,
                                        localExpressionForm *form = nullptr);

    static bool scanStringGetOperatorAndExec(localErrorType &status, const std::u16string &text, size_t &position,
                                             localContextUTF8 *context, bool onlyCheck);
    // A file name after DO, MODIFY COMMAND...: quoted, or up to a blank or line end.
    static bool scanStringGetFileName(localErrorType &status, const std::u16string &text, size_t &position,
                                      std::u16string &fileName);

    // Listings of DISPLAY FUNCTION / CLASS / MEMORY; an empty mask lists all.
    static void dispFunc(localContextUTF8 *context, const std::u16string &mask);
    static void dispClass(const std::u16string &mask);
    static void dispMemo(localContextUTF8 *context, const std::u16string &mask);
    // A variable as the listings show it: " var [NAME] : TYPE [value]".
    static std::u16string variableLine(const localVariable &variable);
    static bool maskMatches(const std::u16string &mask, const std::u16string &name);

    // Evaluates a whole expression text; a convenience over the scanner for
    // callers that hold a complete expression, and its kept form if they have one.
    [[gnu::always_inline]] static bool evaluate(localErrorType &status, const std::u16string &text,
                                                localValueDescription **result, localContextUTF8 *context,
                                                localExpressionForm *form = nullptr)
    {
        size_t position = 0;
        return expressionAt(status, text, position, result, context, false, form);
    }
    // The value of a plan with a numeric form, when its variables hold
    // numbers and no operation fails; otherwise false, and the plain run
    // gives the value or the failure.
    static bool planNumeric(const localExpressionForm::plan &plan, localContextUTF8 *context, double &value);
    // The expression at `position` evaluated from the plan `form` keeps for
    // it: what the scanner's reading would give, without the reads.
    static bool planRun(localErrorType &status, const std::u16string &text, size_t &position,
                        const localExpressionForm::plan &plan, localValueDescription **result,
                        localContextUTF8 *context, localExpressionForm *form);
};

#endif
