// What a browse grid shows: a connection, a main table with optional
// left-joined tables, the selected columns, the table's indexes with the
// current one, and a buffer of at most `capacity` rows. The grid pages
// through the table by index keys, so the source needs the main table's
// integer key `id` and at least one index.
#ifndef LOCALDBDATASOURCE200123_H
#define LOCALDBDATASOURCE200123_H

#include "localDbFieldDescription.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class QSqlQuery;

// An index of a data source: its fields and their names, both in the
// index's order. The names are qualified by the main table's alias when it
// has one, so that a join cannot make them ambiguous.
struct localDbIndex {
    std::u16string name;
    localDbFieldDescriptionVector keyFields;
    std::vector<std::u16string> keyNames;
};

class localDbDataSource200123 {
public:
    struct alias {
        std::u16string aliasName;
        std::u16string dbtName;
        // Empty: the table joins nothing but its columns stay addressable.
        std::u16string leftJoinCondition;
    };
    struct selectColumn {
        std::u16string expression;
        std::u16string name;
    };
    // A buffer row: the key values in the index's order, then the select
    // columns in theirs, all as text.
    typedef std::vector<QString> row;

    std::u16string dbName;
    std::vector<row> dataBufer;
    int32_t capacity = 256;
    std::vector<localDbIndex> indexes;
    // A leading part of the key that stays fixed (a level of a hierarchy).
    std::vector<std::u16string> fixedKeyValues;
    // Null while the source has no index.
    std::unique_ptr<localDbIndex> currentIndex;
    std::vector<selectColumn> selectColumns;
    // The first is the main table.
    std::vector<alias> aliases;
    std::vector<std::u16string> whereConditions;
    // Kept for the caller; the source itself never reads them.
    std::vector<std::u16string> callerStrings;
    // When set, every statement of a fill or a walk is appended here, so
    // that a measurement can run the same statements bare.
    std::vector<std::u16string> *statementLog = nullptr;

    static int64_t counterStaticTotal;

    // Reads the main table's indexes and makes the default one (or the first
    // by name) current; every failure is shown in a box. The buffer stays
    // empty: the browse widget fills it.
    localDbDataSource200123(std::u16string connectionName, std::vector<alias> sourceAliases,
                            std::vector<selectColumn> sourceSelectColumns, std::vector<std::u16string> keptStrings,
                            const std::u16string &defaultIdxName, std::vector<std::u16string> sourceWhereConditions);
    localDbDataSource200123(const localDbDataSource200123 &) = delete;
    localDbDataSource200123 &operator=(const localDbDataSource200123 &) = delete;
    virtual ~localDbDataSource200123();

    // False when the connection is missing or the wanted index could not be
    // set: a caller refuses such a source. A table without any index leaves
    // the source valid, with no key fields.
    bool valid() const { return usable; }

    // Rebuilds the list of indexes of the main table and makes `indexName`
    // current. With no index at all the key fields stay as they are and the
    // result tells whether there are any.
    bool idxInit(const std::u16string &indexName);

    const localDbFieldDescriptionVector &keyFields() const;
    const std::vector<std::u16string> &keyNames() const;
    // The key names joined by ", ".
    std::u16string keyList() const;
    // The main table, then " left join " for each further alias.
    std::u16string fromClause() const;
    // The select expressions joined by ",", each with " as " its name if it has one.
    std::u16string selectList() const;
    // `fieldName` as the main table's alias addresses it.
    std::u16string qualified(const std::u16string &fieldName) const;

    // The row of that id in the shape of a buffer row; empty when the
    // statement fails or there is no such row.
    row getTmpRowById(int64_t id) const;
    // The id of a buffer row, read from the key or select column that is the
    // main table's id; 0 for a row beyond the buffer or without such a column.
    int64_t getId(size_t bufferRow) const;

    // Every column of the query's current row as text.
    static row bufferRowRead(const QSqlQuery &query);
    // The same for a query whose column count the caller knows: asking the
    // query for its record costs more than reading a row.
    static row bufferRowRead(const QSqlQuery &query, int columns);

    // --- paging by keys (the buffer never holds more than `capacity` rows
    // and no statement counts or skips rows) ---
    typedef std::vector<std::u16string> keyValues;

    // Refills the buffer with the rows at and after `keys` in the current
    // index's order, in decreasing passes: equality on all given fields
    // first, then each field released in turn from the last, never past the
    // fixed ones. Values shorter than the fixed ones stand for those.
    // False (buffer as it was) without key fields; a failing pass keeps what
    // the others read.
    bool fillFromKeyVal(const keyValues &keys);
    // The last rows of the table (of the fixed group), in ascending order.
    bool fillFromBottom();
    // The first K values of a buffer row; empty without key fields or row.
    keyValues bufferRowKeyValues(size_t bufferRow) const;
    // The first row at or after `keys`, compared as text by code units; -1.
    int64_t bufferRowFindByKey(const keyValues &keys) const;
    // The key `step` rows away from `keys` (backward when negative) in the
    // current index, within the fixed group; empty when nothing was found,
    // or, if `strict`, when the table ends before the step does.
    keyValues relativeKey(const keyValues &keys, int64_t step, bool strict = false) const;
    // The same over another index's names, from a bare list of field names.
    keyValues relativeKeyByNames(const std::vector<std::u16string> &names, const keyValues &keys, int64_t step,
                                 bool strict = false) const;
    // The current index's record of that name in `indexes`, or null.
    const localDbIndex *indexFind(const std::u16string &indexName) const;
    // Makes an index of `indexes` current without reading the catalogue.
    bool indexSwitch(const std::u16string &indexName);

    // The terms of `c` equalities and one comparison on field c, numeric
    // fields (INT, INTEGER, NUME) unquoted. Values are not escaped.
    static std::u16string whereFromKeys(const std::u16string &alias, const localDbFieldDescriptionVector &fields,
                                        const keyValues &values, int64_t c, const std::u16string &comparison);
    // The same by names only: `id` is the one numeric field.
    static std::u16string whereFromKeysByNames(const std::vector<std::u16string> &names, const keyValues &values,
                                               int64_t c, const std::u16string &comparison);
    // The walk: the key `step` rows from `keyValuesGiven` along `keyNames`.
    static keyValues dbtRecordGetRelativelyByKeyAsVectorOfValues(
        const std::u16string &dbName, const std::u16string &from, const std::vector<std::u16string> &keyNames,
        const keyValues &fixedValues, const keyValues &keyValuesGiven, size_t fixedCount, int64_t step, bool strict,
        const std::vector<std::u16string> &whereConditions = {}, std::vector<std::u16string> *statementLog = nullptr);

private:
    bool usable = true;
    // The buffer column that holds the main table's id, -1 for none.
    int idColumn = -1;
    void idColumnFind();
};

#endif
