// One column of a table and, at the same time, one value of it. The plain
// group (name, myType, len, dec) is what a caller wants; the sql group is what
// the database has now, so that a table rebuild can copy data from sqlName to
// name. Copied by value; operations take and give ordered vectors of it.
#ifndef LOCALDBFIELDDESCRIPTION_H
#define LOCALDBFIELDDESCRIPTION_H

#include <cstdint>
#include <string>
#include <vector>

class localDbFieldDescription {
public:
    // The value of the field in the current record, as UTF-8 text.
    std::string value;
    std::u16string name;
    // One of the type words "CHAR", "INT", "NUME", "NUMERIC" (or empty for a
    // type the layer does not know).
    std::u16string myType;
    int32_t len = 0;
    int32_t dec = 0;
    std::u16string sqlName;
    std::u16string sqlType;
    int32_t sqlLen = 0;
    int32_t sqlDec = 0;

    // Every table this layer makes has this key; code that needs the key
    // means this name and never asks the schema.
    static constexpr const char16_t *PrimaryKeyName = u"id";
    static constexpr const char16_t *PrimaryKeyType = u"INTEGER";
    // The key's description: id, INTEGER, 18, 0.
    static const localDbFieldDescription &primaryKey();

    localDbFieldDescription() = default;
    // Value, sqlName and sqlType stay empty, sqlLen and sqlDec 0.
    localDbFieldDescription(const std::u16string &fieldName, const std::u16string &type, int32_t length,
                            int32_t decimals);
    // A column as a schema reading gives it: the type text is what the table
    // info of the database says, e.g. "CHAR(10)". The bracket's decimals are
    // never read, and a length above the type's default becomes the default.
    localDbFieldDescription(const std::u16string &columnName, const std::u16string &typeText);

    const std::u16string &getName() const { return name; }
    const std::u16string &getMyType() const { return myType; }
    int32_t getLen() const { return len; }
    int32_t getDec() const { return dec; }
    const std::u16string &getSqlType() const { return sqlType; }
    int32_t getSqlLen() const { return sqlLen; }
    int32_t getSqlDec() const { return sqlDec; }
    const std::string &valueAsStdString() const { return value; }

    // The normalised type word of a schema's base word ("VARCHAR" gives
    // "CHAR", "NUMERIC" stays) and its default length; an unknown word
    // (the case counts) gives "" and 255.
    static std::u16string typeNormalised(const std::u16string &word);
    static int32_t typeDefaultLength(const std::u16string &word);
};

typedef std::vector<localDbFieldDescription> localDbFieldDescriptionVector;

#endif
