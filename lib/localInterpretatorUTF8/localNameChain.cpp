// The name chain: variables, constants, function calls, attributes and
// method calls are one thing, because a bare name is a member of the current
// context, reached through the class CONTEXT.
//
//   name-chain := link { "." link }
//   link       := name [ "(" parameters ")" ]     (no blank before "(")
//   parameters := { expression [ "," ] }          (commas are optional)
#include "localInterpretatorUTF8.h"

#include "localScratch.h"
#include "localString.h"

#include <iostream>

namespace {

// The variable a kept name read bare stands for, found through the name's
// own cache; null when it is no plain variable (a call follows, the name is
// a member of CONTEXT or a constant, or no variable has it).
localVariable *keptVariable(const localExpressionForm::name &kept, const std::u16string &text, size_t position,
                            localContextUTF8 *context)
{
    if (kept.written.empty() || (position < text.size() && text[position] == u'('))
        return nullptr;
    return kept.variableIn(context);
}

struct nameChainBuffers {
    localValueVector arguments;
    std::u16string name;
    std::u16string nameUpper;
};

// Stands for a working value in the count of values alive.
struct workingValueCounted {
    workingValueCounted() { ++localValueDescription::counterStaticTotal; }
    ~workingValueCounted() { --localValueDescription::counterStaticTotal; }
    workingValueCounted(const workingValueCounted &) = delete;
    workingValueCounted &operator=(const workingValueCounted &) = delete;
};

// Reads a link's "(" parameters ")", `position` on the "(".
bool linkArguments(localErrorType &status, const std::u16string &text, size_t &position, localValueVector &arguments,
                   localContextUTF8 *context, bool onlyCheck, localExpressionForm *form)
{
    ++position;
    if (!localInterpretatorUTF8::scanStringGetParameters(status, text, position, arguments, context, onlyCheck, form))
        return false;
    if (position >= text.size() || text[position] != u')') {
        std::cout << localNarrow(u"ожидается  ')' в позиции ") << position << "\n" << std::flush;
        status = localErrorTypeSYNTAXcloseBracket;
        return false;
    }
    ++position;
    return true;
}

// A call on the context of a name that its kept lookup has found to be a
// built-in with no function of the chain in front of it: what memberCall
// does then, without its way there, its answer in `done`. False, with
// nothing done, when the lookup does not hold or found something else.
[[gnu::always_inline]] inline bool builtInCalled(localErrorType &status, localContextUTF8 *context,
                                                 const localExpressionForm::name &kept, localValueVector &arguments,
                                                 localValueDescription **returned, bool &done)
{
    const localFunctionCache &cache = kept.call;
    const localContextUTF8 *owner = nullptr;
    if (!cache.builtInKnown || cache.builtIn == nullptr || *cache.builtIn == nullptr
        || !localContextUTF8::leadsToBuiltIn(context->functionLookup(kept.upper, kept.call, &owner)))
        return false;
    status = localErrorTypeOK;
    *returned = localValueNew();
    done = (*cache.builtIn)(status, context, arguments, *returned);
    return true;
}

// A link's outcome: the returned cell becomes the chain's result, or on
// failure everything the link holds is given back.
[[gnu::always_inline]] inline bool linkEnd(bool done, localValueVector &arguments, localValueDescription **result, localValueDescription *returned)
{
    localValueReleaseAll(arguments);
    if (!done) {
        localValueRelease(returned);
        std::cout << "\n" << std::flush;
        localValueRelease(*result);
        return false;
    }
    // The returned cell itself becomes the result: for a bare variable that
    // is the variable's own cell.
    localValueRelease(*result);
    *result = returned;
    return true;
}

// The chain itself. `kept` is the first name of a kept text when it has
// been read already (null otherwise); with `continuing`, `*result` holds
// what the chain goes on from, a "." at `position`. Kept out of line: its
// set-up would otherwise burden every plain variable read.
[[gnu::noinline]] bool nameChainRun(localErrorType &status, const std::u16string &text, size_t &position,
                                    localValueDescription **result, localContextUTF8 *context, bool onlyCheck,
                                    localExpressionForm *form, const localExpressionForm::name *kept, bool continuing)
{
    // Lent for the call: a loop re-scans its names on every round.
    const localScratch<nameChainBuffers> buffers;
    localValueVector &arguments = buffers->arguments;
    arguments.clear();
    // The link's name as written and in upper case, made once here; methods
    // and the variables of CONTEXT need no other. The form keeps them, or
    // they are read into the buffers.
    const std::u16string *name = kept != nullptr ? &kept->written : &buffers->name;
    const std::u16string *nameUpper = kept != nullptr ? &kept->upper : &buffers->nameUpper;
    auto readName = [&]() {
        if (form == nullptr) {
            localInterpretatorUTF8::scanStringGetNameTokenInto(text, position, buffers->name, buffers->nameUpper);
            return;
        }
        kept = &form->nameToken(text, position);
        name = &kept->written;
        nameUpper = &kept->upper;
    };

    bool tokenRead = kept != nullptr;
    if (!continuing && form == nullptr && !onlyCheck && position < text.size()) {
        readName();
        tokenRead = true;
        const bool called = position < text.size() && text[position] == u'(';
        localVariable *variable = nullptr;
        if (!name->empty() && !called && localContextUTF8::mayBeVariable(*name, *nameUpper))
            variable = context->variableLookup(*name, *nameUpper);
        if (variable != nullptr) {
            variable->value->linkCounterInc();
            *result = variable->value;
            if (position >= text.size() || text[position] != u'.')
                return true;
            continuing = true;
        }
    }
    if (!continuing)
        *result = localValueNew();

    localClassDeclaration *const contextClass = localContextUTF8::classDeclaration();
    // Not a table cell: the working value lives only for this call.
    localValueDescription working;
    if (continuing) {
        // The chain goes on from the value, as below after a link.
        tokenRead = false;
        ++position;
        localValueDescription::localValueCopy(&working, *result);
    } else if (!onlyCheck) {
        working.setObject(context, contextClass);
    }

    auto fail = [&]() {
        localValueReleaseAll(arguments);
        localValueRelease(*result);
        return false;
    };

    for (bool haveToken = tokenRead; haveToken || position < text.size(); haveToken = false) {
        if (!haveToken)
            readName();
        if (name->empty()) {
            status = localErrorTypeSYNTAX;
            return fail();
        }
        const bool call = position < text.size() && text[position] == u'(';
        if (call && !linkArguments(status, text, position, arguments, context, onlyCheck, form))
            return fail();
        if (onlyCheck) {
            (*result)->setVal(1.0);
            localValueReleaseAll(arguments);
        } else {
            if (working.type != localValueTypeOBJ) {
                std::string out = localNarrow(u"ERROR в scanStringGetNameTokenAndEvaluete() value [");
                out += localNarrow(working.toString()) + "] is not OBJECT to implement the method [";
                out += localNarrow(*name) + "] position: " + std::to_string(position) + "\n";
                std::cout << out << std::flush;
                status = localErrorTypeNOTobject;
                return fail();
            }
            if (working.localValueClass == nullptr)
                exit_FAILURE("localInterpretatorUTF8::scanStringGetNameTokenAndEvaluete() class declaration is empty!");
            localValueDescription *returned = nullptr;
            bool done = false;
            if (!call) {
                done = working.localValueClass->attrGet(status, context, working.localValueObject, *name, nameUpper,
                                                        &returned);
            } else if (working.localValueClass == contextClass && working.localValueObject != nullptr) {
                // Every method of CONTEXT, member or not, is its dispatch:
                // called at once, with the lookup kept for a kept name.
                done = localContextUTF8::memberCall(status, context, working.localValueObject, *nameUpper,
                                                    &arguments, &returned, kept != nullptr ? &kept->call : nullptr);
            } else if (kept != nullptr) {
                if (kept->methodClass != working.localValueClass) {
                    kept->method = working.localValueClass->memberFind(*nameUpper);
                    kept->methodClass = working.localValueClass;
                }
                done = working.localValueClass->methodExecMember(status, context, working.localValueObject,
                                                                 kept->method, *nameUpper, &arguments, &returned);
            } else {
                done = working.localValueClass->methodExecUpper(status, context, working.localValueObject,
                                                                *nameUpper, &arguments, &returned);
            }
            if (!linkEnd(done, arguments, result, returned))
                return false;
        }
        if (position >= text.size() || text[position] != u'.')
            break;
        ++position;
        if (!onlyCheck)
            localValueDescription::localValueCopy(&working, *result);
    }
    working.localValueClear();
    return true;
}

} // namespace

