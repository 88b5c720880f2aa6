// Running a compiled tree: a recursion over records, each handing its
// expression text to the evaluator, which reads it anew every time. The
// status carries the flow of control while running:
//   54 normal   55 interrupted by the user   56 BREAK travelling up
//   57 CONTINUE (no statement makes it yet)  58 RETURN travelling up, the
//   value stands in the result
// BLOCK stops its list on 56 and 58; WHILE ends on 56 (turning it back into
// 54) and on 58 (keeping it); a function call ends both at its boundary.
//
// Children run in place, through their own execute pointer, so that a
// debugger can put itself in front of any record.
#include "localOperatorCompiled.h"

#include "localInterpretatorUTF8.h"
#include "localServices.h"
#include "localStack.h"
#include "localString.h"

#include <iostream>

namespace {

typedef localInterpretatorUTF8 li;

void writeLine(std::string &&line)
{
    std::cout << line << std::flush;
}

// The evaluation of an assignment's text: as if the text stood in round
// brackets, so anything the scan leaves behind is a missing ")". The bracket's
// own copy of the value is left to the caller (see expressionRun).
bool evaluateBracketed(localErrorType &status, const localOperatorCompiled *record, localContextUTF8 *context,
                       localValueDescription **result)
{
    const std::u16string &expression = record->expression;
    localExpressionForm *form = record->expressionForm();
    size_t position = 0;
    if (!li::expressionAt(status, expression, position, result, context, false, form))
        return false;
    li::scanStringSkipSpace(expression, position, form);
    if (position < expression.size()) {
        localValueRelease(*result);
        status = localErrorTypeSYNTAXcloseBracket;
        return false;
    }
    return true;
}

// Registers the functions a block defines; they are visible from the block's
// start, and entering the block again overwrites the entries.
inline void functionsRegister(localContextUTF8 *context, const localOperatorCompiled *record)
{
    for (const localCompiledFunction &function : record->functions)
        context->functionRegister(function.name, function.block);
}

// The statements of a block, in order. An empty block fails with status 54
// and no message: an empty loop body or branch ends the run.
bool blockChildrenRun(localErrorType &status, localContextUTF8 *context, const localOperatorCompiled *record,
                      localValueVector *arguments, localValueDescription **result)
{
    functionsRegister(context, record);
    if (record->children.empty())
        return false;
    for (const localOperatorCompiled &child : record->children) {
        localValueRelease(*result);
        if (!child.execute(status, context, &child, arguments, result))
            return false;
        if (status == localErrorTypeBREAK || status == localErrorTypeRETURN)
            break;
    }
    return true;
}

// A function body: a new context under the caller's (dynamic scope), the
// parameters bound by reference, or by value where the heading says VAR.
// Out of line, as the rest below that prints or builds texts: the
// executor's frame stays small for the statements that run most.
[[gnu::noinline]] bool functionBodyRun(localErrorType &status, localContextUTF8 *context, const localOperatorCompiled *record,
                     localValueVector *arguments, localValueDescription **result)
{
    const size_t given = arguments != nullptr ? arguments->size() : 0;
    if (given < record->parameters.size()) {
        status = localErrorTypePARAMcount;
        localDiag(u"Функция [" + record->name + u"] ожидает параметров: "
                      + localNumberToWide(double(record->parameters.size())) + u", передано: "
                      + localNumberToWide(double(given)),
                  true, __func__, __FILE__, __LINE__);
        return false;
    }
    // Deleted on every way out; arguments past the parameters are ignored.
    localContextUTF8 call(context);
    for (size_t i = 0; i < record->parameters.size(); ++i) {
        const localCompiledParameter &parameter = record->parameters[i];
        localValueDescription *argument = (*arguments)[i];
        if (parameter.byValue)
            localValueDescription::localValueCopy(call.variableCreate(parameter.name)->value, argument);
        else
            call.variableCreateBound(parameter.name, argument);
    }
    return blockChildrenRun(status, &call, record, arguments, result);
}

// The numeric form of the plan a record's text starts with, when it has one
// and the stack has room for the evaluation it stands for.
inline const localExpressionForm::plan *numericPlan(const localOperatorCompiled *record)
{
    const localExpressionForm::plan *plan = record->expressionForm()->planAt(0);
    return plan != nullptr && !plan->numeric.empty() && !localStackExhausted() ? plan : nullptr;
}

// A condition's truth from its numeric form, without a cell: the one its
// value would take is given back at once. False: the plain way decides.
inline bool numericTruth(const localOperatorCompiled *record, localContextUTF8 *context, bool &truth)
{
    const localExpressionForm::plan *plan = numericPlan(record);
    double value = 0.0;
    if (plan == nullptr || !li::planNumeric(*plan, context, value))
        return false;
    truth = value > 0.0;
    return true;
}

// An assignment of a numeric text to a variable that exists: its value
// goes into the variable's cell as the copy from the result's cell would
// put it there, and that cell, given back right after, is not taken.
// False: the plain way assigns.
inline bool numericAssignment(localContextUTF8 *context, const localOperatorCompiled *record)
{
    if (record->name.empty() || record->declares)
        return false;
    const localExpressionForm::plan *plan = numericPlan(record);
    if (plan == nullptr)
        return false;
    size_t position = plan->steps.back().operandEnd;
    li::scanStringSkipSpace(record->expression, position, record->expressionForm());
    if (position < record->expression.size())
        return false;
    localVariable *variable = context->variableLookup(record->name, record->name, record->target);
    double value = 0.0;
    if (variable == nullptr || !li::planNumeric(*plan, context, value))
        return false;
    localValueDescription *cell = variable->value;
    cell->localValueClear();
    cell->type = plan->numericBool ? localValueTypeBOO : localValueTypeNUM;
    cell->localValueNumber = value;
    cell->localValueClass = nullptr;
    cell->localValueObject = nullptr;
    cell->localValueString.clear();
    return true;
}

// The messages of failed statements, out of line; they name the statement
// kinds' runners, where users read them.
// "<head><tail>ERROR!!! <status><tail>", the tail naming `routine`.
[[gnu::cold]] bool statementFault(localErrorType status, const char *routine, std::string out)
{
    const std::string tail = localDiagTail(routine, __FILE__, __LINE__);
    out += tail;
    out += "ERROR!!! ";
    localNarrowAppend(out, localErrorText(status));
    out += tail;
    writeLine(std::move(out));
    return false;
}

[[gnu::cold, gnu::noinline]] bool expressionFault(localErrorType status, const localOperatorCompiled *record)
{
    std::string out = "\n>> ";
    localNarrowAppend(out, record->name);
    out += '=';
    localNarrowAppend(out, record->expression);
    out += "; ";
    return statementFault(status, "expressionRun", std::move(out));
}

[[gnu::cold, gnu::noinline]] bool conditionFault(localErrorType status, const localOperatorCompiled *branch)
{
    std::string out = ">> ";
    localNarrowAppend(out, branch->expression);
    return statementFault(status, "ifRun", std::move(out));
}

[[gnu::cold, gnu::noinline]] bool returnFault(const localOperatorCompiled *record)
{
    std::string out = localNarrow(u"localCompiledOperatorTypeRENURN with expression [");
    localNarrowAppend(out, record->expression);
    out += "ERROR!!!";
    out += localDiagTail("returnRun", __FILE__, __LINE__);
    writeLine(std::move(out));
    return false;
}

bool expressionRun(localErrorType &status, localContextUTF8 *context, const localOperatorCompiled *record,
                   localValueDescription **result)
{
    if (numericAssignment(context, record))
        return true;
    if (!evaluateBracketed(status, record, context, result))
        return expressionFault(status, record);
    if (record->name.empty()) {
        localValueRelease(*result);
        return true;
    }
    localContextUTF8 *foundIn = nullptr;
    localVariable *variable = context->variableLookup(record->name, record->name, record->target, &foundIn);
    if (record->declares || variable == nullptr) {
        // VAR makes a local variable, hiding one of an outer context; a name
        // found nowhere is made here without any declaration.
        if (foundIn == context) {
            localValueRelease(*result);
            status = localErrorTypeVARIABLEredeclared;
            return false;
        }
        // The brackets around the text copy its value into a new cell before
        // the new variable takes its own, and which cells variables hold
        // shows in the memory dump. A variable that exists takes no cell:
        // there the copy, made and given back with nothing taken between,
        // would leave the table as it is, and that path goes without it.
        localValueMoveToNewCell(*result);
        variable = context->variableCreate(record->name);
    }
    localValueDescription::localValueCopyAndRelease(variable->value, *result);
    return true;
}

bool ifRun(localErrorType &status, localContextUTF8 *context, const localOperatorCompiled *record,
           localValueVector *arguments, localValueDescription **result)
{
    if (record->children.empty())
        return false;
    for (const localOperatorCompiled &branch : record->children) {
        bool taken = false;
        if (!branch.expression.empty() && !numericTruth(&branch, context, taken)) {
            localValueDescription *condition = nullptr;
            if (!li::evaluate(status, branch.expression, &condition, context, branch.expressionForm()))
                return conditionFault(status, &branch);
            taken = condition->isTrue();
            localValueRelease(condition);
        }
        if (!branch.expression.empty() && !taken)
            continue;
        // A branch adds no context: what it makes belongs to the surrounding one.
        return branch.execute(status, context, &branch, arguments, result);
    }
    return true;
}

[[gnu::noinline]] bool printRun(localErrorType &status, localContextUTF8 *context, const localOperatorCompiled *record)
{
    localValueDescription *value = nullptr;
    if (!li::evaluate(status, record->expression, &value, context, record->expressionForm())) {
        std::string out = localNarrow(record->expression);
        out += LOCAL_DIAG_TAIL;
        out += "ERROR!!! ";
        localNarrowAppend(out, localErrorText(status));
        out += " in  expression.";
        out += LOCAL_DIAG_TAIL;
        out += "Expression below: \n";
        localNarrowAppend(out, record->expression);
        out += " in  expression";
        out += LOCAL_DIAG_TAIL;
        writeLine(std::move(out));
        return false;
    }
    std::string line = localNarrow(value->toString());
    line += '\n';
    std::cout << line;
    localValueRelease(value);
    return true;
}

bool returnRun(localErrorType &status, localContextUTF8 *context, const localOperatorCompiled *record,
               localValueDescription **result)
{
    localValueDescription *value = nullptr;
    if (!li::evaluate(status, record->expression, &value, context, record->expressionForm()))
        return returnFault(record);
    status = localErrorTypeRETURN;
    // The value travels up in a cell of its own. The compiled text stands in
    // round brackets, so the evaluator's cell is such a copy already, held by
    // nobody else.
    if (value->linkCounter == 1) {
        *result = value;
    } else {
        *result = localValueNew();
        localValueDescription::localValueCopy(*result, value);
        localValueRelease(value);
    }
    return true;
}

bool whileRun(localErrorType &status, localContextUTF8 *context, const localOperatorCompiled *record,
              localValueVector *arguments, localValueDescription **result)
{
    for (;;) {
        if (context->interruptible && localServices::instance().escapePressed()) {
            status = localErrorTypeINTERRUPTED;
            return false;
        }
        bool again = false;
        if (!numericTruth(record, context, again)) {
            localValueDescription *condition = nullptr;
            if (!li::evaluate(status, record->expression, &condition, context, record->expressionForm())) {
                LOCAL_DIAG(u"ERROR!!!");
                return false;
            }
            again = condition->localValueNumber > 0.0;
            localValueRelease(condition);
        }
        if (!again)
            return true;
        for (const localOperatorCompiled &child : record->children) {
            localValueRelease(*result);
            if (!child.execute(status, context, &child, arguments, result))
                return false;
            if (status == localErrorTypeRETURN)
                return true;
            if (status == localErrorTypeBREAK) {
                status = localErrorTypeOK;
                return true;
            }
        }
    }
}

[[gnu::noinline]] bool commandRun(localErrorType &status, localContextUTF8 *context, const localOperatorCompiled *record)
{
    // The ";" belongs to the statement: an unquoted file name of DO that
    // ended at a line end reads it as its last character.
    std::u16string statement;
    statement.reserve(record->expression.size() + 1);
    statement += record->expression;
    statement += u';';
    size_t position = 0;
    if (li::scanStringGetOperatorAndExec(status, statement, position, context, false))
        return true;
    std::string out = localNarrow(statement);
    out += LOCAL_DIAG_TAIL;
    localNarrowAppend(out, localErrorText(status));
    out += "ERROR!!!";
    out += LOCAL_DIAG_TAIL;
    writeLine(std::move(out));
    return false;
}

} // namespace

