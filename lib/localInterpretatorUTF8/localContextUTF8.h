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

// A global function of the language (see localGlobalFunctions.h). A handler
// gets the argument vector (never null) and a fresh result cell (number 0);
// it checks count, then kinds, then values (statuses 31, 33, 32).
typedef bool (*localGlobalFunctionHandler)(localErrorType &status, localContextUTF8 *context,
                                           localValueVector &arguments, localValueDescription *result);

struct localVariable {
    localVariable(const std::u16string &variableName, localValueDescription *cell) : name(variableName), value(cell) {}
    std::u16string name;
    localValueDescription *value = nullptr; // the variable's own link
};

// Where a lookup of one name from one context ended, kept by a reader that
// looks the same name up again and again. It holds while no context that
// such a lookup has walked through has made or lost a variable since: every
// such change moves the epoch. Contexts are told apart by serial number, so
// a context made where an ended one stood is a stranger to the cache.
struct localVariableCache {
    uint64_t from = 0;
    localContextUTF8 *scope = nullptr; // null: the name was found nowhere
    size_t index = 0;
    uint64_t epoch = 0;
    // Found in the context it was looked up from, as a function's
    // parameters are at every call: worth trying there first.
    bool own = false;
};

// Where a lookup of one function name ended, for a reader that calls it
// again and again. The answer depends only on the first context of the
// chain that holds functions, and holds while no function is registered.
struct localFunctionCache {
    const localContextUTF8 *first = nullptr;
    uint64_t epoch = 0;
    const localContextUTF8 *scope = nullptr; // null: found nowhere
    size_t index = 0;
    // The built-in of the name, which depends on the name alone.
    bool builtInKnown = false;
    const localGlobalFunctionHandler *builtIn = nullptr;
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
    // Moves whenever a context that a kept lookup may have walked through
    // makes or loses a variable; never 0.
    static uint64_t variablesEpoch;
    // Moves with every function registered anywhere; never 0.
    static uint64_t functionsEpoch;

    localContextUTF8();
    explicit localContextUTF8(localContextUTF8 *parentContext);
    localContextUTF8(const localContextUTF8 &) = delete;
    localContextUTF8 &operator=(const localContextUTF8 &) = delete;
    virtual ~localContextUTF8();

    void init(localErrorType &status);

    // Through the chain; `nameUpper` is used in contexts that are not case sensitive.
    localVariable *variableLookup(const std::u16string &name, const std::u16string &nameUpper,
                                  localContextUTF8 **foundIn = nullptr)
    {
        for (localContextUTF8 *scope = this; scope != nullptr; scope = scope->parent) {
            for (localVariable &variable : scope->variables) {
                if (scope->variableMatches(variable, name, nameUpper)) {
                    if (foundIn != nullptr)
                        *foundIn = scope;
                    return &variable;
                }
            }
        }
        return nullptr;
    }
    // The same, answered from `cache` when nothing has changed since it was filled.
    localVariable *variableLookup(const std::u16string &name, const std::u16string &nameUpper,
                                  localVariableCache &cache, localContextUTF8 **foundIn = nullptr)
    {
        if (cache.from != serial || cache.epoch != variablesEpoch) {
            localVariable *own = cache.own ? ownVariableAt(cache.index, name, nameUpper) : nullptr;
            if (own == nullptr)
                return variableLookupFilling(name, nameUpper, cache, foundIn);
            if (foundIn != nullptr)
                *foundIn = this;
            return own;
        }
        if (foundIn != nullptr)
            *foundIn = cache.scope;
        return cache.scope != nullptr ? &cache.scope->variables[cache.index] : nullptr;
    }
    localVariable *variableFind(const std::u16string &name, localContextUTF8 **foundIn = nullptr);
    // Appends a variable with a new cell (number 0); no duplicate check.
    localVariable *variableCreate(const std::u16string &name);
    // Appends a variable that shares `cell` (one link more), as a parameter
    // bound by reference does.
    localVariable *variableCreateBound(const std::u16string &name, localValueDescription *cell);
    // Takes variables out of the list; their cells keep the links they had.
    void variableForget(size_t index);
    void variablesForget();
    // The stored form of a new variable's name: upper case unless case sensitive.
    std::u16string variableNormalName(const std::u16string &name) const;
    bool variableSet(const std::u16string &name, const localValueDescription *value);
    bool variableSetNumber(const std::u16string &name, double number);
    void variableReplaceCell(localVariable *variable, localValueDescription *cell);
    std::u16string variableToString(const std::u16string &name);

