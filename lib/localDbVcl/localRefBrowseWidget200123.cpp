#include "localRefBrowseWidget200123.h"

#include "localDb.h"
#include "localOperatorCompiled.h"
#include "localString.h"

#include <QCoreApplication>
#include <QDir>
#include <QKeyEvent>

namespace {

// The picture file beside the program; the source tree's build keeps it in
// lib/icons below the executables.
QString marksFile()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/lib/icons/IMAGECOL.png");
}

} // namespace

const QPixmap &localRefBrowseWidget200123::mark(int which)
{
    static const std::vector<QPixmap> marks = [] {
        const QPixmap all(marksFile());
        std::vector<QPixmap> cut;
        for (int i = 0; i < 3; ++i)
            cut.push_back(all.isNull() ? QPixmap() : all.copy(16 * i, 464, 16, 16));
        return cut;
    }();
    return marks[size_t(which)];
}

localRefBrowseWidget200123::localRefBrowseWidget200123(localDbDataSource200123 &source,
                                                       const std::vector<localDbGridColumn> &gridColumns,
                                                       bool selection, QWidget *parent)
    : localDbtBrowseWidget200123(source, gridColumns, selection, parent)
{
    const std::u16string table = source.aliases.empty() ? std::u16string() : source.aliases.front().dbtName;
    if (source.indexFind(table + u"_DESCR") != nullptr) {
        alternativeIndexName = table + u"_DESCR";
        logWrite(u"Устанавлен альтернативный индекс для сортировки по" + alternativeIndexName);
    }
    mRec1 = 0;
    currentLine = headLines;
}

int localRefBrowseWidget200123::fieldColumn(const std::u16string &field) const
{
    const std::u16string name = dataSource.qualified(field);
    const std::vector<std::u16string> &keys = dataSource.keyNames();
    for (size_t i = 0; i < keys.size(); ++i)
        if (keys[i] == name)
            return int(i);
    for (size_t i = 0; i < dataSource.selectColumns.size(); ++i)
        if (dataSource.selectColumns[i].expression == name)
            return int(keys.size() + i);
    return -1;
}

bool localRefBrowseWidget200123::hierarchyIndex() const
{
    return dataSource.currentIndex != nullptr && indexKeepsFixed(*dataSource.currentIndex);
}

bool localRefBrowseWidget200123::isFolder(const localDbDataSource200123::row &values) const
{
    const int column = fieldColumn(u"isfolder");
    return column >= 0 && size_t(column) < values.size() && values[size_t(column)].toLongLong() == 1;
}

QPixmap localRefBrowseWidget200123::cellPicture(int32_t row, int32_t)
{
    if (row < 0 || size_t(row) >= dataSource.dataBufer.size())
        return QPixmap();
    return mark(isFolder(dataSource.dataBufer[size_t(row)]) ? 0 : 2);
}

const localDbDataSource200123::row *localRefBrowseWidget200123::ancestorOnLine(int32_t line) const
{
    // A deep tree shows its nearest ancestors.
    const int64_t shown = headLines - 1;
    const int64_t at = int64_t(ancestors.size()) - shown + line;
    return line < shown && at >= 0 && at < int64_t(ancestors.size()) ? &ancestors[size_t(at)] : nullptr;
}

std::u16string localRefBrowseWidget200123::headLineText(int32_t line, int32_t column)
{
    const localDbDataSource200123::row *ancestor = ancestorOnLine(line);
    return ancestor != nullptr ? rowText(*ancestor, int64_t(column) + firstColumn) : std::u16string();
}

QPixmap localRefBrowseWidget200123::headLinePicture(int32_t line)
{
    return ancestorOnLine(line) != nullptr ? mark(1) : QPixmap();
}

void localRefBrowseWidget200123::headLinesSet()
{
    headLines = 1 + int32_t(ancestors.size());
    const int32_t most = std::max(1, visibleLines() - 1);
    if (headLines > most)
        headLines = most;
    headButtonsLayout();
}

void localRefBrowseWidget200123::hierarchyDrop()
{
    ancestors.clear();
    dataSource.fixedKeyValues.clear();
    hierarchical = false;
    headLines = 1;
    if (currentLine < headLines)
        currentLine = headLines;
    headButtonsLayout();
}

