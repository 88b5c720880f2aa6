// The named colours of the system as plain data: the English name of the
// Qt global colour, the Russian text and the value 0xRRGGBB. COLOR reads it
// here; the widget kit fills its colour choosers from the same rows.
#ifndef LOCALCOLORTABLE_H
#define LOCALCOLORTABLE_H

#include <cstddef>
#include <cstdint>
#include <string>

struct localColorName {
    const char16_t *english;
    const char16_t *russian;
    uint32_t rgb;
};

// The rows in their order.
const localColorName *localColorTable(size_t &count);

// The row whose English or Russian name equals `name` in any letter case
// (both alphabets), or null.
const localColorName *localColorFind(const std::u16string &name);

#endif
