// The one shape of a native class of the language. A class derives from
// localNativeClass<itself> and supplies its names and a table of members in
// declaration order; the declaration, the dispatch with its guards, the link
// count, the live-object counter and fromValue come from here, so a class's
// own file holds its behaviour and nothing else.
//
//   class localThing : public localNativeClass<localThing> {
//   public:
//       static const localNativeClassShape<localThing> &classShape();
//       // optional: a constructor other than `new localThing`
//       static bool construct(localErrorType &, localContextUTF8 *, localValueVector *, localValueDescription *);
//   };
//
// Each member record of the declaration points back at its row of the table,
// so a call through a member the caller has found goes straight to the row's
// function: the name is looked up once per call, or not at all where the name
// chain keeps the member.
#ifndef LOCALNATIVECLASS_H
#define LOCALNATIVECLASS_H

#include "localClassDeclaration.h"
#include "localInterpretatorUTF8.h"

#include <cstddef>
#include <cstdint>
#include <string>

template <class T>
struct localNativeMember {
    // (status, the object, arguments, the result cell)
    typedef bool (*method)(localErrorType &status, T &object, localValueVector &arguments,
                           localValueDescription *result);
    const char16_t *english;
    const char16_t *russian; // null: one spelling only
    method function;         // null for an attribute
    localAttribGetFunction get = nullptr;
    localAttribSetFunction set = nullptr;
};

template <class T>
struct localNativeClassShape {
    const char16_t *className;
    const char16_t *className2;
    const char16_t *reserved1;
    const char16_t *description;
    // "localThing::classImplementationMethodFunction()", for the fatal stop
    // of a result that does not arrive null.
    const char *routine;
    const localNativeMember<T> *members;
    size_t membersCount;
    // The reader of attribute names that are no members, or null.
    localAttribGetUpperFunction attributeFallback = nullptr;
};

template <class T>
class localNativeClass {
public:
    typedef localNativeMember<T> member;

    // The cells that hold this object.
    int64_t objectLinks = 0;
    // Live objects of the class, shown by the memory dump.
    inline static int64_t counterStaticTotal = 0;

    localNativeClass() { ++counterStaticTotal; }
    localNativeClass(const localNativeClass &) = delete;
    localNativeClass &operator=(const localNativeClass &) = delete;
    virtual ~localNativeClass() { --counterStaticTotal; }

    static localClassDeclaration *classDeclaration()
    {
        static localClassDeclaration *const declaration = declare();
        return declaration;
    }

    // The dispatch by name, for callers that hold a name and no member.
    static bool classImplementationMethodFunction(localErrorType &status, localContextUTF8 *context, void **object,
                                                  const std::u16string &name, localValueVector *arguments,
                                                  localValueDescription **result)
    {
        const localClassMember *found = classDeclaration()->memberFind(name);
        return dispatch(status, context, object, name, found != nullptr ? rowOf(*found) : nullptr, arguments,
                        result);
    }

    static int64_t objectLinkFunction(void **object, int delta)
    {
        T *self = static_cast<T *>(*object);
        self->objectLinks += delta;
        return self->objectLinks;
    }

    // The object held by a value, or null when the value is no object of this class.
    static T *fromValue(const localValueDescription *value)
    {
        if (value == nullptr || value->getType() != localValueTypeOBJ
            || value->localValueClass != classDeclaration())
            return nullptr;
        return static_cast<T *>(value->localValueObject);
    }

    // Stores the object into `cell` as an object value (its count is then 1).
    static T *putInCell(T *self, localValueDescription *cell)
    {
        cell->setObject(self, classDeclaration());
        return self;
    }

    // The constructor a class gets unless it declares its own.
    static bool construct(localErrorType &, localContextUTF8 *, localValueVector *, localValueDescription *result)
    {
        putInCell(new T, result);
        return true;
    }

private:
    static localClassDeclaration *declare()
    {
        const localNativeClassShape<T> &shape = T::classShape();
        localClassDeclaration *declaration = new localClassDeclaration;
        declaration->className = shape.className;
        declaration->className2 = shape.className2;
        if (shape.reserved1 != nullptr)
            declaration->reserved1 = shape.reserved1;
        declaration->description = shape.description;
        declaration->localObjectLinkFunction = objectLinkFunction;
        if (shape.attributeFallback != nullptr) {
            declaration->localClassAttribFallbackUpper = shape.attributeFallback;
            declaration->localClassAttribFallback = attributeFallbackByName;
        }
        declaration->memberAdd(u"", classImplementationMethodFunction);
        declaration->memberAdd(u"~", classImplementationMethodFunction);
        declaration->members[0]->CALL = declaration->members[1]->CALL = memberCall;
        for (size_t i = 0; i < shape.membersCount; ++i) {
            const member &row = shape.members[i];
            const localMethodFunction exec = row.function != nullptr ? classImplementationMethodFunction : nullptr;
            declaration->memberAdd(row.english, exec, row.set, row.get);
            if (row.russian != nullptr)
                declaration->memberAdd(row.russian, exec, row.set, row.get);
        }
        // The rows are attached once the vector of members stands.
        size_t next = 2;
        for (size_t i = 0; i < shape.membersCount; ++i) {
            const size_t spellings = shape.members[i].russian != nullptr ? 2 : 1;
            for (size_t k = 0; k < spellings; ++k, ++next) {
                localClassMember *record = declaration->members[next];
                record->native = &shape.members[i];
                if (shape.members[i].function != nullptr)
                    record->CALL = memberCall;
            }
        }
        return declaration;
    }

    static bool attributeFallbackByName(localErrorType &status, localContextUTF8 *context, void **object,
                                        const std::u16string &name, localValueDescription **result)
    {
        return T::classShape().attributeFallback(status, context, object, name,
                                                 localInterpretatorUTF8::nameToUpper(name), result);
    }

    static const member *rowOf(const localClassMember &record) { return static_cast<const member *>(record.native); }

    static bool memberCall(localErrorType &status, localContextUTF8 *context, void **object,
                           const localClassMember &record, localValueVector *arguments,
                           localValueDescription **result)
    {
        return dispatch(status, context, object, record.name, rowOf(record), arguments, result);
    }

    // The guards every method call passes, in their order: the result cell,
    // the class-level call (constructor or status 29), the destructor, a null
    // argument list (16), an unknown name (27).
    static bool dispatch(localErrorType &status, localContextUTF8 *context, void **object,
                         const std::u16string &name, const member *row, localValueVector *arguments,
                         localValueDescription **result)
    {
        T *self = static_cast<T *>(localDispatchBegin(status, object, result, T::classShape().routine));
        if (self == nullptr) {
            if (!name.empty()) {
                status = localErrorTypeMETHODnotDeclared;
                return false;
            }
            return T::construct(status, context, arguments, *result);
        }
        if (name == u"~") {
            delete self;
            return true;
        }
        if (arguments == nullptr) {
            status = localErrorTypeINTERNAL;
            return false;
        }
        if (row == nullptr || row->function == nullptr) {
            status = localErrorTypeMETHODunknown;
            return false;
        }
        return row->function(status, *self, *arguments, *result);
    }
};

#endif
