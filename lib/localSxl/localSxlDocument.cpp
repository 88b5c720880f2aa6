#include "localSxlDocument.h"

#include "localClassDeclaration.h"
#include "localErrorType.h"
#include "localJson.h"
#include "localString.h"
#include "localValueDescription.h"
#include "localValueList.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <limits>

namespace {

void printLine(const std::u16string &text)
{
    std::cout << localNarrow(text) << "\n" << std::flush;
}

std::u16string decimal(int64_t number)
{
    return localAscii(std::to_string(number).c_str());
}

// A number of the file as an integer: rounded, NaN as 0, clamped to the type.
int64_t rounded(double number, int64_t low, int64_t high)
{
    if (std::isnan(number))
        return 0;
    return int64_t(std::clamp(std::round(number), double(low), double(high)));
}

int32_t roundedInt(double number)
{
    return int32_t(rounded(number, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()));
}

uint32_t roundedIndex(double number)
{
    return uint32_t(rounded(number, 0, std::numeric_limits<uint32_t>::max()));
}

bool before(const localSxlCell &cell, uint32_t row, uint32_t column)
{
    return cell.rowNumber < row || (cell.rowNumber == row && cell.colNumber < column);
}

// The place of (row, column) among the cells behind the default one.
std::vector<localSxlCell>::const_iterator cellPlace(const std::vector<localSxlCell> &cells, uint32_t row,
                                                    uint32_t column)
{
    return std::lower_bound(cells.begin() + 1, cells.end(), std::make_pair(row, column),
                            [](const localSxlCell &cell, const std::pair<uint32_t, uint32_t> &key) {
                                return before(cell, key.first, key.second);
                            });
}

// Records are sorted by one number each: colNumber for columns, rowNumber for rows.
template <uint32_t localSxlCell::*number>
std::vector<localSxlCell>::const_iterator recordPlace(const std::vector<localSxlCell> &records, uint32_t key)
{
    return std::lower_bound(records.begin(), records.end(), key,
                            [](const localSxlCell &record, uint32_t wanted) { return record.*number < wanted; });
}

void styleWrite(std::u16string &out, const localSxlStyle &style)
{
    out += u",\"colorBorder\":" + decimal(style.colorBorder);
    out += u",\"colorFon\":" + decimal(style.colorFon);
    out += u",\"colorPattern\":" + decimal(style.colorPattern);
    out += u",\"colorText\":" + decimal(style.colorText);
    out += u",\"alignmentH\":" + decimal(style.alignmentH);
    out += u",\"alignmentV\":" + decimal(style.alignmentV);
}

void fontWrite(std::u16string &out, const localSxlFont &font)
{
    out += u",\"fontFamily\": \"" + font.family + u"\"";
    out += u",\"fontSize\":" + decimal(font.size);
    static const char16_t *const flagKeys[] = {u",\"fontBold\":1", u",\"fontItalic\":1", u",\"fontStrikeout\":1",
                                               u",\"fontUnderline\":1"};
    for (int bit = 0; bit < 4; ++bit)
        if (font.flags & (1 << bit))
            out += flagKeys[bit];
}

void cellWrite(std::u16string &out, const localSxlCell &cell)
{
    out += u"{\"rowNumber\" : " + decimal(cell.rowNumber);
    out += u",\"colNumber\" : " + decimal(cell.colNumber);
    out += u",\"text\" : \"";
    localJson::jsonEscapeAppend(out, localFromQString(cell.text));
    out += u"\",\"details\" : \"";
    localJson::jsonEscapeAppend(out, cell.details);
    out += u"\"";
    if (cell.style != nullptr)
        styleWrite(out, *cell.style);
    if (cell.font != nullptr)
        fontWrite(out, *cell.font);
    out += u"}\n";
}

// What one item of the file's "cells" sets on its cell.
struct cellReader {
    localSxlCell &cell;
    bool fontSeen = false;
    std::u16string family;
    int32_t size = 0;
    int32_t flags = 0;

