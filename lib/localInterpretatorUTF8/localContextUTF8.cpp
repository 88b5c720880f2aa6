#include "localContextUTF8.h"

#include "localGlobalFunctions.h"
#include "localInterpretatorUTF8.h"
#include "localRandom.h"
#include "localScratch.h"
#include "localString.h"
#include "localValueList.h"
#include "localValueTable.h"

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <vector>

localContextUTF8 *localContextUTF8::globalContext = nullptr;
int64_t localContextUTF8::counterStaticTotal = 0;
uint64_t localContextUTF8::variablesEpoch = 1;
uint64_t localContextUTF8::functionsEpoch = 1;

namespace {

void outputToCout(const std::u16string &text)
{
    std::string line = localNarrow(text);
    line += '\n';
    std::cout << line << std::flush;
}

std::vector<localContextUTF8::declarationGetter> &startupClasses()
{
    static std::vector<localContextUTF8::declarationGetter> getters;
    return getters;
}

// The contexts alive now. Function calls make and end theirs in stack order,
// so they come and go at the end of the list. Made before main and never
// ended, so that contexts ended at exit still find it.
std::vector<const localContextUTF8 *> *const liveList = new std::vector<const localContextUTF8 *>();

inline std::vector<const localContextUTF8 *> &liveContexts()
{
    return *liveList;
}

// Variable lists of ended contexts, emptied, kept with their room: a call
// makes a context and binds its parameters on every call.
std::vector<std::vector<localVariable>> &variableListsSpare()
{
    thread_local std::vector<std::vector<localVariable>> spare;
    return spare;
}

// A CONTEXT value (CONTEXTGET) holds a bare pointer and can outlive its
// context, as when a function returns its own: such a value answers status 18
// instead of reaching freed memory. The context being worked in is alive.
bool contextReachable(localErrorType &status, const localContextUTF8 *target, const localContextUTF8 *context)
{
    const std::vector<const localContextUTF8 *> &live = liveContexts();
    if (target == nullptr || target == context || std::find(live.rbegin(), live.rend(), target) != live.rend())
        return true;
    status = localErrorTypeCONTEXTnull;
    return false;
}

// Every bare name passes here, so the length is compared before the text.
template <size_t N>
bool sameName(const std::u16string &name, const char16_t (&word)[N])
{
    return name.size() == N - 1 && std::char_traits<char16_t>::compare(name.data(), word, N - 1) == 0;
}

bool isConstantName(const std::u16string &nameUpper, bool &value)
{
    if (nameUpper.size() < 4 || nameUpper.size() > 6)
        return false;
    if (sameName(nameUpper, u"TRUE") || sameName(nameUpper, u"ИСТИНА")) {
        value = true;
        return true;
    }
    if (sameName(nameUpper, u"FALSE") || sameName(nameUpper, u"ЛОЖЬ")) {
        value = false;
        return true;
    }
    return false;
}

// Members TRUE, FALSE and their Russian twins; a bare name with no member
// reaches the fallback below.
bool contextConstantGet(localErrorType &status, localContextUTF8 *, void **, const std::u16string &name,
                        localValueDescription **result)
{
    bool value = false;
    if (!isConstantName(localInterpretatorUTF8::nameToUpper(name), value)) {
        status = localErrorTypeATTRIBUTEunknown;
        return false;
    }
    *result = localValueNew();
    (*result)->setBool(value);
    return true;
}

// A bare name in an expression: a constant, else the variable's own cell.
bool contextVariableGetUpper(localErrorType &status, localContextUTF8 *context, void **object,
                             const std::u16string &name, const std::u16string &nameUpper,
                             localValueDescription **result)
{
    bool value = false;
    if (isConstantName(nameUpper, value)) {
        *result = localValueNew();
        (*result)->setBool(value);
        return true;
    }
    localContextUTF8 *scope = *object != nullptr ? static_cast<localContextUTF8 *>(*object) : context;
    if (!contextReachable(status, scope, context))
        return false;
    localVariable *variable = scope != nullptr ? scope->variableLookup(name, nameUpper) : nullptr;
    if (variable == nullptr) {
        status = localErrorTypeATTRIBUTEunknown;
        return false;
    }
    variable->value->linkCounterInc();
    *result = variable->value;
    return true;
}

bool contextVariableGet(localErrorType &status, localContextUTF8 *context, void **object,
                        const std::u16string &name, localValueDescription **result)
{
    const localScratch<std::u16string> upperStorage;
    return contextVariableGetUpper(status, context, object, name,
                                   localInterpretatorUTF8::nameToUpperInto(name, *upperStorage), result);
}

bool contextDispatch(localErrorType &status, localContextUTF8 *context, void **object, const std::u16string &name,
                     localValueVector *arguments, localValueDescription **result);

// A running body must outlive its call, and a body may redefine its own
// name, which lets go of the entry's hold on it. So while any call runs, a
// body that an entry lets go of waits here, until the last call has ended.
// (Holding each body for its call would do too, at the price of counting on
// every call.) One interpreter thread runs at a time.
struct bodiesKept {
    size_t callsRunning = 0;
    std::vector<std::shared_ptr<const localOperatorCompiled>> released;
};
bodiesKept &bodies()
{
    static bodiesKept *const kept = new bodiesKept();
    return *kept;
}

bool bodyCall(localErrorType &status, localContextUTF8 *context, const localOperatorCompiled *body,
              localValueVector *arguments, localValueDescription **result)
{
    bodiesKept &kept = bodies();
    ++kept.callsRunning;
    const bool ran = localBlockCall(status, context, body, arguments, result);
    if (--kept.callsRunning == 0)
        kept.released.clear();
    return ran;
}

// Maps what a compiled function left in the status to the caller's view.
bool functionStatusMap(localErrorType &status, localErrorType before, bool ran)
{
    if (ran && (status == localErrorTypeOK || status == localErrorTypeRETURN)) {
        status = before;
        return true;
    }
    if (status == localErrorTypeBREAK)
        status = localErrorTypeBREAKoutside;
    else if (status == localErrorTypeCONTINUE)
        status = localErrorTypeCONTINUEoutside;
    return false;
}

// A user function found through the chain takes precedence over a built-in.
// Returns true when the name was a user function (the call's outcome is in
// `succeeded`).
bool userFunctionCall(localErrorType &status, localContextUTF8 *holder, const std::u16string &nameUpper,
                      localValueVector *arguments, localValueDescription **result, localFunctionCache *cache,
                      bool &succeeded)
{
    const localContextUTF8 *owner = nullptr;
    const localFunctionEntry *entry = cache != nullptr ? holder->functionLookup(nameUpper, *cache, &owner)
                                                       : holder->functionLookup(nameUpper, &owner);
    if (localContextUTF8::leadsToBuiltIn(entry))
        return false;
    if (entry->block) {
        const localErrorType before = status;
        const bool ran = bodyCall(status, holder, entry->block.get(), arguments, result);
        succeeded = functionStatusMap(status, before, ran);
        return true;
    }
    void *slot = const_cast<localContextUTF8 *>(owner);
    const std::u16string nameCopy = nameUpper;
    succeeded = entry->native(status, const_cast<localContextUTF8 *>(owner), &slot, nameCopy, arguments, result);
    return true;
}

bool contextDispatch(localErrorType &status, localContextUTF8 *context, void **object, const std::u16string &name,
                     localValueVector *arguments, localValueDescription **result)
{
    // Names reach a dispatch function upper-cased already; the check costs
    // no copy then.
    const localScratch<std::u16string> upperStorage;
    return localContextUTF8::memberCall(status, context, *object,
                                        localInterpretatorUTF8::nameToUpperInto(name, *upperStorage), arguments,
                                        result);
}

} // namespace

