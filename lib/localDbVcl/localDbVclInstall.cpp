#include "localDbVclInstall.h"

#include "localDataBase.h"
#include "localDbTree.h"
#include "localValueTable.h"
#include "localVclGrid200123localValueTable.h"

void localDbVclInstall()
{
    localDataBaseWindows::handlers.treeShow = localDbTree::treeShow;
    localValueTable::showHandler = localVclGrid200123localValueTable::showHandler;
}
