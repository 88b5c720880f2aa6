// The value cell of the language and the table of 102400 cells that every
// value of a running program comes from.
#ifndef LOCALVALUEDESCRIPTION_H
#define LOCALVALUEDESCRIPTION_H

#include "localErrorType.h"
#include "localText.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

class localClassDeclaration;
class localContextUTF8;
class localValueDescription;

enum localValueType : int32_t {
    localValueTypeNUM = 0,
    localValueTypeSTR = 1,
    localValueTypeBOO = 2,
    localValueTypeOBJ = 3
};

typedef std::vector<localValueDescription *> localValueVector;

// Number, string, boolean (1.0 / 0.0 in the number field) or object (object
// pointer plus class). `linkCounter` counts the owners of the cell; an object
// keeps a second count of its own through its class's link function.
class localValueDescription {
public:
    uint32_t linkCounter = 0;
    int32_t type = localValueTypeNUM;
    localClassDeclaration *localValueClass = nullptr;
    uint64_t localValueMarker = 0x780000000003E3F4ULL;
    std::vector<void *> localValueBuffers;
    double localValueNumber = 0.0;
    void *localValueObject = nullptr;
    localText localValueString;

    static int64_t counterStaticTotal;

    localValueDescription() { ++counterStaticTotal; }
    localValueDescription(const localValueDescription &other);
    localValueDescription &operator=(const localValueDescription &) = delete;
    virtual ~localValueDescription()
    {
        for (void *buffer : localValueBuffers)
            std::free(buffer);
        localValueClear();
        --counterStaticTotal;
    }

    int32_t getType() const { return type; }
    inline void linkCounterInc();
    // Inline everywhere, the last link of an object value excepted.
    [[gnu::always_inline]] inline void linkCounterDec();

    void localValueClear()
    {
        if (type == localValueTypeOBJ && localValueObject != nullptr)
            objectLinkRelease();
        type = localValueTypeNUM;
        localValueNumber = 0.0;
    }
    static void localValueCopy(localValueDescription *destination, const localValueDescription *source);
    // localValueCopy, then one link of the source given back and the pointer
    // nulled. A source that had no other link hands its text over instead of
    // copying it: it is free right after.
    static void localValueCopyAndRelease(localValueDescription *destination, localValueDescription *&source);

    void setVal(double value)
    {
        localValueClear();
        type = localValueTypeNUM;
        localValueNumber = value;
    }
    void setString(const std::u16string &text)
    {
        localValueClear();
        type = localValueTypeSTR;
        localValueString = text;
    }
    void setString(std::u16string &&text)
    {
        localValueClear();
        type = localValueTypeSTR;
        localValueString = std::move(text);
    }
    void setString(const char16_t *text) { setString(localText(text)); }
    void setString(localText text)
    {
        localValueClear();
        type = localValueTypeSTR;
        localValueString = std::move(text);
    }
    void setBool(bool value)
    {
        localValueClear();
        type = localValueTypeBOO;
        localValueNumber = value ? 1.0 : 0.0;
    }
    void setObject(void *object, localClassDeclaration *declaration);

    // The truth rule of every condition: the number field above 0.0, whatever the kind.
    bool isTrue() const { return localValueNumber > 0.0; }

    std::u16string toString() const;
    bool isEmpty() const;

    // A method call through the value: status 51 for a non-object, 14 without a class.
    bool methodExec(localErrorType &status, localContextUTF8 *context, const std::u16string &name,
                    localValueVector *arguments, localValueDescription **result);
    // Attribute write; present, but no statement of the language reaches it.
    bool setAttr(localErrorType &status, localContextUTF8 *context, const std::u16string &name,
                 localValueDescription *value);

private:
    // The object's side of clearing: one link less, or "~" for the last one.
    void objectLinkRelease();
    // The last link goes (or a count of 0, which is fatal).
    [[gnu::noinline]] void linkCounterDrop();
    // localValueCopy but for the text, which the caller assigns.
    static void copyAllButText(localValueDescription *destination, const localValueDescription *source)
    {
        destination->localValueClear();
        destination->type = source->type;
        destination->localValueNumber = source->localValueNumber;
        destination->localValueClass = source->localValueClass;
        destination->localValueObject = source->localValueObject;
    }
    // One link more for an object value; most values are none.
    void objectLinkAdd()
    {
        if (type == localValueTypeOBJ)
            objectLinkAddCounted();
    }
    void objectLinkAddCounted();
};