// ---------------------------------------------------------------------------

localContextUTF8::localContextUTF8()
{
    constructCommon(nullptr);
}

localContextUTF8::localContextUTF8(localContextUTF8 *parentContext)
{
    if (globalContext == nullptr) {
        globalContext = new localContextUTF8();
        outputToCout(u"глобальным назначен контекст [" + localAddressText(globalContext) + u"]");
    }
    constructCommon(parentContext != nullptr ? parentContext : globalContext);
}

void localContextUTF8::constructCommon(localContextUTF8 *parentContext)
{
    static uint64_t serials = 0;
    serial = ++serials;
    localMemoryManager::instance();
    ++counterStaticTotal;
    liveContexts().push_back(this);
    if (globalContext == nullptr)
        globalContext = this;
    parent = globalContext == this ? nullptr : (parentContext != nullptr ? parentContext : globalContext);
    if (parent != nullptr) {
        parent->watched = true;
        functionsAbove = parent->firstFunctionHolder();
    }
    functionsEpochAtBirth = functionsEpoch;
    std::vector<std::vector<localVariable>> &spare = variableListsSpare();
    if (!spare.empty()) {
        variables = std::move(spare.back());
        spare.pop_back();
    }
    localErrorType status = localErrorTypeOK;
    init(status);
}

