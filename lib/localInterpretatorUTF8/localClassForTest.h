// The class TEST / ТЕСТ: a small object that exercises the object machinery
// from programs: attributes read through the name chain (ATTRIBINT, and SELF,
// which gives the object itself, so chains like t.SELF.SELF.GETINT() work),
// methods with and without arguments, and the object's own link count.
#ifndef LOCALCLASSFORTEST_H
#define LOCALCLASSFORTEST_H

#include "localClassDeclaration.h"

#include <cstdint>

class localClassForTest {
public:
    // ATTRIBINT; only a native attribute write changes it.
    int32_t attribInt = 0;
    int64_t objectLinks = 0;

    static int64_t counterStaticTotal;

    localClassForTest();
    localClassForTest(const localClassForTest &) = delete;
    localClassForTest &operator=(const localClassForTest &) = delete;
    virtual ~localClassForTest();

    static localClassDeclaration *classDeclaration();
    static bool classImplementationMethodFunction(localErrorType &status, localContextUTF8 *context, void **object,
                                                  const std::u16string &name, localValueVector *arguments,
                                                  localValueDescription **result);
    static bool attributeGet(localErrorType &status, localContextUTF8 *context, void **object,
                             const std::u16string &name, localValueDescription **result);
    static bool attributeSet(localErrorType &status, localContextUTF8 *context, void **object,
                             const std::u16string &name, localValueDescription *value);
    static int64_t objectLinkFunction(void **object, int delta);
};

#endif