    // Through the chain; `foundIn` receives the context that holds the entry.
    const localFunctionEntry *functionLookup(const std::u16string &nameUpper,
                                             const localContextUTF8 **foundIn = nullptr) const;
    // The same, answered from `cache` when nothing has changed since it was filled.
    const localFunctionEntry *functionLookup(const std::u16string &nameUpper, localFunctionCache &cache,
                                             const localContextUTF8 **foundIn) const
    {
        const localContextUTF8 *first = firstFunctionHolder();
        if (cache.epoch != functionsEpoch || cache.first != first || first == nullptr)
            return functionLookupFilling(nameUpper, first, cache, foundIn);
        *foundIn = cache.scope;
        return cache.scope != nullptr ? &cache.scope->functions[cache.index] : nullptr;
    }
    void functionRegister(const std::u16string &name, localMethodFunction native);
    void functionRegister(const std::u16string &name, const std::shared_ptr<const localOperatorCompiled> &block);

    bool funcExec(localErrorType &status, const std::u16string &name, localValueVector *arguments,
                  localValueDescription **result);
    // A method call `nameUpper` on the CONTEXT object `holderObject`, made
    // in `context`: a user function of the holder's chain first, then a
    // built-in; a null holder stands for `context`, and with no context the
    // empty name makes a new one. `cache` (may be null) keeps the lookup.
    static bool memberCall(localErrorType &status, localContextUTF8 *context, void *holderObject,
                           const std::u16string &nameUpper, localValueVector *arguments,
                           localValueDescription **result, localFunctionCache *cache = nullptr);
    // Whether a call that found `entry` (null: nothing) goes on to the
    // built-in of its name: the entry is no user function and no native
    // function of its own, a method of CONTEXT being the built-ins' dispatch.
    static bool leadsToBuiltIn(const localFunctionEntry *entry);
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
    // Told apart from every context made before or after, over the whole run.
    uint64_t serial = 0;
    // Whether a kept lookup may have walked through this context: one was
    // made from it, or a context was made under it. Only then does a change
    // of its variables need to move the epoch.
    bool watched = false;
    // The nearest context above with functions, as it was when this one was
    // made; good while `functionsEpoch` has not moved since.
    const localContextUTF8 *functionsAbove = nullptr;
    uint64_t functionsEpochAtBirth = 0;
    // First entry of a name in `functions`, so that a call finds it without a
    // scan; made with the first function, as most contexts never hold one.
    std::unique_ptr<std::unordered_map<std::u16string, size_t>> functionIndex;

    void constructCommon(localContextUTF8 *parentContext);
    void variablesChanged()
    {
        if (watched)
            ++variablesEpoch;
    }
    // The first context of the chain, this one included, that holds functions.
    const localContextUTF8 *firstFunctionHolder() const
    {
        const localContextUTF8 *scope = this;
        while (scope != nullptr && scope->functions.empty()) {
            if (scope->functionsEpochAtBirth == functionsEpoch)
                return scope->functionsAbove;
            scope = scope->parent;
        }
        return scope;
    }
    const localFunctionEntry *functionLookupFilling(const std::u16string &nameUpper, const localContextUTF8 *first,
                                                    localFunctionCache &cache,
                                                    const localContextUTF8 **foundIn) const;
    localFunctionEntry *functionEntryFor(const std::u16string &nameUpper);
    localVariable *variableLookupFilling(const std::u16string &name, const std::u16string &nameUpper,
                                         localVariableCache &cache, localContextUTF8 **foundIn);
    // The variable at `index` of this context, if the name's lookup would
    // end there: it has the name and none before it has.
    localVariable *ownVariableAt(size_t index, const std::u16string &name, const std::u16string &nameUpper)
    {
        if (index >= variables.size() || !variableMatches(variables[index], name, nameUpper))
            return nullptr;
        for (size_t before = 0; before < index; ++before)
            if (variableMatches(variables[before], name, nameUpper))
                return nullptr;
        return &variables[index];
    }
    bool variableMatches(const localVariable &variable, const std::u16string &name,
                         const std::u16string &nameUpper) const
    {
        // Every variable read walks the lists: lengths and first letters
        // settle most comparisons before the texts are compared.
        const std::u16string &wanted = caseSensitive ? name : nameUpper;
        const size_t length = wanted.size();
        return variable.name.size() == length
               && (length == 0
                   || (variable.name[0] == wanted[0]
                       && std::char_traits<char16_t>::compare(variable.name.data() + 1, wanted.data() + 1, length - 1)
                              == 0));
    }
};

// Runs a compiled function body (defined with the executor).
bool localBlockCall(localErrorType &status, localContextUTF8 *context, const localOperatorCompiled *block,
                    localValueVector *arguments, localValueDescription **result);

#endif