localContextUTF8::~localContextUTF8()
{
    for (localVariable &variable : variables)
        variable.value->linkCounterDec();
    // No kept lookup can name this context again: serials are not reused.
    variables.clear();
    variableListsSpare().push_back(std::move(variables));
    --counterStaticTotal;
    std::vector<const localContextUTF8 *> &live = liveContexts();
    if (!live.empty() && live.back() == this)
        live.pop_back();
    else
        live.erase(std::find(live.begin(), live.end(), this));
    if (globalContext == this)
        globalContext = nullptr;
}

void localContextUTF8::init(localErrorType &status)
{
    if (globalContext == nullptr)
        exit_FAILURE("localContextUTF8::init() localContextUTF8::globalContext can not be NULL in this moment!");
    localRandomSeedFromClock();
    status = localErrorTypeOK;
    interruptible = false;
    output = outputToCout;
    unusedWord = 0;
    variablesForget();
    classes.clear();
    if (globalContext != this)
        return;
    for (const localClassMember *member : classDeclaration()->members)
        if (member->EXEC != nullptr && !member->name.empty() && member->name != u"~")
            functionRegister(member->name, member->EXEC);
    for (localClassDeclaration *declaration : {localValueList::classDeclaration(), localValueTable::classDeclaration()})
        if (!classRegister(declaration))
            LOCAL_DIAG(u"Class [" + declaration->className + u"] registration fail! ");
    for (declarationGetter getter : startupClasses()) {
        localClassDeclaration *declaration = getter();
        if (!classRegister(declaration))
            LOCAL_DIAG(u"Class [" + declaration->className + u"] registration fail! ");
    }
    variablesForget();
}

// --- variables -------------------------------------------------------------

bool localContextUTF8::mayBeVariable(const std::u16string &name, const std::u16string &nameUpper)
{
    bool value = false;
    return classDeclaration()->memberFind(name) == nullptr && !isConstantName(nameUpper, value);
}

localVariable *localContextUTF8::variableFind(const std::u16string &name, localContextUTF8 **foundIn)
{
    return variableLookup(name, localInterpretatorUTF8::nameToUpper(name), foundIn);
}

std::u16string localContextUTF8::variableNormalName(const std::u16string &name) const
{
    return caseSensitive ? name : localInterpretatorUTF8::nameToUpper(name);
}

localVariable *localContextUTF8::variableLookupFilling(const std::u16string &name, const std::u16string &nameUpper,
                                                       localVariableCache &cache, localContextUTF8 **foundIn)
{
    localContextUTF8 *scope = nullptr;
    localVariable *variable = variableLookup(name, nameUpper, &scope);
    watched = true;
    cache.from = serial;
    cache.scope = scope;
    cache.index = variable != nullptr ? size_t(variable - scope->variables.data()) : 0;
    cache.epoch = variablesEpoch;
    cache.own = scope == this;
    if (foundIn != nullptr)
        *foundIn = scope;
    return variable;
}

localVariable *localContextUTF8::variableCreateBound(const std::u16string &name, localValueDescription *cell)
{
    // What variableCreate and variableReplaceCell make together: the cell
    // the first would take is given back by the second before anything can
    // see it, and takes nothing here.
    cell->linkCounterInc();
    variables.emplace_back(name, cell);
    variablesChanged();
    return &variables.back();
}

localVariable *localContextUTF8::variableCreate(const std::u16string &name)
{
    localValueDescription *cell = localValueNew();
    variables.emplace_back(name, cell);
    variablesChanged();
    return &variables.back();
}

void localContextUTF8::variableForget(size_t index)
{
    variables.erase(variables.begin() + long(index));
    variablesChanged();
}

void localContextUTF8::variablesForget()
{
    variables.clear();
    variablesChanged();
}

bool localContextUTF8::variableSet(const std::u16string &name, const localValueDescription *value)
{
    localVariable *variable = variableFind(name);
    if (variable == nullptr)
        variable = variableCreate(variableNormalName(name));
    localValueDescription::localValueCopy(variable->value, value);
    return true;
}

bool localContextUTF8::variableSetNumber(const std::u16string &name, double number)
{
    localValueDescription *temporary = new localValueDescription;
    temporary->setVal(number);
    const bool done = variableSet(name, temporary);
    delete temporary;
    return done;
}

