// The class TEST / ТЕСТ: a small object that exercises the object machinery
// from programs: attributes read through the name chain (ATTRIBINT, and SELF,
// which gives the object itself, so chains like t.SELF.SELF.GETINT() work),
// methods with and without arguments, and the object's own link count.
#ifndef LOCALCLASSFORTEST_H
#define LOCALCLASSFORTEST_H

#include "localNativeClass.h"

#include <cstdint>

class localClassForTest : public localNativeClass<localClassForTest> {
public:
    // ATTRIBINT; only a native attribute write changes it.
    int32_t attribInt = 0;

    static const localNativeClassShape<localClassForTest> &classShape();
    static bool attributeGet(localErrorType &status, localContextUTF8 *context, void **object,
                             const std::u16string &name, localValueDescription **result);
    static bool attributeSet(localErrorType &status, localContextUTF8 *context, void **object,
                             const std::u16string &name, localValueDescription *value);
};

#endif
