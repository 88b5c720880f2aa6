// The JSON form of values: the typed writer, the list writer, the general
// reader that turns JSON text into nested value lists, the step that turns
// such lists back into values, and the reader that fills a value table.
//
// The writer escapes brackets and braces; the reader does not undo those four
// pairs, so strings holding them come back with a backslash before each.
// Booleans are written as quoted words and come back as the number 0. Both
// losses are part of the format.
#ifndef LOCALJSON_H
#define LOCALJSON_H

#include "localValueDescription.h"

#include <string>

class localValueList;
class localValueTable;

namespace localJson {

// Escapes apostrophe, quote, backslash, slash, tab, line feed, carriage
// return, form feed, backspace and [ ] { } with a backslash.
std::u16string jsonEscape(const std::u16string &text);
void jsonEscapeAppend(std::u16string &out, const std::u16string &text);

// The typed record of a value: {"t": "NUM","vP": "1","v": "1"}. Lists
// nested deeper than the readers take (ten thousand levels), a list that
// holds itself among them, fail with status 32, or 16 when the stack runs
// short, after a line saying so; `out` then holds a part.
bool valueToJsonAppend(localErrorType &status, std::u16string &out, const localValueDescription &value);
// The same, giving the empty text on failure.
std::u16string valueToJson(const localValueDescription &value);

// The array of a list's items: "[", then per item a line feed, a comma
// before all but the first, {"p": "...","v": <typed record>}; then a line
// feed and "]". Fails as valueToJsonAppend.
bool valueListToJson(localErrorType &status, const localValueList &list, std::u16string &out);
std::u16string valueListToJson(const localValueList &list);

// The general reader at `position` (moved past what it read). On success
// `result` (which must arrive null) holds a new VALUELIST object: keys of
// objects become presentations, array items have empty ones. On failure
// status 34 and `result` stays null.
bool scanStringParseJson(localErrorType &status, const std::u16string &text, size_t &position,
                         localValueDescription **result);

// Restores a value from the lists the reader makes of a typed record
// ("t", "tN", "v"). `result` must arrive null; it is always set, and on
// failure the status is 35 (or 14 for an unregistered class).
bool fromJsonValueList(localErrorType &status, localContextUTF8 *context, const localValueList &list,
                       localValueDescription **result);

// The general reader, then fromJsonValueList of what it read: the inverse of
// valueToJson within the losses above (VALUEFROMJSON). `result` must arrive
// null; on failure it is null.
bool valueFromJson(localErrorType &status, localContextUTF8 *context, const std::u16string &text,
                   localValueDescription **result);

// Fills the VALUETABLE that `result` holds from a JSON object: columns KEY
// and VALUE, one row per member; string values as they stand, object values
// as nested tables. False without a status when `result` holds no table;
// status 34 on a syntax error.
bool scanStringGetValueTableFromJson(localErrorType &status, const std::u16string &text, size_t &position,
                                     localValueDescription *result);
bool scanStringGetValueTableFromJson(localErrorType &status, const std::u16string &text, size_t &position,
                                     localValueTable &table);

// The number a string stands for, with the C library's atof rules on the
// trimmed text ("12abc" gives 12, "abc" 0) but independent of the locale.
double numberFromText(const std::u16string &text);

// Reads a UTF-8 file holding the typed record of a list and restores the
// list. Never fails: any fault prints its status text and gives an empty
// list. The caller owns the list.
localValueList *valueListFromJsonFile(const std::u16string &fileName);

} // namespace localJson

#endif