void localContextUTF8::variableReplaceCell(localVariable *variable, localValueDescription *cell)
{
    cell->linkCounterInc();
    localValueRelease(variable->value);
    variable->value = cell;
}

std::u16string localContextUTF8::variableToString(const std::u16string &name)
{
    const localVariable *variable = variableFind(name);
    if (variable == nullptr)
        return u"variable " + name + u" not found!";
    return variable->value->toString();
}

// --- functions -------------------------------------------------------------

const localFunctionEntry *localContextUTF8::functionLookup(const std::u16string &nameUpper,
                                                         const localContextUTF8 **foundIn) const
{
    for (const localContextUTF8 *scope = firstFunctionHolder(); scope != nullptr;
         scope = scope->parent != nullptr ? scope->parent->firstFunctionHolder() : nullptr) {
        const auto found = scope->functionIndex->find(nameUpper);
        if (found != scope->functionIndex->end()) {
            if (foundIn != nullptr)
                *foundIn = scope;
            return &scope->functions[found->second];
        }
    }
    return nullptr;
}

const localFunctionEntry *localContextUTF8::functionLookupFilling(const std::u16string &nameUpper,
                                                                const localContextUTF8 *first,
                                                                localFunctionCache &cache,
                                                                const localContextUTF8 **foundIn) const
{
    const localContextUTF8 *scope = nullptr;
    const localFunctionEntry *entry = functionLookup(nameUpper, &scope);
    cache.first = first;
    cache.epoch = functionsEpoch;
    cache.scope = scope;
    cache.index = entry != nullptr ? size_t(entry - scope->functions.data()) : 0;
    *foundIn = scope;
    return entry;
}

localFunctionEntry *localContextUTF8::functionEntryFor(const std::u16string &nameUpper)
{
    ++functionsEpoch;
    if (functionIndex == nullptr)
        functionIndex.reset(new std::unordered_map<std::u16string, size_t>());
    const auto found = functionIndex->find(nameUpper);
    if (found != functionIndex->end())
        return &functions[found->second];
    functionIndex->emplace(nameUpper, functions.size());
    functions.push_back(localFunctionEntry{nameUpper, nullptr, nullptr});
    return &functions.back();
}

void localContextUTF8::functionRegister(const std::u16string &name, localMethodFunction native)
{
    localFunctionEntry *entry = functionEntryFor(localInterpretatorUTF8::nameToUpper(name));
    entry->native = native;
    if (entry->block != nullptr && bodies().callsRunning > 0)
        bodies().released.push_back(std::move(entry->block));
    entry->block.reset();
}

void localContextUTF8::functionRegister(const std::u16string &name,
                                        const std::shared_ptr<const localOperatorCompiled> &block)
{
    localFunctionEntry *entry = functionEntryFor(localInterpretatorUTF8::nameToUpper(name));
    entry->native = nullptr;
    if (entry->block != nullptr && entry->block != block && bodies().callsRunning > 0)
        bodies().released.push_back(std::move(entry->block));
    entry->block = block;
}

bool localContextUTF8::funcExec(localErrorType &status, const std::u16string &name, localValueVector *arguments,
                                localValueDescription **result)
{
    localResultMustBeNull(result, "localContextUTF8::funcExec()");
    const std::u16string nameUpper = localInterpretatorUTF8::nameToUpper(name);
    const localFunctionEntry *entry = functionLookup(nameUpper);
    if (entry == nullptr || (entry->native == nullptr && !entry->block)) {
        status = localErrorTypeFUNCTIONunknown;
        return false;
    }
    const localErrorType before = status;
    bool ran = false;
    if (entry->block) {
        ran = bodyCall(status, this, entry->block.get(), arguments, result);
    } else {
        void *noObject = nullptr;
        const std::u16string nameCopy = nameUpper;
        ran = entry->native(status, this, &noObject, nameCopy, arguments, result);
    }
    return functionStatusMap(status, before, ran);
}

bool localContextUTF8::leadsToBuiltIn(const localFunctionEntry *entry)
{
    return entry == nullptr || (!entry->block && (entry->native == nullptr || entry->native == contextDispatch));
}