localOperatorCompiled::localOperatorCompiled(localExecuteFunction executeFunction)
    : execute(executeFunction != nullptr ? executeFunction : &localOperatorCompiled::executeRecord)
{
}

bool localOperatorCompiled::executeRecord(localErrorType &status, localContextUTF8 *context,
                                          const localOperatorCompiled *record, localValueVector *arguments,
                                          localValueDescription **result)
{
    localResultMustBeNull(result, "localOperatorCompiled::execute()");
    status = localErrorTypeOK;
    switch (record->type) {
    case localCompiledOperatorTypeBLOCK:
        if (record->name.empty())
            return blockChildrenRun(status, context, record, arguments, result);
        return functionBodyRun(status, context, record, arguments, result);
    case localCompiledOperatorTypeBREAK:
        status = localErrorTypeBREAK;
        return true;
    case localCompiledOperatorTypeCONTINUE:
        status = localErrorTypeCONTINUE;
        return true;
    case localCompiledOperatorTypeCOMMAND:
        return commandRun(status, context, record);
    case localCompiledOperatorTypeEXPRESSION:
        return expressionRun(status, context, record, result);
    case localCompiledOperatorTypeIF:
        return ifRun(status, context, record, arguments, result);
    case localCompiledOperatorTypePRINT:
        return printRun(status, context, record);
    case localCompiledOperatorTypeRENURN:
        return returnRun(status, context, record, result);
    case localCompiledOperatorTypeWHILE:
        return whileRun(status, context, record, arguments, result);
    default:
        LOCAL_DIAG(u"localCompiledOperatorTypeNONE ");
        return false;
    }
}

