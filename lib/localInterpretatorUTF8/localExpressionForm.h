// What the scanner has read from one expression text, kept by position.
//
// An expression is evaluated by reading its text, and every read of the
// scanner (blanks skipped, an operator, a number, a string, a name) depends
// on nothing but the text and the position it starts from. A compiled
// statement runs its text again and again, so each read is made once and
// its answer kept here under its starting position: the next evaluation
// finds the same answer without reading the characters again. The
// evaluation itself, and so every value, status, message and cell, stays
// what reading the text gives.
//
// A form belongs to one text and is handed that text with every read. It
// fills itself as reads arrive, also while an evaluation of the same text is
// under way further out (a recursive call): kept names never move, so the
// references it hands out stay good for the form's lifetime.
#ifndef LOCALEXPRESSIONFORM_H
#define LOCALEXPRESSIONFORM_H

#include "localContextUTF8.h"

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

class localExpressionForm {
public:
    // A name as the scanner reads it: as written and in upper case.
    struct name {
        std::u16string written;
        std::u16string upper;
        // A quoted string's text, shared by every value read from it.
        localText literal;
        // Whether a bare read of this name can be a variable, which the
        // context decides once per name (-1: not asked yet).
        mutable int8_t mayBeVariable = -1;
        // Where its last lookup as a variable ended.
        mutable localVariableCache lookup;
        // Where its last lookup as a function called on a context ended.
        mutable localFunctionCache call;
        // Its member in the class it was last called on as a method (null:
        // none); a class's members are fixed once it is declared.
        mutable const localClassDeclaration *methodClass = nullptr;
        mutable const localClassMember *method = nullptr;

        // The variable this name read bare stands for in `context`; null
        // when there is none or the name is no plain variable (a member of
        // CONTEXT, a constant), which the reading through CONTEXT answers.
        localVariable *variableIn(localContextUTF8 *context) const
        {
            if (mayBeVariable < 0)
                mayBeVariable = localContextUTF8::mayBeVariable(written, upper) ? 1 : 0;
            return mayBeVariable == 1 ? context->variableLookup(written, upper, lookup) : nullptr;
        }
    };

    // The reading of a whole expression from one position, kept once the
    // scanner has read it through to its end: the prefix, then each operand
    // where it starts, with the operator read before it. Which reads follow
    // which depends on nothing but the text, so every later evaluation
    // reads the same, and runs the same operations on the same cells, from
    // the plan. An expression with a conditional has none: its branches are
    // read in a mode of their own.
    struct plan {
        // `variable`: a name with neither "(" nor "." right after it;
        // `call`: a name with "(" right after it.
        enum operandKind : uint8_t { number, string, variable, call, name, bracket };
        struct step {
            int32_t operation = 0;     // the operator before the operand (none for the first)
            uint32_t operatorEnd = 0;  // where the reading stood after that operator
            uint32_t operandStart = 0; // blanks skipped
            uint32_t operandEnd = 0;   // where its reading ended
            operandKind kind = name;
            double number = 0.0;
            const localExpressionForm::name *token = nullptr; // a string's text or a name
        };
        int32_t unary = 0;
        std::vector<step> steps;

        // The same plan as the operations it makes, in order, when every
        // operand is a number, a variable or a bracket of such, every
        // operator is arithmetic or a comparison, and no comparison's result
        // feeds another operator: run on numbers it needs no cells, since
        // every cell it would take but the result's is given back before it
        // ends. Empty: the plan is not of that kind.
        struct numericOperation {
            enum kindType : uint8_t { fromVariable, fromNumber, operate } kind = fromNumber;
            int32_t operation = 0;
            double number = 0.0;
            const localExpressionForm::name *token = nullptr;
        };
        std::vector<numericOperation> numeric;
        static constexpr int numericDepth = 32; // numbers held at once, at most
        // Which free cell the result takes (0 the lowest), as the cells of
        // numbers, bracket copies and partial results, taken and given back
        // lowest first, would have left it.
        uint8_t numericCell = 0;
        // How many cells the plain run holds at once at most: with fewer
        // free, it stops the program, and so the plain run is left to do.
        uint8_t numericCells = 0;
        bool numericBool = false; // the last operator compares
        bool numericBrackets = false;
    };

    // Where the arguments of a call whose "(" stands at a position start,
    // and where its ")" stands: what the scanner's reading of the list
    // found, which depends on the text alone.
    struct argumentList {
        std::vector<uint32_t> starts;
        uint32_t close = 0;
    };

