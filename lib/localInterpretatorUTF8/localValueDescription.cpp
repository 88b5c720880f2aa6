#include "localValueDescription.h"

#include "localClassDeclaration.h"
#include "localContextUTF8.h"
#include "localString.h"

#include <cstdlib>

int64_t localValueDescription::counterStaticTotal = 0;
localMemoryManager *localMemoryManager::manager = nullptr;

localValueDescription::localValueDescription(const localValueDescription &other)
{
    ++counterStaticTotal;
    localValueCopy(this, &other);
}

void localValueDescription::linkCounterDrop()
{
    if (linkCounter == 0)
        exit_FAILURE("localValueDescription::linkCounterDec() Error!!!  linkCounter cannot be negative!");
    // The object link goes while the cell is still owned.
    localValueClear();
    linkCounter = 0;
    if (localMemoryManager::manager != nullptr)
        localMemoryManager::manager->cellFreed(this);
}

namespace {

struct objectToDestroy {
    void *object;
    localClassDeclaration *declaration;
};

void objectDestroy(const objectToDestroy &doomed)
{
    localErrorType status = localErrorTypeOK;
    localValueVector noArguments;
    localValueDescription *result = nullptr;
    doomed.declaration->methodExec(status, localContextUTF8::globalContext, doomed.object, u"~", &noArguments,
                                   &result);
    localValueRelease(result);
}

// Objects whose last link went while another object was being destroyed.
// Destroying a list destroys the objects it holds; done on the spot, a chain
// of lists nested a million deep would take a million nested calls, more
// than the machine stack holds. So only the outermost destruction calls "~",
// and takes the others from this list until it is empty.
thread_local std::vector<objectToDestroy> objectsToDestroy;
thread_local bool destroying = false;

} // namespace

void localValueDescription::objectLinkRelease()
{
    if (localValueObject == nullptr || localValueClass == nullptr || localValueClass->localObjectLinkFunction == nullptr)
        return;
    void *object = localValueObject;
    if (localValueClass->localObjectLinkFunction(&object, 0) > 1) {
        localValueClass->localObjectLinkFunction(&object, -1);
        return;
    }
    if (destroying) {
        objectsToDestroy.push_back({object, localValueClass});
        return;
    }
    destroying = true;
    objectDestroy({object, localValueClass});
    while (!objectsToDestroy.empty()) {
        const objectToDestroy next = objectsToDestroy.back();
        objectsToDestroy.pop_back();
        objectDestroy(next);
    }
    destroying = false;
}

void localValueDescription::objectLinkAddCounted()
{
    if (localValueObject != nullptr && localValueClass != nullptr && localValueClass->localObjectLinkFunction != nullptr)
        localValueClass->localObjectLinkFunction(&localValueObject, +1);
}

void localValueDescription::localValueCopy(localValueDescription *destination, const localValueDescription *source)
{
    if (destination == source)
        return;
    copyAllButText(destination, source);
    // Most values are numbers whose texts are both empty.
    if (!destination->localValueString.empty() || !source->localValueString.empty())
        destination->localValueString = source->localValueString;
    destination->objectLinkAdd();
}

void localValueDescription::setObject(void *object, localClassDeclaration *declaration)
{
    localValueClear();
    type = localValueTypeOBJ;
    localValueObject = object;
    localValueClass = declaration;
    objectLinkAdd();
}

std::u16string localValueDescription::toString() const
{
    switch (type) {
    case localValueTypeSTR:
        return localValueString;
    case localValueTypeNUM:
        return localNumberToWide(localValueNumber);
    case localValueTypeBOO:
        return localValueNumber == 0.0 ? u"ЛОЖЬ" : u"ИСТИНА";
    case localValueTypeOBJ: {
        std::u16string text;
        if (localValueClass == nullptr)
            return text;
        localErrorType status = localErrorTypeOK;
        localValueVector noArguments;
        localValueDescription *result = nullptr;
        if (localValueClass->methodExec(status, localContextUTF8::globalContext, localValueObject, u"TOSTRING",
                                        &noArguments, &result)
            && result != nullptr)
            text = result->localValueString;
        localValueRelease(result);
        return text;
    }
    default:
        return u" **** Error *** при вызове метода toString() ";
    }
}

bool localValueDescription::isEmpty() const
{
    switch (type) {
    case localValueTypeSTR:
        return localString::trim(localValueString).empty();
    case localValueTypeNUM:
        return localValueNumber == 0.0;
    case localValueTypeBOO:
        return localValueNumber <= 0.0;
    case localValueTypeOBJ:
        return localValueObject == nullptr;
    default:
        exit_FAILURE("localValueDescription::isEmpty() unknown getType() result!");
    }
}

bool localValueDescription::methodExec(localErrorType &status, localContextUTF8 *context, const std::u16string &name,
                                       localValueVector *arguments, localValueDescription **result)
{
    if (type != localValueTypeOBJ) {
        status = localErrorTypeNOTobject;
        return false;
    }
    if (localValueClass == nullptr) {
        status = localErrorTypeCLASSunknown;
        return false;
    }
    return localValueClass->methodExec(status, context, localValueObject, name, arguments, result);
}

bool localValueDescription::setAttr(localErrorType &status, localContextUTF8 *context, const std::u16string &name,
                                    localValueDescription *value)
{
    if (type != localValueTypeOBJ || localValueClass == nullptr) {
        status = localErrorTypeNOTobject;
        return false;
    }
    return localValueClass->attrSet(status, context, localValueObject, name, value);
}

std::u16string localValueTypeWord(int32_t type)
{
    switch (type) {
    case localValueTypeNUM:
        return u"ЧИСЛО";
    case localValueTypeSTR:
        return u"СТРОКА";
    case localValueTypeBOO:
        return u"БУЛЕВО";
    case localValueTypeOBJ:
        return u"ОБЪЕКТ";
    default:
        return u"неизвестный тип";
    }
}

// ---------------------------------------------------------------------------

void localMemoryManager::create()
{
    new localMemoryManager; // lives to the end of the process
}

localMemoryManager::localMemoryManager()
{
    if (manager != nullptr)
        exit_FAILURE(std::string("localMemoryManager::localMemoryManager() ") + __FILE__ + ":"
                     + std::to_string(__LINE__));
    manager = this;
}

void localMemoryManager::makeTable()
{
    cells.resize(reservedCount);
    freeBits.assign((reservedCount + 63) / 64, ~uint64_t(0));
    if (reservedCount % 64 != 0)
        freeBits.back() = (uint64_t(1) << (reservedCount % 64)) - 1;
    firstWordWithFree = 0;
    table = cells.data();
    cellCount = cells.size();
    words = freeBits.data();
    wordCount = freeBits.size();
}

localValueDescription *localMemoryManager::allocateSearching()
{
    if (cells.empty())
        makeTable();
    size_t word = firstWordWithFree;
    while (word < wordCount && words[word] == 0)
        ++word;
    firstWordWithFree = word;
    if (word == wordCount)
        exit_FAILURE("Memory manager (localMemoryManager) overflow. Resize not available");
    return take(word);
}
