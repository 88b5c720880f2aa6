#include "localDbtBrowseWidget200123.h"

#include "localDb.h"
#include "localOperatorCompiled.h"
#include "localString.h"
#include "localVCL.h"

#include <QApplication>
#include <QIcon>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace {

// The head marks of a column the user may sort and search by, and of the
// column whose index is the current order: PNG pictures as Base64 text.
const char16_t *const markIndexed =
    u"iVBORw0KGgoAAAANSUhEUgAAAAoAAAAKBAMAAAB/HNKOAAAAKlBMVEUAAAB6iqB6iqB6iqB6iqB6iqB6iqB6iqB6iqB6iqB6iqB6iqB6iqB6iqDgZ"
    u"ZNAAAAADXRSTlMAEGgVAajPBAr5hiRM3zMnyAAAACxJREFUCNdjYMAAvHfv3r3IwHRZ0FaBgSWsPNWBgaFz1QygBPfdDSD5MzCFABqFCl5BUmwzAAAA"
    u"AElFTkSuQmCC";
const char16_t *const markCurrent =
    u"iVBORw0KGgoAAAANSUhEUgAAAAoAAAAKBAMAAAB/HNKOAAAAHlBMVEUAAAAqXKoqXKoqXKoqXKoqXKoqXKoqXKoqXKoqXKrU70NqAAAACXRSTlMAAH"
    u"q4B+8aQhA/kBPnAAAALklEQVQI12NgwACcM4GAgQlITGJgtJw505CBwXXmVAcGBraZ00DylQUgkoOBAQAR9wpDiGMh3QAAAABJRU5ErkJggg==";

// The step of every fill around a key: the key lands in the buffer's middle,
// so that a move either way finds rows before the next fill.
int64_t halfCapacity(const localDbDataSource200123 &source)
{
    return source.capacity / 2;
}

std::u16string numberText(int64_t value)
{
    return localDb::number(value);
}

} // namespace

localDbtBrowseWidget200123::localDbtBrowseWidget200123(localDbDataSource200123 &source,
                                                       const std::vector<localDbGridColumn> &gridColumns,
                                                       bool selection, QWidget *parent)
    : localVclGrid200123(parent), dataSource(source), selectionMode(selection)
{
    std::vector<localDbGridColumn> shown = gridColumns;
    if (shown.empty()) {
        for (const localDbDataSource200123::selectColumn &column : source.selectColumns) {
            localDbGridColumn made;
            made.caption = made.dataBuferColumn = column.name.empty() ? column.expression : column.name;
            shown.push_back(made);
        }
    }
    for (const localDbGridColumn &column : shown) {
        localVclGrid200123column record;
        record.caption = column.caption;
        record.id = column.dataBuferColumn;
        record.description = column.description;
        record.width = column.width;
        columnAdd(record);
        columnIndexNames.push_back(column.idxName);
        int found = -1;
        for (size_t i = 0; i < source.selectColumns.size() && found < 0; ++i) {
            const localDbDataSource200123::selectColumn &select = source.selectColumns[i];
            if (select.name == column.dataBuferColumn || select.expression == column.dataBuferColumn)
                found = int(i);
        }
        bufferColumns.push_back(found);
    }
    fillFromKeyVal(dataSource.fixedKeyValues);
    currentLine = headLines;
    currentColumn = fixedColumns;
    columnMarksShow();
}

void localDbtBrowseWidget200123::columnMarksShow()
{
    static const QIcon indexed(localVCL::pixmapFromBase64(markIndexed));
    static const QIcon current(localVCL::pixmapFromBase64(markCurrent));
    const std::u16string order = dataSource.currentIndex ? dataSource.currentIndex->name : std::u16string();
    if (marksShownFor == order && !marksShownFor.empty())
        return;
    marksShownFor = order;
    for (size_t i = 0; i < columns.size() && i < columnIndexNames.size(); ++i) {
        if (columns[i].button == nullptr)
            continue;
        const std::u16string &name = columnIndexNames[i];
        columns[i].button->setIcon(name.empty() ? QIcon() : name == order ? current : indexed);
    }
}

localDbtBrowseWidget200123::~localDbtBrowseWidget200123() = default;