    explicit localExpressionForm(const std::u16string &text);

    const argumentList *argumentsAt(size_t position) const { return answers[position].arguments; }
    void argumentsKeep(size_t position, const std::vector<uint32_t> &starts, size_t close);

    // The plan of the expression at `position`, if one is kept.
    const plan *planAt(size_t position) const { return answers[position].expression; }
    // Whether a reading from `position` should be recorded for a plan.
    bool planWanted(size_t position) const
    {
        return answers[position].expression == nullptr && !answers[position].planRefused;
    }
    // Keeps what a reading from `position` recorded: the prefix, and for each
    // operand the operator before it, where that ended and where the operand
    // starts and ends (its kind and value are taken from the reads kept here).
    void planKeep(const std::u16string &text, size_t position, int32_t unary, const std::vector<plan::step> &steps);
    // The expression at `position` holds a conditional.
    void planRefuse(size_t position) { answers[position].planRefused = true; }

    // Each does what the scanner's routine of the same kind does at
    // `position`, and leaves `position` where that routine would. Kept
    // answers are given inline; the first read of a place goes to the text.
    void skipSpace(const std::u16string &text, size_t &position)
    {
        const answer &at = answers[position];
        position = at.skipEnd != unknown ? size_t(at.skipEnd) : skipSpaceReading(text, position);
    }
    int32_t unaryOperator(const std::u16string &text, size_t &position) { return operatorAt(text, position, prefix); }
    int32_t binaryOperator(const std::u16string &text, size_t &position) { return operatorAt(text, position, infix); }
    // Blanks skipped first, as the scanner's name reading does.
    const name &nameToken(const std::u16string &text, size_t &position)
    {
        const token *read = answers[position].name;
        if (read == nullptr)
            read = nameTokenReading(text, position);
        position = read->end;
        return read->text;
    }
    // A number token at `position`; false when it is too long (the position
    // is then where the scanner's reading stopped).
    bool number(const std::u16string &text, size_t &position, double &value)
    {
        const token &read = literalAt(text, position, true);
        position = read.end;
        value = read.number;
        return read.readable;
    }
    // A quoted string at `position`; null when its closing quote is missing
    // (the position is then the end of the text).
    const localText *stringLiteral(const std::u16string &text, size_t &position)
    {
        const token &read = literalAt(text, position, false);
        position = read.end;
        return read.readable ? &read.text.literal : nullptr;
    }

private:
    static constexpr int32_t unknown = -1;
    // A name, or a literal: a number or a string, which the first character
    // tells apart, so one position never holds both.
    struct token {
        uint32_t end = 0;
        bool readable = true; // false: a number too long, a string not closed
        double number = 0.0;
        name text;
    };
    // One place may be read for a prefix and for an operator: "!" is one
    // and not the other.
    enum operatorPlace { prefix = 0, infix = 1 };
    // The answers kept for one starting position; the tokens live in `tokens`.
    struct answer {
        int32_t skipEnd = unknown;
        int32_t operatorEnd[2] = {unknown, unknown};
        int8_t operation[2] = {0, 0};
        bool planRefused = false;
        token *name = nullptr;
        token *literal = nullptr;
        const plan *expression = nullptr;
        const argumentList *arguments = nullptr;
    };

    int32_t operatorAt(const std::u16string &text, size_t &position, operatorPlace place)
    {
        const answer &at = answers[position];
        if (at.operatorEnd[place] == unknown)
            return operatorReading(text, position, place);
        position = size_t(at.operatorEnd[place]);
        return at.operation[place];
    }
    size_t skipSpaceReading(const std::u16string &text, size_t position);
    int32_t operatorReading(const std::u16string &text, size_t &position, operatorPlace place);
    const token *nameTokenReading(const std::u16string &text, size_t position);
    // The literal kept at `position`, read first if it is not there yet.
    const token &literalAt(const std::u16string &text, size_t position, bool number)
    {
        const token *read = answers[position].literal;
        return read != nullptr ? *read : literalReading(text, position, number);
    }
    const token &literalReading(const std::u16string &text, size_t position, bool number);

    // Fills a kept plan's numeric form, when it has one.
    void numericKeep(plan &made) const;

    std::vector<answer> answers;
    // Deques, so that a kept token or plan never moves while the form grows.
    std::deque<token> tokens;
    std::deque<plan> plans;
    std::deque<argumentList> argumentLists;
};

#endif
