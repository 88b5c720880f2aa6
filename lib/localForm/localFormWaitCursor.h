// The wait cursor for as long as a module, formula or event runs.
#ifndef LOCALFORMWAITCURSOR_H
#define LOCALFORMWAITCURSOR_H

#include "localServices.h"

class localFormWaitCursor {
public:
    localFormWaitCursor() { localServices::instance().waitCursorPush(); }
    ~localFormWaitCursor() { localServices::instance().waitCursorPop(); }
    localFormWaitCursor(const localFormWaitCursor &) = delete;
    localFormWaitCursor &operator=(const localFormWaitCursor &) = delete;
};

#endif