    explicit cellReader(localSxlCell &target) : cell(target) {}

    void read(const localValueListItem &item)
    {
        const std::u16string &key = item.presentation;
        const double number = item.value.localValueNumber;
        if (key == u"text")
            cell.text = localToQString(item.value.toString());
        else if (key == u"rowNumber")
            cell.rowNumber = roundedIndex(number);
        else if (key == u"colNumber")
            cell.colNumber = roundedIndex(number);
        else if (!styleRead(key, roundedInt(number)))
            fontRead(key, item.value);
    }

    bool styleRead(const std::u16string &key, int32_t value)
    {
        static const std::pair<const char16_t *, int32_t localSxlStyle::*> keys[] = {
            {u"alignmentH", &localSxlStyle::alignmentH},     {u"alignmentV", &localSxlStyle::alignmentV},
            {u"colorBorder", &localSxlStyle::colorBorder},   {u"colorFon", &localSxlStyle::colorFon},
            {u"colorPattern", &localSxlStyle::colorPattern}, {u"colorText", &localSxlStyle::colorText}};
        for (const auto &[name, field] : keys) {
            if (key == name) {
                cell.styleMade().*field = value;
                return true;
            }
        }
        return false;
    }

    void fontRead(const std::u16string &key, const localValueDescription &value)
    {
        static const std::pair<const char16_t *, int32_t> flagKeys[] = {
            {u"fontBold", 1}, {u"fontItalic", 2}, {u"fontStrikeout", 4}, {u"fontUnderline", 8}};
        if (key == u"fontFamily") {
            family = value.toString();
        } else if (key == u"fontSize") {
            size = roundedInt(value.localValueNumber);
        } else {
            const auto flag = std::find_if(std::begin(flagKeys), std::end(flagKeys),
                                           [&key](const auto &row) { return key == row.first; });
            if (flag == std::end(flagKeys))
                return;
            if (value.localValueNumber > 0.0)
                flags |= flag->second;
        }
        fontSeen = true;
    }

    void finish()
    {
        if (fontSeen)
            localSxlDocument::fontApply(cell, family, size, flags);
    }
};

// The parsed text as the document's value list, or null after the line that says why.
const localValueList *documentList(const localValueDescription *parsed, const std::u16string &text)
{
    const bool isArray = [&text] {
        const size_t first = text.find_first_not_of(u" \t\r\n");
        return first != std::u16string::npos && text[first] == u'[';
    }();
    // The reader makes a list of an array too; a document is only ever an object.
    if (parsed->getType() != localValueTypeOBJ || isArray) {
        printLine(u"Парсинг ERROR! Результат - не объект ");
        return nullptr;
    }
    if (parsed->localValueObject == nullptr) {
        printLine(u"Парсинг ERROR! Cсылка на объект битая ");
        return nullptr;
    }
    const localValueList *list = localValueList::fromValue(parsed);
    if (list == nullptr) {
        const localClassDeclaration *declaration = parsed->localValueClass;
        printLine(u"Парсинг ERROR! Результат не ValueList. Это ["
                  + (declaration != nullptr ? declaration->className : std::u16string(u"<unknown class>")) + u"]");
    }
    return list;
}

} // namespace

localSxlStyle &localSxlCell::styleMade()
{
    if (style == nullptr)
        style = std::make_unique<localSxlStyle>();
    return *style;
}

localSxlFont &localSxlCell::fontMade()
{
    if (font == nullptr)
        font = std::make_unique<localSxlFont>();
    return *font;
}

localSxlDocument::localSxlDocument()
{
    clear();
}

void localSxlDocument::clear()
{
    columns.clear();
    rows.clear();
    cells.clear();
    cells.emplace_back();
    cells[0].styleMade();
}

size_t localSxlDocument::cellIndex(uint32_t row, uint32_t column)
{
    // Filling in row order appends: no search and no move.
    if (cells.size() == 1 || before(cells.back(), row, column)) {
        cells.emplace_back(row, column);
        return cells.size() - 1;
    }
    const auto place = cellPlace(cells, row, column);
    const size_t index = size_t(place - cells.begin());
    if (place != cells.end() && place->rowNumber == row && place->colNumber == column)
        return index;
    cells.emplace(place, row, column);
    return index;
}

