#include "localDbVclInstall.h"

#include "localDbBrowseDemo.h"
#include "localDbTree.h"
#include "localDbtBrowseWidget200123.h"
#include "localVclGrid200123localValueTable.h"

#include "localDataBase.h"
#include "localValueTable.h"

namespace {

void browseDemo(int number)
{
    localDbBrowseDemoShow(number);
}

} // namespace

void localDbVclInstall()
{
    localDataBaseWindows::handlers.treeShow = localDbTree::treeShow;
    localValueTable::showHandler = localVclGrid200123localValueTable::showHandler;
    localDataBaseWindows::handlers.browseDemo = browseDemo;
    localDataBaseWindows::handlers.browse = newLocalDbtBrowseWidget200123;
}
