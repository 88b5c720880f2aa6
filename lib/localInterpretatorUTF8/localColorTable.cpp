#include "localColorTable.h"

#include "localInterpretatorUTF8.h"

#include <unordered_map>

namespace {

const localColorName rows[] = {
    {u"white", u"Белый", 0xffffff},
    {u"magenta", u"Пурпурный", 0xff00ff},
    {u"darkMagenta", u"Тёмно-пурпурный", 0x800080},
    {u"red", u"Красный", 0xff0000},
    {u"darkRed", u"Тёмно-красный", 0x800000},
    {u"green", u"Зелёный", 0x00ff00},
    {u"darkGreen", u"Тёмно-зелёный", 0x008000},
    {u"blue", u"Синий", 0x0000ff},
    {u"darkBlue", u"Тёмно-синий", 0x000080},
    {u"cyan", u"Бирюзовый", 0x00ffff},
    {u"darkCyan", u"Тёмно-бирюзовый", 0x008080},
    {u"yellow", u"Жёлтый", 0xffff00},
    {u"lightGray", u"Светло-серый", 0xc0c0c0},
    {u"gray", u"Серый", 0xa0a0a4},
    {u"darkGray", u"Тёмно-серый", 0x808080},
    {u"black", u"Чёрный", 0x000000},
};

constexpr size_t rowCount = sizeof rows / sizeof rows[0];

// Upper-cased names of both languages to their row.
const std::unordered_map<std::u16string, const localColorName *> &byName()
{
    static const std::unordered_map<std::u16string, const localColorName *> index = [] {
        std::unordered_map<std::u16string, const localColorName *> built;
        for (const localColorName &row : rows) {
            built.emplace(localInterpretatorUTF8::nameToUpper(row.english), &row);
            built.emplace(localInterpretatorUTF8::nameToUpper(row.russian), &row);
        }
        return built;
    }();
    return index;
}

} // namespace

const localColorName *localColorTable(size_t &count)
{
    count = rowCount;
    return rows;
}

const localColorName *localColorFind(const std::u16string &name)
{
    const auto found = byName().find(localInterpretatorUTF8::nameToUpper(name));
    return found == byName().end() ? nullptr : found->second;
}