const localSxlCell *localSxlDocument::cellFind(uint32_t row, uint32_t column) const
{
    const auto place = cellPlace(cells, row, column);
    if (place != cells.end() && place->rowNumber == row && place->colNumber == column)
        return &*place;
    return nullptr;
}

void localSxlDocument::alignmentSet(uint32_t row, uint32_t column, int32_t horizontal, int32_t vertical)
{
    localSxlStyle &style = cells[cellIndex(row, column)].styleMade();
    if (horizontal >= 0)
        style.alignmentH = horizontal;
    if (vertical >= 0)
        style.alignmentV = vertical;
}

void localSxlDocument::colorSet(uint32_t row, uint32_t column, int32_t text, int32_t background, int32_t border,
                                int32_t pattern)
{
    localSxlStyle &style = cells[cellIndex(row, column)].styleMade();
    for (const auto &[value, field] : {std::make_pair(text, &localSxlStyle::colorText),
                                       std::make_pair(background, &localSxlStyle::colorFon),
                                       std::make_pair(border, &localSxlStyle::colorBorder),
                                       std::make_pair(pattern, &localSxlStyle::colorPattern)})
        if (value >= 0)
            style.*field = value;
}

void localSxlDocument::fontSet(uint32_t row, uint32_t column, const std::u16string &family, int32_t size,
                               int32_t flags)
{
    fontApply(cells[cellIndex(row, column)], family, size, flags);
}

void localSxlDocument::fontApply(localSxlCell &cell, const std::u16string &family, int32_t size, int32_t flags)
{
    localSxlFont &font = cell.fontMade();
    if (!family.empty()) {
        font.family = family;
        // A new font from the family, with the old size, weight, italic,
        // strikeout and underline.
        font.qfont.family = localToQString(family);
    }
    if (size > 0) {
        font.size = size;
        font.qfont.pointSize = size;
    }
    if (flags >= 0) {
        font.flags = flags;
        font.qfont.weight = (flags & 1) != 0 ? 75 : 50;
        font.qfont.italic = (flags & 2) != 0;
        font.qfont.strikeOut = (flags & 4) != 0;
        // Underline follows the strikeout bit: documents keep and write their
        // underline flag, and the window has never drawn it.
        font.qfont.underline = (flags & 4) != 0;
    }
}

void localSxlDocument::textSet(uint32_t row, uint32_t column, const QString &text)
{
    cells[cellIndex(row, column)].text = text;
}

void localSxlDocument::pictureSet(uint32_t row, uint32_t column, const QByteArray &picture)
{
    cells[cellIndex(row, column)].picture = picture;
}

int32_t localSxlDocument::columnWidth(uint32_t column) const
{
    const auto place = recordPlace<&localSxlCell::colNumber>(columns, column);
    if (place != columns.end() && place->colNumber == column && place->style != nullptr)
        return place->style->width;
    return defaultStyle().width;
}

int32_t localSxlDocument::rowHeight(uint32_t row) const
{
    const auto place = recordPlace<&localSxlCell::rowNumber>(rows, row);
    if (place != rows.end() && place->rowNumber == row && place->style != nullptr)
        return place->style->height;
    return defaultStyle().height;
}

void localSxlDocument::columnWidthSet(uint32_t column, int32_t width)
{
    auto place = columns.begin() + (recordPlace<&localSxlCell::colNumber>(columns, column) - columns.begin());
    if (place == columns.end() || place->colNumber != column)
        place = columns.emplace(place, 0, column);
    place->styleMade().width = width;
}

void localSxlDocument::defaultHeightSet(int32_t height)
{
    cells[0].style->height = height;
}