// The type word shown to users: "ЧИСЛО", "СТРОКА", "БУЛЕВО", "ОБЪЕКТ", or "неизвестный тип".
std::u16string localValueTypeWord(int32_t type);

// Gives back one link of `cell` (if any) and nulls the pointer.
[[gnu::always_inline]] inline void localValueRelease(localValueDescription *&cell)
{
    if (cell != nullptr) {
        cell->linkCounterDec();
        cell = nullptr;
    }
}

// Releases every cell of the vector and empties it (defined below).
inline void localValueReleaseAll(localValueVector &cells);

// Stops the program when a result parameter does not arrive null.
[[gnu::always_inline]] inline void localResultMustBeNull(localValueDescription **result, const char *routine)
{
    if (*result != nullptr)
        exit_FAILURE(std::string(routine) + " result must be NULL!");
}

class localMemoryManager {
public:
    static constexpr size_t reservedCount = 102400;

    static localMemoryManager *manager;

    // The single table; made on first use. A second construction is a fatal stop.
    [[gnu::always_inline]] static localMemoryManager &instance()
    {
        if (manager == nullptr)
            create();
        return *manager;
    }

    localMemoryManager();
    localMemoryManager(const localMemoryManager &) = delete;
    localMemoryManager &operator=(const localMemoryManager &) = delete;

    // The lowest free cell, prepared as number 0 with one link. Exhaustion is fatal.
    // Every allocation of a running program passes here: the common case, a
    // free cell in the lowest word that has one, stays inline, also where
    // the optimiser across files would rather call it.
    [[gnu::always_inline]] localValueDescription *allocate()
    {
        if (firstWordWithFree < wordCount && words[firstWordWithFree] != 0)
            return take(firstWordWithFree);
        return allocateSearching();
    }
    // The free cell of rank `rank` among the free ones, lowest first (0 is
    // what allocate gives), prepared alike: where an expression's result
    // lands when its temporaries, taken and given back before it, are not
    // made at all.
    localValueDescription *allocateRanked(size_t rank)
    {
        if (rank == 0)
            return allocate();
        if (wordCount == 0)
            makeTable();
        // The rank is small (the temporaries of one expression): bit by bit.
        for (size_t word = firstWordWithFree; word < wordCount; ++word)
            for (uint64_t bits = words[word]; bits != 0; bits &= bits - 1, --rank)
                if (rank == 0)
                    return takeAt(word * 64 + size_t(__builtin_ctzll(bits)));
        // Fewer free cells than the temporaries would need: the same stop.
        return allocateSearching();
    }
    size_t getReservedCount() const { return cellCount; }
    size_t getUsedCount() const { return used; }
    size_t getFreeCount() const { return cellCount - used; }
    bool owns(const localValueDescription *cell) const { return indexOf(cell) < cellCount; }
    const localValueDescription &cellAt(size_t index) const { return table[index]; }