void localRefBrowseWidget200123::setHierarchical(bool on)
{
    const uint32_t current = mCurRec();
    if (hierarchical && !on)
        logWrite(u"------------------------------------------------- It was Hierarchical regim! ");
    const keyValues key = dataSource.bufferRowKeyValues(current);
    if (!on) {
        hierarchyDrop();
    } else {
        ancestors.clear();
        const int parentColumn = fieldColumn(u"parentid");
        const bool hasRow = current < dataSource.dataBufer.size() && parentColumn >= 0;
        const int64_t parent = hasRow ? dataSource.dataBufer[current][size_t(parentColumn)].toLongLong() : 0;
        // One query a level, up to the root.
        for (int64_t up = parent; up != 0;) {
            const localDbDataSource200123::row ancestor = dataSource.getTmpRowById(up);
            if (ancestor.empty() || ancestors.size() > 1000)
                break;
            ancestors.insert(ancestors.begin(), ancestor);
            up = ancestor[size_t(parentColumn)].toLongLong();
        }
        dataSource.fixedKeyValues = {localDb::number(parent)};
        hierarchical = true;
        const int32_t dataLine = currentLine - headLines;
        headLinesSet();
        currentLine = headLines + std::max(0, std::min(dataLine, visibleLines() - 1 - headLines));
    }
    logWrite(u"N2EW idxName= " + (dataSource.currentIndex ? dataSource.currentIndex->name : std::u16string()));
    for (const std::u16string &value : key)
        logWrite(u"newStartBuferKey[" + value + u"]");
    mRec1 = 0;
    bufferFillAroundKey(key, -int64_t(dataSource.capacity / 2));
    cursorToLastRow();
    update();
}

void localRefBrowseWidget200123::folderEnter()
{
    const uint32_t current = mCurRec();
    const localDbDataSource200123::row folder = dataSource.dataBufer[current];
    ancestors.push_back(folder);
    dataSource.fixedKeyValues = {localDb::number(dataSource.getId(current))};
    fillFromKeyVal(dataSource.fixedKeyValues);
    mRec1 = 0;
    headLinesSet();
    currentLine = headLines;
}

void localRefBrowseWidget200123::folderLeave()
{
    const int parentColumn = fieldColumn(u"parentid");
    const localDbDataSource200123::row left = ancestors.back();
    dataSource.fixedKeyValues = {parentColumn >= 0 ? localFromQString(left[size_t(parentColumn)]) : u"0"};
    fillFromKeyVal(dataSource.fixedKeyValues);
    mRec1 = 0;
    ancestors.pop_back();
    headLinesSet();
}

void localRefBrowseWidget200123::keyPressEvent(QKeyEvent *event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool control = modifiers == Qt::ControlModifier;
    if (!hierarchyIndex()) {
        localDbtBrowseWidget200123::keyPressEvent(event);
        return;
    }
    if (control && event->key() == Qt::Key_H) {
        setHierarchical(dataSource.fixedKeyValues.size() != 1);
        return;
    }
    if (control && event->key() == Qt::Key_Up && hierarchical && !ancestors.empty()) {
        folderLeave();
    } else if (control && event->key() == Qt::Key_Down && hierarchical
               && mCurRec() < dataSource.dataBufer.size() && isFolder(dataSource.dataBufer[mCurRec()])) {
        folderEnter();
    } else {
        localDbtBrowseWidget200123::keyPressEvent(event);
        return;
    }
    findWord.clear();
    cursorToLastRow();
    update();
}

bool localRefBrowseWidget200123::indexKeepsFixed(const localDbIndex &index) const
{
    // A folder is a prefix of the hierarchy's index only.
    return index.keyNames.size() >= 2 && index.keyNames[0] == dataSource.qualified(u"parentid")
           && index.keyNames[1] == dataSource.qualified(u"isfolder");
}

void localRefBrowseWidget200123::indexAboutToChange(const std::u16string &indexName)
{
    // Any other order shows the whole table.
    const localDbIndex *index = dataSource.indexFind(indexName);
    if (hierarchical && (index == nullptr || !indexKeepsFixed(*index)))
        hierarchyDrop();
}