QString localSxlDocument::cellTextGet(uint32_t row, uint32_t column) const
{
    if (column == 0)
        return QString::number(row);
    if (row == 0)
        return QString::number(column);
    const localSxlCell *cell = cellFind(row, column);
    return cell != nullptr ? cell->text : defaultCell().text;
}

size_t localSxlDocument::find(const QString &text, Qt::CaseSensitivity sensitivity) const
{
    for (size_t i = 1; i < cells.size(); ++i)
        if (cells[i].text.indexOf(text, 0, sensitivity) >= 0)
            return i;
    return 0;
}

std::u16string localSxlDocument::toJson() const
{
    std::u16string out = u"{\"type\" : \"SXL\",\n\"cloumns\" : [],\n\"rows\" : [],\n\"cells\" : [";
    out.reserve(out.size() + cells.size() * 96);
    for (size_t i = 0; i < cells.size(); ++i) {
        if (i > 0)
            out += u',';
        cellWrite(out, cells[i]);
    }
    out += u"]\n}";
    return out;
}

bool localSxlDocument::fromJson(const std::u16string &text)
{
    localErrorType status = localErrorTypeOK;
    size_t position = 0;
    localValueDescription *parsed = nullptr;
    if (!localJson::scanStringParseJson(status, text, position, &parsed)) {
        printLine(localErrorText(status));
        return false;
    }
    const localValueList *list = documentList(parsed, text);
    if (list == nullptr) {
        localValueRelease(parsed);
        return false;
    }
    clear();
    if (const localValueList *items = localValueList::fromValue(list->valueByKey(u"cells"))) {
        cells.reserve(items->size() + 1);
        for (const localValueListItem &item : items->items) {
            cells.emplace_back();
            const localValueList *fields = localValueList::fromValue(&item.value);
            if (fields == nullptr)
                continue;
            cellReader reader(cells.back());
            for (const localValueListItem &field : fields->items)
                reader.read(field);
            reader.finish();
        }
    }
    localValueRelease(parsed);
    return true;
}

bool localSxlDocument::load(const std::u16string &fileName)
{
    localErrorType status = localErrorTypeOK;
    std::u16string text;
    if (!localString::fileRead(status, fileName, text, u"Utf8")) {
        printLine(localErrorText(status));
        return false;
    }
    if (!fromJson(text)) {
        printLine(u"Error load TABLEDOCUMENT!");
        return false;
    }
    return true;
}

localValueList *localSxlDocument::toValueList(localValueDescription *cell) const
{
    localValueList *list = localValueList::newInCell(cell);
    list->valueSetByPresentation(u"SXL", u"type");
    for (const char16_t *name : {u"columns", u"rows", u"cells"}) {
        list->items.emplace_back();
        list->items.back().presentation = name;
        localValueList::newInCell(&list->items.back().value);
    }
    localValueList &items = *localValueList::fromValue(&list->items.back().value);
    items.items.reserve(cells.size());
    for (size_t i = 0; i < cells.size(); ++i) {
        const localSxlCell &source = cells[i];
        items.items.emplace_back();
        items.items.back().presentation = u"cell [" + decimal(int64_t(i)) + u"]";
        localValueList &fields = *localValueList::newInCell(&items.items.back().value);
        auto add = [&fields](const char16_t *key, double number) {
            fields.items.emplace_back();
            fields.items.back().presentation = key;
            fields.items.back().value.setVal(number);
        };
        add(u"rowNumber", source.rowNumber);
        add(u"colNumber", source.colNumber);
        fields.valueSetByPresentation(localFromQString(source.text), u"text");
        fields.valueSetByPresentation(source.details, u"details");
        if (const localSxlStyle *style = source.style.get()) {
            add(u"colorBorder", style->colorBorder);
            add(u"colorFon", style->colorFon);
            add(u"colorPattern", style->colorPattern);
            add(u"colorText", style->colorText);
            add(u"alignmentH", style->alignmentH);
            add(u"alignmentV", style->alignmentV);
            add(u"height", style->height);
            add(u"width", style->width);
        }
    }
    return list;
}
