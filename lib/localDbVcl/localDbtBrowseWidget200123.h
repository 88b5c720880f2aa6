// The browse window of a database table: a grid whose rows are a slice of
// the data source's buffer. Every movement is a key: at the buffer's ends
// the buffer is refilled from the key of a row, so a table of any size is
// paged with at most `capacity` rows in memory.
#ifndef LOCALDBTBROWSEWIDGET200123_H
#define LOCALDBTBROWSEWIDGET200123_H

#include "localVclGrid200123.h"

#include "localDbBrowseDescription.h"
#include "localDbDataSource200123.h"
#include "localErrorType.h"

#include <cstdint>
#include <memory>
#include <vector>

class localDbtBrowseWidget200123 : public localVclGrid200123 {
    Q_OBJECT
public:
    typedef localDbDataSource200123::keyValues keyValues;

    // The grid's columns are `gridColumns`, or every select column (50
    // wide) when that is empty. The source is not owned; it must outlive
    // the widget. The buffer is filled from the top.
    localDbtBrowseWidget200123(localDbDataSource200123 &source, const std::vector<localDbGridColumn> &gridColumns,
                               bool selectionMode = false, QWidget *parent = nullptr);
    ~localDbtBrowseWidget200123() override;

    localDbDataSource200123 &dataSource;
    // The buffer row on the first data line.
    uint32_t mRec1 = 0;
    const bool selectionMode;
    // The index of each grid column, empty for a column the user may not
    // sort or search by.
    std::vector<std::u16string> columnIndexNames;

    // Takes the source over, for windows that outlive their caller.
    void dataSourceOwn(std::unique_ptr<localDbDataSource200123> source);

    // The buffer row under the cursor (`mRec1` while it stands in the head).
    uint32_t mCurRec() const;
    // Beeps (a database access is heard) and refills.
    void fillFromKeyVal(const keyValues &keys);
    void bufferFillAroundKey(const keyValues &keys, int64_t step);
    void positionOnKey(const keyValues &keys);
    int64_t getId(uint32_t bufferRow) const { return dataSource.getId(bufferRow); }
    // 0 when the column has no index.
    int changeIndexByColumn(int32_t column);
    // Jumps to the last rows (the group's, in a hierarchy).
    void bufferFillFromBottom();
    // Marks the head buttons of the columns with an index, the current
    // order's apart.
    void columnMarksShow();

    std::u16string text(int32_t row, int32_t column) override;
    void cellEdit(int32_t line, int32_t column) override;
    bool findFast(const std::u16string &word) override;
    int32_t bufferCapacity() const override { return dataSource.capacity; }

signals:
    void idSelectedSignal(qint64 id);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    int32_t rowOfLine(int32_t line) const override { return int32_t(mRec1) + line - headLines; }
    // Index change and typing search may need to leave a hierarchy first.
    virtual void indexAboutToChange(const std::u16string &indexName);
    // Whether the fixed key values stay a prefix of `index`'s keys.
    virtual bool indexKeepsFixed(const localDbIndex &index) const;
    int32_t dataLines() const { return visibleLines() - headLines; }
    // Moves the cursor up until it stands on a buffer row.
    void cursorToLastRow();
    // The text of grid column `record` in a row shaped like a buffer row.
    std::u16string rowText(const localDbDataSource200123::row &values, int64_t record) const;

private:
    std::unique_ptr<localDbDataSource200123> ownedSource;
    // The order the head marks were last drawn for.
    std::u16string marksShownFor;
    // The buffer column of each grid column, -1 for none.
    std::vector<int> bufferColumns;

    // The cursor keys of the buffer; false for a key they leave alone.
    bool cursorKey(QKeyEvent *event);
    void keyUp();
    void keyDown();
    void keyPageDown();
    void keyPageUp();
    void choose();
};

// A browse window over the connection of `description`, shown by the
// application's window helper; false when the source cannot be built.
bool newLocalDbtBrowseWidget200123(localErrorType &status, const localDbBrowseDescription &description);

#endif
