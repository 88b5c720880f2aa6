#include "localDbInstall.h"

#include "localDataBase.h"

#include "localContextUTF8.h"
#include "localGlobalFunctions.h"
#include "localMemoryDump.h"

namespace {

// DATABASE brings its table and record classes along.
bool dataBaseClassesRegister()
{
    return localContextUTF8::classRegister(localDataBase::classDeclaration())
           && localContextUTF8::classRegister(localDataBaseTable::classDeclaration())
           && localContextUTF8::classRegister(localDataBaseRecord::classDeclaration());
}

} // namespace

void localDbInstall()
{
    localClassLoaderSet(u"DATABASE", dataBaseClassesRegister);
    memoryDisplayCounterSet("localDataBase", &localDataBase::counterStaticTotal);
    memoryDisplayCounterSet("localDataBaseTable", &localDataBaseTable::counterStaticTotal);
    memoryDisplayCounterSet("localDataBaseRecord", &localDataBaseRecord::counterStaticTotal);
}
