// The ordered list of the language, VALUELIST / СПИСОКЗНАЧЕНИЙ: values, each
// with a presentation that is at once its caption and its key. It is also the
// general parameter bag of the system (window options, the console's ini
// file, JSON objects).
#ifndef LOCALVALUELIST_H
#define LOCALVALUELIST_H

#include "localNativeClass.h"

#include <QStringList>

#include <cstdint>
#include <string>
#include <vector>

// One item: the value is held by value, not as a cell of the memory table.
// Moving an item hands its value over without touching object links, so the
// vector of items can shift them cheaply on insert and remove.
struct localValueListItem {
    std::u16string presentation;
    localValueDescription value;

    localValueListItem() = default;
    localValueListItem(const localValueDescription *source, const std::u16string &itemPresentation);
    localValueListItem(const localValueListItem &other) = default;
    localValueListItem(localValueListItem &&other) noexcept;
    localValueListItem &operator=(localValueListItem &&other) noexcept;
    localValueListItem &operator=(const localValueListItem &) = delete;
};

// The list dialogs of the widget library. The core builds the captions and
// runs the loops; the widget library registers these at start-up. With none
// registered (or without a screen) the methods that need them answer status 26.
struct localListDialogs {
    // Runs the modal chooser: the caption rows, the title and the start row
    // (from 1, 0 for none). Answers the chosen row from 1, or 0 on cancel.
    size_t (*rowChoose)(const std::u16string &title, const QStringList &captions, size_t startRow) = nullptr;
    // Shows a text read-only in a modal dialog with the given title.
    void (*textShow)(const std::u16string &title, const std::u16string &text) = nullptr;

    static localListDialogs handlers;
    // True when a screen is there and the chooser is registered.
    static bool chooserAvailable();
};

class localValueList : public localNativeClass<localValueList> {
public:
    uint64_t localValueMarker = 0x780000000003E3F4ULL;
    std::vector<localValueListItem> items;
    ~localValueList() override;

    // --- native operations; items are addressed from 1 ---
    // Pointers into the list stay valid until the list is next changed.
    size_t size() const { return items.size(); }
    // The value cell of item n, null when n is 0 or past the end.
    localValueDescription *valueByIndex(size_t n);
    const localValueDescription *valueByIndex(size_t n) const;
    // The presentation of item n, null when out of range.
    const std::u16string *presentationByIndex(size_t n) const;
    // Index from 1 of the first item with that presentation, 0 if none.
    size_t indexOfPresentation(const std::u16string &presentation) const;
    // The value cell of the first item with that presentation, null if none.
    localValueDescription *valueByKey(const std::u16string &presentation);
    const localValueDescription *valueByKey(const std::u16string &presentation) const;
    // Appends a copy of the value; answers the new count.
    size_t valueAdd(const localValueDescription *value, const std::u16string &presentation);
    // Overwrites the value of the first item with that presentation and answers
    // its index; otherwise appends and answers the new count.
    size_t valueSetByPresentation(const localValueDescription *value, const std::u16string &presentation);
    // Inserts before item n (1..size); false and no change otherwise.
    bool valueInsert(size_t n, const localValueDescription *value, const std::u16string &presentation);
    // Overwrites the value / the presentation of item n; false when out of range.
    bool valueSet(size_t n, const localValueDescription *value);
    bool presentationSet(size_t n, const std::u16string &presentation);
    // Removes item n and shifts the later ones down; false when out of range.
    bool valueRemove(size_t n);
    void clear();

    // Shorthands for parameter bags: a number or a string under a key.
    size_t valueSetByPresentation(double number, const std::u16string &presentation);
    size_t valueSetByPresentation(const std::u16string &text, const std::u16string &presentation);

    // The JSON array of the items (the list writer).
    std::u16string toJson() const;
    // One diagnostic line with the class, the count and the address.
    std::u16string toString() const;
    // The presentations in order, as the list dialog shows them.
    QStringList captions() const;

    // --- the language class ---
    static const localNativeClassShape<localValueList> &classShape();
    // Stores a new empty list into `cell` as an object value (its count is then 1).
    static localValueList *newInCell(localValueDescription *cell);
};

// A number argument as an index from 1, its fraction dropped: 0 when that is
// not in 1..count (NaN and negatives included).
size_t localIndexFromNumber(double number, size_t count);

// The argument at `index` as a VALUELIST; anything else sets status 33 and
// gives null.
localValueList *localArgValueList(localErrorType &status, const localValueVector &arguments, size_t index);

#endif