void localDbtBrowseWidget200123::dataSourceOwn(std::unique_ptr<localDbDataSource200123> source)
{
    ownedSource = std::move(source);
}

uint32_t localDbtBrowseWidget200123::mCurRec() const
{
    return currentLine < headLines ? mRec1 : mRec1 + uint32_t(currentLine - headLines);
}

void localDbtBrowseWidget200123::fillFromKeyVal(const keyValues &keys)
{
    QApplication::beep();
    dataSource.fillFromKeyVal(keys);
}

void localDbtBrowseWidget200123::bufferFillAroundKey(const keyValues &keys, int64_t step)
{
    // No key (an empty buffer) is the top: a walk back from nothing would
    // start at the table's end.
    const keyValues start = keys.empty() ? keys : dataSource.relativeKey(keys, step);
    fillFromKeyVal(start);
    if (!dataSource.dataBufer.empty())
        positionOnKey(keys);
}

void localDbtBrowseWidget200123::positionOnKey(const keyValues &keys)
{
    const int64_t i = dataSource.bufferRowFindByKey(keys);
    if (i < 0)
        return;
    while (currentLine - headLines > i && currentLine > headLines)
        --currentLine;
    mRec1 = uint32_t(i + headLines - currentLine);
}

void localDbtBrowseWidget200123::cursorToLastRow()
{
    const size_t rows = dataSource.dataBufer.size();
    if (mRec1 >= rows)
        mRec1 = rows > 0 ? uint32_t(rows - 1) : 0;
    while (currentLine > headLines && mCurRec() >= rows)
        --currentLine;
}

void localDbtBrowseWidget200123::bufferFillFromBottom()
{
    QApplication::beep();
    dataSource.fillFromBottom();
    const int32_t rows = int32_t(dataSource.dataBufer.size());
    mRec1 = uint32_t(std::max(0, rows - dataLines()));
    currentLine = headLines + std::max(0, rows - 1 - int32_t(mRec1));
}

void localDbtBrowseWidget200123::indexAboutToChange(const std::u16string &) {}

bool localDbtBrowseWidget200123::indexKeepsFixed(const localDbIndex &) const
{
    return true;
}

int localDbtBrowseWidget200123::changeIndexByColumn(int32_t column)
{
    if (column < 0 || size_t(column) >= columnIndexNames.size() || columnIndexNames[size_t(column)].empty())
        return 0;
    const std::u16string &indexName = columnIndexNames[size_t(column)];
    if (dataSource.indexFind(indexName) == nullptr)
        return 0;
    // The same record stays under the cursor: its id gives its values in
    // the new index's fields.
    const int64_t id = getId(mCurRec());
    indexAboutToChange(indexName);
    dataSource.indexSwitch(indexName);
    keyValues key;
    if (id > 0) {
        const localDbDataSource200123::row record = dataSource.getTmpRowById(id);
        for (size_t i = 0; i < dataSource.keyFields().size() && i < record.size(); ++i)
            key.push_back(localFromQString(record[i]));
    }
    mRec1 = 0;
    bufferFillAroundKey(key, -halfCapacity(dataSource));
    cursorToLastRow();
    update();
    return 1;
}

bool localDbtBrowseWidget200123::findFast(const std::u16string &word)
{
    logWriteStamped(u"tmpWordForFind=[" + word + u"] " +
                    localAscii((" func: " + std::string(__func__) + " file: " + __FILE__).c_str()));
    const int64_t column = int64_t(currentColumn) - fixedColumns + firstColumn;
    if (column < 0 || size_t(column) >= columnIndexNames.size() || columnIndexNames[size_t(column)].empty())
        return false;
    const std::u16string &indexName = columnIndexNames[size_t(column)];
    const localDbIndex *index = dataSource.indexFind(indexName);
    if (index == nullptr)
        return false;
    // Within a fixed group the word is sought in the field after it.
    keyValues sought = indexKeepsFixed(*index) ? dataSource.fixedKeyValues : keyValues();
    const size_t wordField = sought.size();
    sought.push_back(word);
    const keyValues found = dataSource.dbtRecordGetRelativelyByKeyAsVectorOfValues(
        dataSource.dbName, dataSource.fromClause(), index->keyNames, sought, sought, wordField, 0, false,
        dataSource.whereConditions, dataSource.statementLog);
    if (found.size() <= wordField || found[wordField].substr(0, word.size()) != word)
        return false;
    if (dataSource.currentIndex == nullptr || dataSource.currentIndex->name != indexName) {
        indexAboutToChange(indexName);
        dataSource.indexSwitch(indexName);
    }
    bufferFillAroundKey(found, -halfCapacity(dataSource));
    cursorToLastRow();
    return true;
}