bool localBlockCall(localErrorType &status, localContextUTF8 *context, const localOperatorCompiled *block,
                    localValueVector *arguments, localValueDescription **result)
{
    return block->execute(status, context, block, arguments, result);
}

// --- the tree printer --------------------------------------------------------

namespace {

void coutLine(const localOperatorCompiled &record, int indent, const std::u16string &text)
{
    std::string out = "[" + std::to_string(record.position) + "]  ";
    for (int i = 0; i < indent; ++i)
        out += "..... ";
    localNarrowAppend(out, text);
    out += localDiagTail("COUT", __FILE__, __LINE__);
    std::cout << out;
}

} // namespace

void localOperatorCompiled::COUT(int indent) const
{
    const std::u16string depth = localNumberToWide(indent);
    switch (type) {
    case localCompiledOperatorTypeBLOCK: {
        std::u16string head = u"// start localCompiledOperatorTypeBLOCK with indent=" + depth;
        if (!name.empty()) {
            head += u" function " + name + u"(";
            for (size_t i = 0; i < parameters.size(); ++i) {
                if (i > 0)
                    head += u", ";
                if (parameters[i].byValue)
                    head += u"VAR ";
                head += parameters[i].nameWritten;
            }
            head += u")";
        }
        coutLine(*this, indent, head);
        for (const localCompiledFunction &function : functions)
            function.block->COUT(indent + 1);
        for (const localOperatorCompiled &child : children)
            child.COUT(indent);
        coutLine(*this, indent, u"// finish localCompiledOperatorTypeBLOCK with indent=" + depth);
        break;
    }
    case localCompiledOperatorTypeBREAK:
        coutLine(*this, indent, u"BREAK ; ");
        break;
    case localCompiledOperatorTypeCONTINUE:
        coutLine(*this, indent, u"localCompiledOperatorTypeBLOCK ");
        break;
    case localCompiledOperatorTypeCOMMAND:
        coutLine(*this, indent, expression + u"; ");
        break;
    case localCompiledOperatorTypeEXPRESSION:
        coutLine(*this, indent, (name.empty() ? std::u16string() : name + u"=") + expression + u"; ");
        break;
    case localCompiledOperatorTypeIF:
        coutLine(*this, indent, u"localCompiledOperatorTypeIF ");
        for (size_t i = 0; i < children.size(); ++i) {
            const localOperatorCompiled &branch = children[i];
            if (branch.expression.empty())
                coutLine(branch, indent, u"else ");
            else
                coutLine(branch, indent, (i == 0 ? u"if (" : u"elseif (") + branch.expression + u") then ");
            branch.COUT(indent + 1);
        }
        coutLine(*this, indent, u"endif; ");
        break;
    case localCompiledOperatorTypePRINT:
        coutLine(*this, indent, u"? (" + expression + u") ; ");
        break;
    case localCompiledOperatorTypeRENURN:
        coutLine(*this, indent, u"localCompiledOperatorTypeRENURN " + expression);
        break;
    case localCompiledOperatorTypeWHILE:
        coutLine(*this, indent, u"while " + expression + u" do");
        for (const localOperatorCompiled &child : children)
            child.COUT(indent + 1);
        coutLine(*this, indent, u"enddo; ");
        break;
    default:
        coutLine(*this, indent, u"localCompiledOperatorTypeNONE ");
        break;
    }
    std::cout << std::flush;
}
