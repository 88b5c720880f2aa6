// Program text, as DO compiles it, then runs it in a fresh context holding a
// few variables and objects. Every record of the tree executes through a
// hook that ends the run with status 55 after a bounded number of steps, or
// when the run has taken its share of cells or heap.
//
// Immediate statements that reach the machine (DO, RUN, DIR, MODIFY and
// EDIT COMMAND) or that give up cells on purpose (CLEAR MEMORY keeps its
// variables' cells busy) stay in the compiled tree as COMMAND records; a
// program holding one is compiled and not run.
#include "localFuzzSupport.h"

#include "localInterpretatorUTF8.h"
#include "localOperatorCompiled.h"

typedef localInterpretatorUTF8 li;

namespace {

constexpr unsigned stepLimit = 5000;
unsigned steps = 0;

bool boundedExecute(localErrorType &status, localContextUTF8 *context, const localOperatorCompiled *record,
                    localValueVector *arguments, localValueDescription **result)
{
    if (++steps > stepLimit || localFuzz::overBudget()) {
        status = localErrorTypeINTERRUPTED;
        return false;
    }
    return localOperatorCompiled::executeRecord(status, context, record, arguments, result);
}

// The command word in full, or cut to four letters or more.
bool commandWord(const std::u16string &word, const std::u16string &full)
{
    return word == full || (word.size() >= 4 && word.size() <= full.size() && full.compare(0, word.size(), word) == 0);
}

bool reachesTheMachine(const localOperatorCompiled &record)
{
    if (record.type == localCompiledOperatorTypeCOMMAND) {
        size_t position = 0;
        const std::u16string word = li::nameToUpper(li::scanStringGetNameToken(record.expression, position));
        if (word == u"DO" || word == u"RUN" || word == u"DIR" || commandWord(word, u"DIRECTORY")
            || commandWord(word, u"MODIFY") || commandWord(word, u"EDIT") || commandWord(word, u"CLEAR"))
            return true;
    }
    for (const localOperatorCompiled &child : record.children)
        if (reachesTheMachine(child))
            return true;
    for (const localCompiledFunction &function : record.functions)
        if (reachesTheMachine(*function.block))
            return true;
    return false;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    localFuzz::setUp();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::u16string text = localFuzz::textOf(data, size);
    const localFuzz::cellsReturn cells;

    // Every record takes its execute pointer from the block it is compiled into.
    localOperatorCompiled program(boundedExecute);
    localOperatorCompiled *pointer = &program;
    localErrorType status = localErrorTypeOK;
    size_t position = 0;
    const bool compiled = textCompile(status, text, position, &pointer);
    localFuzz::require(position <= text.size(), "the compiler ended past the text");
    if (!compiled || status != localErrorTypeOK || reachesTheMachine(program))
        return 0;

    localContextUTF8 *context = localFuzz::contextWithValues();
    steps = 0;
    localValueVector noArguments;
    localValueDescription *result = nullptr;
    program.execute(status, context, &program, &noArguments, &result);
    localValueRelease(result);
    delete context;
    return 0;
}
