#include "localDbVclInstall.h"

#include "localDataBase.h"
#include "localDbTree.h"

void localDbVclInstall()
{
    localDataBaseWindows::handlers.treeShow = localDbTree::treeShow;
}