std::u16string localDbtBrowseWidget200123::text(int32_t row, int32_t column)
{
    if (row < 0 || size_t(row) >= dataSource.dataBufer.size() || column < 0)
        return std::u16string();
    return rowText(dataSource.dataBufer[size_t(row)], int64_t(column) + firstColumn);
}

std::u16string localDbtBrowseWidget200123::rowText(const localDbDataSource200123::row &values, int64_t record) const
{
    if (record < 0 || size_t(record) >= bufferColumns.size() || bufferColumns[size_t(record)] < 0)
        return std::u16string();
    const size_t at = dataSource.keyFields().size() + size_t(bufferColumns[size_t(record)]);
    return at < values.size() ? localFromQString(values[at]) : std::u16string();
}

void localDbtBrowseWidget200123::cellEdit(int32_t line, int32_t column)
{
    localVclGrid200123::cellEdit(line, column);
}

// --- keys ---

void localDbtBrowseWidget200123::choose()
{
    const int64_t id = getId(mCurRec());
    // The window closes first: a receiver may open the next one. It is the
    // sub-window around the widget, or its own top window, never the
    // console's.
    QWidget *frame = nullptr;
    for (QWidget *up = parentWidget(); up != nullptr && frame == nullptr; up = up->parentWidget())
        if (qobject_cast<QMdiSubWindow *>(up) != nullptr)
            frame = up;
    QMdiArea *area = localVCL::mdiArea();
    if (frame == nullptr && window() != this && (area == nullptr || !window()->isAncestorOf(area)))
        frame = window();
    if (frame != nullptr)
        frame->close();
    logWrite(u"emit this->idSelectedSignal(" + numberText(id));
    emit idSelectedSignal(id);
}

void localDbtBrowseWidget200123::mousePressEvent(QMouseEvent *event)
{
    localVclGrid200123::mousePressEvent(event);
    cursorToLastRow();
    update();
}

void localDbtBrowseWidget200123::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (enter && selectionMode && getId(mCurRec()) >= 1) {
        choose();
        return;
    }
    if ((enter && (modifiers == Qt::NoModifier || modifiers == Qt::ShiftModifier))
        || (key == Qt::Key_F4 && modifiers == Qt::NoModifier)) {
        cellEdit(currentLine, currentColumn);
        return;
    }
    if (modifiers == Qt::ControlModifier && key >= Qt::Key_0 && key <= Qt::Key_9) {
        const int32_t column = key == Qt::Key_0 ? 9 : key - Qt::Key_1;
        logWrite(u"colWithIndexWichSelect=" + numberText(column));
        changeIndexByColumn(column);
        columnMarksShow();
        return;
    }
    if (!cursorKey(event))
        gridKeyPress(event);
    cursorToLastRow();
    columnMarksShow();
}

bool localDbtBrowseWidget200123::cursorKey(QKeyEvent *event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    if (modifiers == Qt::ControlModifier) {
        if (event->key() == Qt::Key_PageUp) {
            fillFromKeyVal({});
            mRec1 = 0;
            currentLine = headLines;
        } else if (event->key() == Qt::Key_End) {
            bufferFillFromBottom();
        } else {
            return false;
        }
        findWord.clear();
        update();
        return true;
    }
    if (modifiers != Qt::NoModifier)
        return false;
    switch (event->key()) {
    case Qt::Key_Up:
        keyUp();
        break;
    case Qt::Key_Down:
        keyDown();
        break;
    case Qt::Key_PageDown:
        keyPageDown();
        break;
    case Qt::Key_PageUp:
        keyPageUp();
        break;
    default:
        return false;
    }
    findWord.clear();
    update();
    return true;
}