bool localInterpretatorUTF8::scanStringGetNameTokenAndEvaluete(localErrorType &status, const std::u16string &text,
                                                               size_t &position, localValueDescription **result,
                                                               localContextUTF8 *context, bool onlyCheck,
                                                               localExpressionForm *form)
{
    localResultMustBeNull(result, "localInterpretatorUTF8::scanStringGetNameTokenAndEvaluete()");
    if (context == nullptr && !onlyCheck)
        exit_FAILURE("localInterpretatorUTF8::scanStringGetNameTokenAndEvaluete() context may be NULL only in "
                     "onlyCheck!");
    // A variable as the first link, the commonest operand, is read at once:
    // the reading through CONTEXT would give the same cell and nothing
    // else, since the cell and the working value it makes first are given
    // back before anything could see them. A plain variable of a kept text
    // is answered here, before the chain sets anything up.
    const localExpressionForm::name *kept = nullptr;
    if (form != nullptr && !onlyCheck && position < text.size()) {
        kept = &form->nameToken(text, position);
        if (localVariable *variable = keptVariable(*kept, text, position, context)) {
            variable->value->linkCounterInc();
            *result = variable->value;
            if (position >= text.size() || text[position] != u'.')
                return true;
            return nameChainRun(status, text, position, result, context, false, form, nullptr, true);
        }
    }
    return nameChainRun(status, text, position, result, context, onlyCheck, form, kept, false);
}

