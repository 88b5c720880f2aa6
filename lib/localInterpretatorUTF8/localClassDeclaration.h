// A class of the language: its two names, its members and the dispatch
// functions that the evaluator reaches through attrGet and methodExec.
#ifndef LOCALCLASSDECLARATION_H
#define LOCALCLASSDECLARATION_H

#include "localValueDescription.h"

#include <string>
#include <unordered_map>
#include <vector>

// (status, context, object slot, upper-cased name, arguments, result)
typedef bool (*localMethodFunction)(localErrorType &status, localContextUTF8 *context, void **object,
                                    const std::u16string &name, localValueVector *arguments,
                                    localValueDescription **result);
typedef bool (*localAttribGetFunction)(localErrorType &status, localContextUTF8 *context, void **object,
                                       const std::u16string &name, localValueDescription **result);
// An attribute reader that is handed the upper-case form of the name as well,
// for a caller that has it already.
typedef bool (*localAttribGetUpperFunction)(localErrorType &status, localContextUTF8 *context, void **object,
                                            const std::u16string &name, const std::u16string &nameUpper,
                                            localValueDescription **result);
typedef bool (*localAttribSetFunction)(localErrorType &status, localContextUTF8 *context, void **object,
                                       const std::u16string &name, localValueDescription *value);
// (object slot, delta) to the object's link count; delta 0 only asks.
typedef int64_t (*localObjectLinkFunctionType)(void **object, int delta);

struct localClassMember;
// A method call handed the member it was found under, so that a class whose
// members carry their own entry (`native`) needs no second lookup by name.
typedef bool (*localMemberCallFunction)(localErrorType &status, localContextUTF8 *context, void **object,
                                        const localClassMember &member, localValueVector *arguments,
                                        localValueDescription **result);

struct localClassMember {
    std::u16string name; // upper case; "" is the constructor, "~" the destructor
    localMethodFunction EXEC = nullptr;
    localAttribSetFunction SET = nullptr;
    localAttribGetFunction GET = nullptr;
    // Where set, methodExec calls this instead of EXEC; EXEC stays the entry
    // by name (same behaviour) for callers that hold no member.
    localMemberCallFunction CALL = nullptr;
    const void *native = nullptr; // the class's own row for this member
};

class localClassDeclaration {
public:
    std::u16string className = u"новый класс";
    std::u16string className2 = u"new class";
    std::u16string reserved1;
    std::u16string reserved2;
    std::u16string description;
    localObjectLinkFunctionType localObjectLinkFunction = nullptr;
    localMethodFunction localClassMethodFallback = nullptr;
    localAttribGetFunction localClassAttribFallback = nullptr;
    // The same reader taking the upper-case name too, where a class has one.
    localAttribGetUpperFunction localClassAttribFallbackUpper = nullptr;
    std::vector<localClassMember *> members;

    static int64_t counterStaticTotal;

    localClassDeclaration();
    localClassDeclaration(const localClassDeclaration &) = delete;
    localClassDeclaration &operator=(const localClassDeclaration &) = delete;
    virtual ~localClassDeclaration();

    // Appends a member in declaration order.
    void memberAdd(const std::u16string &name, localMethodFunction exec, localAttribSetFunction set = nullptr,
                   localAttribGetFunction get = nullptr);
    // Appends one member per name (English, Russian) with the same functions.
    void memberAdd2(const std::u16string &name, const std::u16string &name2, localMethodFunction exec,
                    localAttribSetFunction set = nullptr, localAttribGetFunction get = nullptr);
    // The first member of that exact name, or null.
    const localClassMember *memberFind(const std::u16string &name) const;

    bool attrGet(localErrorType &status, localContextUTF8 *context, void *object, const std::u16string &name,
                 localValueDescription **result)
    {
        return attrGet(status, context, object, name, nullptr, result);
    }
    // With the upper-case form of the name when the caller has it (or null).
    bool attrGet(localErrorType &status, localContextUTF8 *context, void *object, const std::u16string &name,
                 const std::u16string *nameUpper, localValueDescription **result);
    bool attrSet(localErrorType &status, localContextUTF8 *context, void *object, const std::u16string &name,
                 localValueDescription *value);
    // A null object is a call on the class itself (constructors).
    bool methodExec(localErrorType &status, localContextUTF8 *context, void *object, const std::u16string &name,
                    localValueVector *arguments, localValueDescription **result);
    // methodExec for a name that is in upper case already.
    bool methodExecUpper(localErrorType &status, localContextUTF8 *context, void *object,
                         const std::u16string &nameUpper, localValueVector *arguments,
                         localValueDescription **result);
    // The same with the name's member found already (memberFind, may be null).
    bool methodExecMember(localErrorType &status, localContextUTF8 *context, void *object,
                          const localClassMember *member, const std::u16string &nameUpper,
                          localValueVector *arguments, localValueDescription **result);

private:
    // First member by name; the table is built once, so a map gives the
    // same answer as a search in declaration order.
    std::unordered_map<std::u16string, const localClassMember *> memberIndex;
    // One bit per (length, first and last letter) of the members' names. Every
    // variable read asks CONTEXT for a member first, and nearly always there
    // is none: the bit says so without hashing the name.
    uint64_t memberSigns[8] = {};
    static size_t memberSign(const std::u16string &name)
    {
        const size_t first = name.empty() ? 0 : name.front();
        const size_t last = name.empty() ? 0 : name.back();
        return (name.size() * 31 + first * 7 + last) % 512;
    }
};

// The shared opening of every class's method dispatch function: the result
// must arrive null, a fresh result cell is handed out and the status set to
// 54. Returns the object, or null for a class-level call.
void *localDispatchBegin(localErrorType &status, void **object, localValueDescription **result,
                         const char *routine);

// Argument checks of the dispatch functions, in the order count, kind, value.
bool localArgCount(localErrorType &status, const localValueVector *arguments, size_t count);
bool localArgCountRange(localErrorType &status, const localValueVector *arguments, size_t low, size_t high);
bool localArgType(localErrorType &status, const localValueVector *arguments, size_t index, int32_t type);
// The optional string argument at `index` into `text` ("" when absent);
// status 33 when it is there with another kind.
bool localArgOptionalString(localErrorType &status, const localValueVector &arguments, size_t index,
                            std::u16string &text);

#endif
