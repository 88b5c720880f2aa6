#include "localDbVclInstall.h"

#include "localVclGrid200123localValueTable.h"

#include "localValueTable.h"

void localDbVclInstall()
{
    localValueTable::showHandler = localVclGrid200123localValueTable::showHandler;
}