bool localInterpretatorUTF8::scanStringGetNameChainCalled(localErrorType &status, const std::u16string &text,
                                                          size_t &position, localValueDescription **result,
                                                          localContextUTF8 *context, localExpressionForm *form)
{
    // A call on the context itself, what the chain's first link is when "("
    // follows the name, made here without the chain's set-up. The chain's
    // working value, a context object that no table cell holds, is only
    // counted: the memory dump shows it while the link runs.
    const localExpressionForm::name &kept = form->nameToken(text, position);
    *result = localValueNew();
    {
        const workingValueCounted working;
        const localScratch<nameChainBuffers> buffers;
        localValueVector &arguments = buffers->arguments;
        arguments.clear();
        if (!linkArguments(status, text, position, arguments, context, false, form)) {
            localValueReleaseAll(arguments);
            localValueRelease(*result);
            return false;
        }
        localValueDescription *returned = nullptr;
        bool done = false;
        if (!builtInCalled(status, context, kept, arguments, &returned, done))
            done = localContextUTF8::memberCall(status, context, context, kept.upper, &arguments, &returned,
                                                &kept.call);
        if (!linkEnd(done, arguments, result, returned))
            return false;
    }
    if (position >= text.size() || text[position] != u'.')
        return true;
    return nameChainRun(status, text, position, result, context, false, form, nullptr, true);
}

bool localInterpretatorUTF8::scanStringGetParameters(localErrorType &status, const std::u16string &text,
                                                     size_t &position, localValueVector &parameters,
                                                     localContextUTF8 *context, bool onlyCheck,
                                                     localExpressionForm *form)
{
    localValueReleaseAll(parameters);
    const bool keeping = form != nullptr && !onlyCheck;
    if (keeping) {
        if (const localExpressionForm::argumentList *kept = form->argumentsAt(position)) {
            for (const uint32_t start : kept->starts) {
                // A failure leaves the position where the reading stopped.
                position = start;
                localValueDescription *parameter = nullptr;
                if (!expressionAt(status, text, position, &parameter, context, false, form))
                    return false;
                parameters.push_back(parameter);
            }
            position = kept->close;
            return true;
        }
    }
    // Lent for the reading: a list is read once per form.
    const localScratch<std::vector<uint32_t>> starts;
    starts->clear();
    const size_t open = position;
    bool afterParameter = false;
    bool afterComma = false;
    for (;;) {
        scanStringSkipSpace(text, position, form);
        if (position >= text.size())
            return true;
        const char16_t c = text[position];
        if (c == u')') {
            if (afterComma) {
                std::cout << localNarrow(u"Error scanStringGetNameTokenAndEvaluete() ожидается  параметр в позиции ")
                          << position << "\n"
                          << std::flush;
                return false;
            }
            if (keeping)
                form->argumentsKeep(open, *starts, position);
            return true;
        }
        if (c == u',' && afterParameter) {
            ++position;
            afterParameter = false;
            afterComma = true;
            continue;
        }
        starts->push_back(uint32_t(position));
        localValueDescription *parameter = nullptr;
        if (!expressionAt(status, text, position, &parameter, context, onlyCheck, form))
            return false;
        parameters.push_back(parameter);
        afterParameter = true;
        afterComma = false;
    }
}
