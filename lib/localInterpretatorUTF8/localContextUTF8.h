// A scope of the language: variables, functions, classes (global context
// only) and a parent. A context is also an object of the class CONTEXT, which
// is how the evaluator reaches variables and functions.
#ifndef LOCALCONTEXTUTF8_H
#define LOCALCONTEXTUTF8_H

#include "localClassDeclaration.h"

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <string>
#include <vector>

class localOperatorCompiled;

struct localVariable {
    std::u16string name;
    localValueDescription *value = nullptr; // the variable's own link
};

// Where a lookup of one name from one context ended, kept by a reader that
// looks the same name up again and again. It holds while no context has
// made or lost a variable since: every such change moves the epoch.
struct localVariableCache {
    const localContextUTF8 *from = nullptr;
    localContextUTF8 *scope = nullptr; // null: the name was found nowhere
    size_t index = 0;
    uint64_t epoch = 0;
};

struct localFunctionEntry {
    std::u16string name; // upper case
    localMethodFunction native = nullptr;
    // Shared with the compiled tree that defined it, so the function stays
    // callable after the run that registered it has ended.
    std::shared_ptr<const localOperatorCompiled> block;
};

class localContextUTF8 {
public:
    void (*output)(const std::u16string &text) = nullptr;
    bool interruptible = false;
    localContextUTF8 *parent = nullptr;
    intptr_t unusedWord = 0;
    std::vector<localClassDeclaration *> classes;
    std::vector<localFunctionEntry> functions;
    std::vector<localVariable> variables;
    bool caseSensitive = false;

    static localContextUTF8 *globalContext;
    static int64_t counterStaticTotal;
    // Moves whenever any context makes or loses a variable, or ends; never 0.
    static uint64_t variablesEpoch;

    localContextUTF8();
    explicit localContextUTF8(localContextUTF8 *parentContext);
    localContextUTF8(const localContextUTF8 &) = delete;
    localContextUTF8 &operator=(const localContextUTF8 &) = delete;
    virtual ~localContextUTF8();

    void init(localErrorType &status);

    // Through the chain; `nameUpper` is used in contexts that are not case sensitive.
    localVariable *variableLookup(const std::u16string &name, const std::u16string &nameUpper,
                                  localContextUTF8 **foundIn = nullptr);
    // The same, answered from `cache` when nothing has changed since it was filled.
    localVariable *variableLookup(const std::u16string &name, const std::u16string &nameUpper,
                                  localVariableCache &cache, localContextUTF8 **foundIn = nullptr)
    {
        if (cache.from != this || cache.epoch != variablesEpoch)
            return variableLookupFilling(name, nameUpper, cache, foundIn);
        if (foundIn != nullptr)
            *foundIn = cache.scope;
        return cache.scope != nullptr ? &cache.scope->variables[cache.index] : nullptr;
    }
    localVariable *variableFind(const std::u16string &name, localContextUTF8 **foundIn = nullptr);
    // Appends a variable with a new cell (number 0); no duplicate check.
    localVariable *variableCreate(const std::u16string &name);
    // Takes variables out of the list; their cells keep the links they had.
    void variableForget(size_t index);
    void variablesForget();
    // The stored form of a new variable's name: upper case unless case sensitive.
    std::u16string variableNormalName(const std::u16string &name) const;
    bool variableSet(const std::u16string &name, const localValueDescription *value);
    bool variableSetNumber(const std::u16string &name, double number);
    void variableReplaceCell(localVariable *variable, localValueDescription *cell);
    std::u16string variableToString(const std::u16string &name);

    const localFunctionEntry *functionLookup(const std::u16string &nameUpper, int *depth = nullptr) const;
    void functionRegister(const std::u16string &name, localMethodFunction native);
    void functionRegister(const std::u16string &name, const std::shared_ptr<const localOperatorCompiled> &block);

    bool funcExec(localErrorType &status, const std::u16string &name, localValueVector *arguments,
                  localValueDescription **result);
    bool createObj(localErrorType &status, const std::u16string &className, localValueVector *arguments,
                   localValueDescription **result);

    // Class list, always kept in the global context.
    static bool classRegister(localClassDeclaration *declaration);
    static localClassDeclaration *classFind(const std::u16string &name);
    static bool classRegistered(const std::u16string &name);

    // The class CONTEXT / КОНТЕКСТ, whose objects are contexts.
    static localClassDeclaration *classDeclaration();
    // Whether a bare name, read in any context, is nothing but a variable
    // when one of that name is found: the name is no member of CONTEXT and
    // no constant. Otherwise the read takes the class's way. It depends on
    // the name alone, so a reader may keep the answer.
    static bool mayBeVariable(const std::u16string &name, const std::u16string &nameUpper);
    // "объект класса [КОНТЕКСТ] по адресу [...]"
    std::u16string toString() const;

    // Registration points for the classes that the global context's init
    // registers, in that order (value list, value table, table document).
    typedef localClassDeclaration *(*declarationGetter)();
    static void startupClassAdd(declarationGetter getter);

private:
    // First entry of a name in `functions`, so that a call finds it without a scan.
    std::unordered_map<std::u16string, size_t> functionIndex;

    void constructCommon(localContextUTF8 *parentContext);
    localVariable *variableLookupFilling(const std::u16string &name, const std::u16string &nameUpper,
                                         localVariableCache &cache, localContextUTF8 **foundIn);
    bool variableMatches(const localVariable &variable, const std::u16string &name,
                         const std::u16string &nameUpper) const
    {
        // Every variable read walks the lists: lengths and first letters
        // settle most comparisons before the texts are compared.
        const std::u16string &wanted = caseSensitive ? name : nameUpper;
        return variable.name.size() == wanted.size()
               && (wanted.empty()
                   || (variable.name[0] == wanted[0]
                       && std::char_traits<char16_t>::compare(variable.name.data(), wanted.data(), wanted.size()) == 0));
    }
};

// Runs a compiled function body (defined with the executor).
bool localBlockCall(localErrorType &status, localContextUTF8 *context, const localOperatorCompiled *block,
                    localValueVector *arguments, localValueDescription **result);

#endif