bool localContextUTF8::memberCall(localErrorType &status, localContextUTF8 *context, void *holderObject,
                                  const std::u16string &nameUpper, localValueVector *arguments,
                                  localValueDescription **result, localFunctionCache *cache)
{
    localResultMustBeNull(result, "localContextUTF8::classImplementationMethodFunction()");
    status = localErrorTypeOK;
    localContextUTF8 *holder = holderObject != nullptr ? static_cast<localContextUTF8 *>(holderObject) : context;
    if (!contextReachable(status, holder, context))
        return false;
    if (holder == nullptr) {
        if (!nameUpper.empty()) {
            status = localErrorTypeMETHODnotDeclared;
            return false;
        }
        *result = localValueNew();
        (*result)->setObject(new localContextUTF8(context), localContextUTF8::classDeclaration());
        return true;
    }
    bool succeeded = false;
    if (userFunctionCall(status, holder, nameUpper, arguments, result, cache, succeeded))
        return succeeded;
    *result = localValueNew();
    if (arguments == nullptr) {
        status = localErrorTypeINTERNAL;
        return false;
    }
    const localGlobalFunctionHandler *place = nullptr;
    if (cache == nullptr) {
        place = localGlobalFunctionPlace(nameUpper);
    } else {
        if (!cache->builtInKnown) {
            cache->builtIn = localGlobalFunctionPlace(nameUpper);
            cache->builtInKnown = true;
        }
        place = cache->builtIn;
    }
    const localGlobalFunctionHandler handler = place != nullptr ? *place : nullptr;
    if (handler == nullptr) {
        status = localErrorTypeMETHODunknown;
        return false;
    }
    return handler(status, holder, *arguments, *result);
}

bool localContextUTF8::createObj(localErrorType &status, const std::u16string &className, localValueVector *arguments,
                                 localValueDescription **result)
{
    localResultMustBeNull(result, "localContextUTF8::createObj()");
    localClassDeclaration *declaration = classFind(className);
    if (declaration == nullptr) {
        status = localErrorTypeCLASSunknown;
        return false;
    }
    localValueDescription *made = nullptr;
    const bool done = declaration->methodExec(status, this, nullptr, u"", arguments, &made);
    if (done) {
        *result = localValueNew();
        localValueDescription::localValueCopy(*result, made);
    }
    localValueRelease(made);
    return done;
}

// --- classes ---------------------------------------------------------------

bool localContextUTF8::classRegister(localClassDeclaration *declaration)
{
    std::vector<localClassDeclaration *> &list = globalContext->classes;
    for (localClassDeclaration *listed : list)
        if (listed == declaration)
            return true;
    for (localClassDeclaration *listed : list)
        if (listed->className == declaration->className || listed->className2 == declaration->className2)
            return false;
    list.push_back(declaration);
    return true;
}

localClassDeclaration *localContextUTF8::classFind(const std::u16string &name)
{
    if (globalContext == nullptr)
        return nullptr;
    const std::u16string nameUpper = localInterpretatorUTF8::nameToUpper(name);
    for (localClassDeclaration *listed : globalContext->classes)
        if (listed->className == nameUpper || listed->className2 == nameUpper)
            return listed;
    return nullptr;
}

bool localContextUTF8::classRegistered(const std::u16string &name)
{
    return classFind(name) != nullptr;
}

void localContextUTF8::startupClassAdd(declarationGetter getter)
{
    startupClasses().push_back(getter);
}

std::u16string localContextUTF8::toString() const
{
    return u"объект класса [КОНТЕКСТ] по адресу [" + localAddressText(this) + u"]";
}

localClassDeclaration *localContextUTF8::classDeclaration()
{
    static localClassDeclaration *declaration = nullptr;
    if (declaration != nullptr)
        return declaration;
    declaration = new localClassDeclaration;
    declaration->className = u"CONTEXT";
    declaration->className2 = u"КОНТЕКСТ";
    declaration->description = u"это контекст";
    declaration->localClassMethodFallback = contextDispatch;
    declaration->localClassAttribFallback = contextVariableGet;
    declaration->localClassAttribFallbackUpper = contextVariableGetUpper;
    declaration->memberAdd(u"", contextDispatch);
    declaration->memberAdd(u"~", contextDispatch);
    size_t count = 0;
    const localGlobalFunctionRow *rows = localGlobalFunctionRows(count);
    for (size_t i = 0; i < count; ++i) {
        for (const char16_t *name : {rows[i].english, rows[i].russian}) {
            if (name == nullptr || *name == 0)
                continue;
            if (rows[i].attribute)
                declaration->memberAdd(name, nullptr, nullptr, contextConstantGet);
            else
                declaration->memberAdd(name, contextDispatch);
        }
    }
    return declaration;
}
