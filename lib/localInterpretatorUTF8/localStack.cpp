#include "localStack.h"

#include <pthread.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <string>

// The reserve leaves room for the deepest work one level can do (an
// evaluation, a class method, printing) and for the larger frames of
// sanitizer builds.
uintptr_t localStackFloorOfThread()
{
    pthread_attr_t attributes;
    void *low = nullptr;
    size_t size = 0;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0)
        return 0;
    pthread_attr_getstack(&attributes, &low, &size);
    pthread_attr_destroy(&attributes);
    const size_t reserve = std::max<size_t>(size / 8, 512 * 1024);
    return reserve < size ? uintptr_t(low) + reserve : 0;
}

bool localStackReport(localErrorType &status, const char *where)
{
    status = localErrorTypeINTERNAL;
    std::string line = "ERROR!!! ";
    localNarrowAppend(line, u"Стек исчерпан: слишком глубокая вложенность (рекурсия), выполнение прервано.");
    line += localDiagTail(where, __FILE__, __LINE__);
    std::cout << line << std::flush;
    return false;
}