    // Bookkeeping of the free set, called when a table cell's link count
    // leaves or reaches 0.
    void cellTaken(const localValueDescription *cell)
    {
        const size_t index = indexOf(cell);
        if (index >= cellCount)
            return;
        words[index / 64] &= ~(uint64_t(1) << (index % 64));
        ++used;
    }
    [[gnu::always_inline]] void cellFreed(const localValueDescription *cell)
    {
        const size_t index = indexOf(cell);
        if (index >= cellCount)
            return;
        words[index / 64] |= uint64_t(1) << (index % 64);
        if (index / 64 < firstWordWithFree)
            firstWordWithFree = index / 64;
        --used;
    }

private:
    static void create();
    [[gnu::noinline]] localValueDescription *allocateSearching();
    void makeTable();
    // The cell's place in the table; past its end for a value outside it.
    size_t indexOf(const localValueDescription *cell) const
    {
        return (uintptr_t(cell) - uintptr_t(table)) / sizeof(localValueDescription);
    }
    // Hands out the lowest free cell of the word, which has one.
    [[gnu::always_inline]] localValueDescription *take(size_t word)
    {
        return takeAt(word * 64 + size_t(__builtin_ctzll(words[word])));
    }
    // Hands out the free cell at `index`.
    [[gnu::always_inline]] localValueDescription *takeAt(size_t index)
    {
        localValueDescription &cell = table[index];
        cell.type = localValueTypeNUM;
        cell.localValueClass = nullptr;
        cell.localValueObject = nullptr;
        cell.localValueNumber = 0.0;
        cell.localValueString.clear();
        cell.linkCounter = 1;
        words[index / 64] &= ~(uint64_t(1) << (index % 64));
        ++used;
        return &cell;
    }

    std::vector<localValueDescription> cells;
    // One bit per cell, set while the cell is free, so that the lowest free
    // cell is found a machine word at a time.
    std::vector<uint64_t> freeBits;
    // Where both lie and how long they are, null and 0 until the table is
    // made; the table never grows, and these spare the hot paths the
    // vectors' size arithmetic.
    localValueDescription *table = nullptr;
    size_t cellCount = 0;
    uint64_t *words = nullptr;
    size_t wordCount = 0;
    size_t firstWordWithFree = 0;
    size_t used = 0;
};

inline void localValueDescription::linkCounterInc()
{
    if (linkCounter++ == 0 && localMemoryManager::manager != nullptr)
        localMemoryManager::manager->cellTaken(this);
}

inline void localValueDescription::linkCounterDec()
{
    if (linkCounter > 1) {
        --linkCounter;
    } else if (linkCounter == 1 && type != localValueTypeOBJ && localMemoryManager::manager != nullptr) {
        // The last link of a value that holds no object, the commonest
        // end of a cell: what localValueClear and linkCounterDrop do.
        type = localValueTypeNUM;
        localValueNumber = 0.0;
        linkCounter = 0;
        localMemoryManager::manager->cellFreed(this);
    } else {
        linkCounterDrop();
    }
}

// Inline: every call gives back its arguments here.
[[gnu::always_inline]] inline void localValueReleaseAll(localValueVector &cells)
{
    for (localValueDescription *&cell : cells)
        localValueRelease(cell);
    cells.clear();
}

// Inline: every assignment and every bracket ends here.
[[gnu::always_inline]] inline void
localValueDescription::localValueCopyAndRelease(localValueDescription *destination, localValueDescription *&source)
{
    if (destination != source && source->linkCounter == 1) {
        copyAllButText(destination, source);
        // What text a free cell keeps is never read: a cell handed out again
        // starts empty.
        if (!destination->localValueString.empty() || !source->localValueString.empty())
            destination->localValueString.swap(source->localValueString);
        destination->objectLinkAdd();
    } else {
        localValueCopy(destination, source);
    }
    localValueRelease(source);
}

// Shorthand for the allocator.
[[gnu::always_inline]] inline localValueDescription *localValueNew()
{
    return localMemoryManager::instance().allocate();
}

// What round brackets do with the value inside: it moves into the lowest
// cell free while it is still held, and its own link is given back.
// Inline: every bracket passes here.
[[gnu::always_inline]] inline void localValueMoveToNewCell(localValueDescription *&value)
{
    localValueDescription *moved = localValueNew();
    localValueDescription::localValueCopyAndRelease(moved, value);
    value = moved;
}

#endif
