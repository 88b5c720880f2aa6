#include "localStack.h"

#include <pthread.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <string>

namespace {

// The lowest usable address of this thread's stack plus the reserve, found
// once per thread. The reserve leaves room for the deepest work one level
// can do (an evaluation, a class method, printing) and for the larger
// frames of sanitizer builds.
uintptr_t stackFloor()
{
    thread_local uintptr_t floor = [] {
        pthread_attr_t attributes;
        void *low = nullptr;
        size_t size = 0;
        if (pthread_getattr_np(pthread_self(), &attributes) != 0)
            return uintptr_t(0);
        pthread_attr_getstack(&attributes, &low, &size);
        pthread_attr_destroy(&attributes);
        const size_t reserve = std::max<size_t>(size / 8, 512 * 1024);
        return reserve < size ? uintptr_t(low) + reserve : uintptr_t(0);
    }();
    return floor;
}

} // namespace

bool localStackExhausted()
{
    char here = 0;
    // The address of a local escapes through the integer conversion only.
    return uintptr_t(&here) < stackFloor();
}

bool localStackCheck(localErrorType &status, const char *where)
{
    if (!localStackExhausted())
        return true;
    status = localErrorTypeINTERNAL;
    std::string line = "ERROR!!! ";
    localNarrowAppend(line, u"Стек исчерпан: слишком глубокая вложенность (рекурсия), выполнение прервано.");
    line += localDiagTail(where, __FILE__, __LINE__);
    std::cout << line << std::flush;
    return false;
}