void localDbtBrowseWidget200123::keyUp()
{
    if (currentLine > headLines) {
        lineUp();
        return;
    }
    if (mRec1 > 0) {
        --mRec1;
        return;
    }
    bufferFillAroundKey(dataSource.bufferRowKeyValues(0), -halfCapacity(dataSource));
    if (mRec1 != 0)
        --mRec1; // else the start of the table
}

void localDbtBrowseWidget200123::keyDown()
{
    const size_t rows = dataSource.dataBufer.size();
    if (size_t(mCurRec()) + 1 < rows) {
        if (currentLine < visibleLines() - 1)
            lineDown();
        else
            ++mRec1;
        return;
    }
    // The last row of the buffer: refill from the first visible row.
    const int32_t oldDataLine = currentLine - headLines;
    const keyValues oldCursorKey = dataSource.bufferRowKeyValues(mCurRec());
    fillFromKeyVal(dataSource.bufferRowKeyValues(mRec1));
    mRec1 = 0;
    const int32_t newRows = int32_t(dataSource.dataBufer.size());
    // The old cursor row is found again by its key: when the first visible
    // row was deleted meanwhile, it no longer stands on the same line.
    const int64_t found = dataSource.bufferRowFindByKey(oldCursorKey);
    if (found >= 0 && dataSource.bufferRowKeyValues(size_t(found)) == oldCursorKey) {
        if (found + 1 >= newRows) {
            cursorToLastRow(); // the end of the table
            return;
        }
        const int64_t top = found + 1 - oldDataLine;
        mRec1 = uint32_t(std::max<int64_t>(0, top));
        currentLine = headLines + int32_t(found + 1 - mRec1);
        return;
    }
    cursorToLastRow();
    if (oldDataLine >= newRows - 1)
        return; // the end of the table
    ++mRec1;
}

void localDbtBrowseWidget200123::keyPageDown()
{
    const int32_t lines = visibleLines();
    if (currentLine < lines - 1) {
        currentCellSet(std::max(headLines, lines - 1), currentColumn);
        return;
    }
    if (int64_t(mRec1) + 2 * lines <= int64_t(dataSource.dataBufer.size())) {
        mRec1 = mCurRec();
        return;
    }
    logWrite(u"в буфере не хватает строк mCurRec=" + numberText(mCurRec()));
    bufferFillAroundKey(dataSource.bufferRowKeyValues(mCurRec()), -halfCapacity(dataSource));
    const int32_t rows = int32_t(dataSource.dataBufer.size());
    if (rows < 2 * lines) {
        mRec1 = 0;
        return;
    }
    // The last line becomes the first; near the table's end the last
    // screenful stays full.
    mRec1 = std::min<uint32_t>(mCurRec(), uint32_t(std::max(0, rows - dataLines())));
}

void localDbtBrowseWidget200123::keyPageUp()
{
    if (currentLine > headLines) {
        currentCellSet(headLines, currentColumn);
        return;
    }
    const int32_t lines = dataLines();
    if (int32_t(mRec1) < lines)
        bufferFillAroundKey(dataSource.bufferRowKeyValues(mRec1), -halfCapacity(dataSource));
    if (int32_t(mRec1) <= lines)
        mRec1 = 0;
    else
        mRec1 -= uint32_t(lines - 1);
}

// --- the window of a program's description ---

bool newLocalDbtBrowseWidget200123(localErrorType &status, const localDbBrowseDescription &description)
{
    // A program's browse reads the application's data file unless the
    // connection is open already.
    QSqlDatabase open;
    if (description.dbName == localDb::mainConnectionName && !localDb::connectionFind(description.dbName, open))
        localDb::testDbSqliteInit(localServices::applicationGetDataFullFileName());
    std::unique_ptr<localDbDataSource200123> source = description.dataSourceMake();
    if (!source || !source->valid()) {
        status = localErrorTypeDATABASEconnect;
        return false;
    }
    if (!description.notice.empty())
        localVCL::applicationMessage(localToQString(description.notice), QString(), 1);
    localDbtBrowseWidget200123 *widget = new localDbtBrowseWidget200123(*source, description.gridColumns);
    widget->dataSourceOwn(std::move(source));
    widget->resize(700, 500);
    localVCL::applicationShowWidget(widget, localToQString(description.aliases.empty()
                                                               ? std::u16string()
                                                               : description.aliases.front().dbtName),
                                    false);
    return true;
}
