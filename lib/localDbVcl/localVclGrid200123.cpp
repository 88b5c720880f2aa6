#include "localVclGrid200123.h"

#include "localContextUTF8.h"
#include "localInterpretatorUTF8.h"
#include "localJson.h"
#include "localOperatorCompiled.h"
#include "localServices.h"
#include "localString.h"
#include "localValueList.h"
#include "localValueTable.h"
#include "localVCL.h"

#include <QApplication>
#include <QDateTime>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QStatusBar>
#include <QWheelEvent>

#include <cstdlib>

namespace {

// The head button's right edge, where a press starts a change of width.
constexpr int edgeGrip = 4;
// Lines the wheel moves a notch, as Up and Down would.
constexpr int wheelLines = 3;

bool layoutDialogDefault(QWidget *parent, std::u16string &json)
{
    bool accepted = false;
    const QString text = QInputDialog::getMultiLineText(parent, QStringLiteral("Layout"), QStringLiteral("JSON"),
                                                        localToQString(json), &accepted);
    if (accepted)
        json = localFromQString(text);
    return accepted;
}

bool cellDialogDefault(QWidget *parent, const QString &title, QString &text)
{
    bool accepted = false;
    const QString edited = QInputDialog::getText(parent, title, title, QLineEdit::Normal, text, &accepted);
    if (accepted)
        text = edited;
    return accepted;
}

void jsonMember(std::u16string &out, const char16_t *name, const std::u16string &value)
{
    out += u"\"";
    out += name;
    out += u"\": \"";
    localJson::jsonEscapeAppend(out, value);
    out += u"\"";
}

// The list under `key`, or null.
const localValueList *listAt(const localValueList &list, const std::u16string &key)
{
    return localValueList::fromValue(list.valueByKey(key));
}

// The grid's columns as the layout list gives them: the flat key first, then
// the nested form.
const localValueList *layoutColumns(const localValueList &list)
{
    if (const localValueList *flat = listAt(list, u"grid:columns"))
        return flat;
    const localValueList *grid = listAt(list, u"grid");
    return grid != nullptr ? listAt(*grid, u"columns") : nullptr;
}

std::u16string itemText(const localValueList &list, const std::u16string &key)
{
    const localValueDescription *value = list.valueByKey(key);
    return value != nullptr ? value->toString() : std::u16string();
}

// A width written as a number or a string; `fallback` for anything else.
int32_t itemWidth(const localValueDescription *value, int32_t fallback)
{
    if (value == nullptr)
        return fallback;
    const double width = value->getType() == localValueTypeSTR ? localJson::numberFromText(value->localValueString)
                                                               : value->localValueNumber;
    return width >= 1 && width < 10000 ? int32_t(width) : fallback;
}

void messageLineShow(const QString &text)
{
    QWidget *panel = localVCL::messagePanel();
    if (QStatusBar *bar = qobject_cast<QStatusBar *>(panel))
        bar->showMessage(text);
    else if (QLabel *label = qobject_cast<QLabel *>(panel))
        label->setText(text);
    logWrite(localFromQString(text));
}

} // namespace

bool (*localVclGrid200123::layoutDialog)(QWidget *, std::u16string &) = layoutDialogDefault;
bool (*localVclGrid200123::cellDialog)(QWidget *, const QString &, QString &) = cellDialogDefault;

// --- head button ---

localVclGrid200123headButton::localVclGrid200123headButton(const QString &caption, size_t columnIndex,
                                                           QWidget *parent)
    : QPushButton(caption, parent), column(columnIndex)
{
    setFocusPolicy(Qt::NoFocus);
    setMouseTracking(true);
}

void localVclGrid200123headButton::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && event->x() >= width() - edgeGrip) {
        dragStartX = event->globalX();
        dragStartWidth = width();
        return;
    }
    QPushButton::mousePressEvent(event);
}

void localVclGrid200123headButton::mouseMoveEvent(QMouseEvent *event)
{
    setCursor(dragStartX >= 0 || event->x() >= width() - edgeGrip ? Qt::SplitHCursor : Qt::ArrowCursor);
    if (dragStartX < 0) {
        QPushButton::mouseMoveEvent(event);
        return;
    }
    emit widthDragged(column, std::max(edgeGrip * 2, dragStartWidth + event->globalX() - dragStartX));
}

void localVclGrid200123headButton::mouseReleaseEvent(QMouseEvent *event)
{
    if (dragStartX >= 0) {
        dragStartX = -1;
        return;
    }
    QPushButton::mouseReleaseEvent(event);
}

// --- grid ---

localVclGrid200123::localVclGrid200123(QWidget *parent, localContextUTF8 *parentContext)
    : QWidget(parent),
      context(new localContextUTF8(parentContext != nullptr ? parentContext : localVCL::globalContext()))
{
    context->variableSetNumber(u"ROWNUMBER", -1);
    context->variableSetNumber(u"COLUMNNUMBER", -1);
    setFocusPolicy(Qt::StrongFocus);
    setAutoFillBackground(false);
    connect(this, &localVclGrid200123::columnResized, this, &localVclGrid200123::onColumnResized);
}

localVclGrid200123::~localVclGrid200123()
{
    localValueRelease(layoutCell);
}

int32_t localVclGrid200123::visibleLines() const
{
    return (height() + 1) / lineStep();
}

int32_t localVclGrid200123::columnRecordAt(int32_t screenColumn) const
{
    const int64_t record = int64_t(screenColumn) - fixedColumns + firstColumn;
    return screenColumn >= fixedColumns && record < int64_t(columns.size()) ? int32_t(record) : -1;
}

int32_t localVclGrid200123::screenColumnWidth(int32_t screenColumn) const
{
    if (screenColumn < fixedColumns)
        return fixedColumnWidth;
    const int32_t record = columnRecordAt(screenColumn);
    return record >= 0 ? columns[size_t(record)].width : 0;
}

QRect localVclGrid200123::cellRect(int32_t line, int32_t screenColumn) const
{
    int32_t x = leftMargin;
    for (int32_t c = 0; c < screenColumn; ++c)
        x += screenColumnWidth(c);
    return QRect(x, line * lineStep(), screenColumnWidth(screenColumn), lineHeight);
}

void localVclGrid200123::columnAdd(const localVclGrid200123column &column)
{
    columns.push_back(column);
    localVclGrid200123column &added = columns.back();
    added.button = new localVclGrid200123headButton(localToQString(added.caption), columns.size() - 1, this);
    added.button->setToolTip(localToQString(added.description));
    connect(added.button, &localVclGrid200123headButton::widthDragged, this, &localVclGrid200123::onWidthDragged);
}

void localVclGrid200123::columnsClear()
{
    for (localVclGrid200123column &column : columns)
        delete column.button;
    columns.clear();
}

void localVclGrid200123::headButtonsLayout()
{
    const int32_t buttonLine = headLines - 1;
    int32_t x = leftMargin + fixedColumns * fixedColumnWidth;
    for (size_t i = 0; i < columns.size(); ++i) {
        localVclGrid200123headButton *button = columns[i].button;
        if (button == nullptr)
            continue;
        button->setText(localToQString(columns[i].caption));
        if (int32_t(i) < firstColumn || x >= width()) {
            button->hide();
            continue;
        }
        button->setGeometry(x, buttonLine * lineStep(), columns[i].width, lineHeight);
        button->show();
        x += columns[i].width;
    }
}

void localVclGrid200123::onWidthDragged(size_t column, int width)
{
    if (column >= columns.size())
        return;
    columns[column].width = width;
    emit columnResized();
}

void localVclGrid200123::onColumnResized()
{
    headButtonsLayout();
    update();
}

void localVclGrid200123::currentCellSet(int32_t line, int32_t column)
{
    const int32_t oldLine = currentLine;
    const int32_t oldColumn = currentColumn;
    currentLine = line;
    currentColumn = column;
    cellUpdate(oldLine, oldColumn);
    cellUpdate(currentLine, currentColumn);
}

void localVclGrid200123::cellUpdate(int32_t line, int32_t column)
{
    update(cellRect(line, column).adjusted(-1, -1, 1, 1));
}

// --- layout ---

void localVclGrid200123::layoutAsValueListGet(localValueDescription *cell)
{
    localValueList *layout = localValueList::newInCell(cell);
    localValueDescription gridCell;
    localValueList *grid = localValueList::newInCell(&gridCell);
    localValueDescription tableCell;
    localValueTable *table = localValueTable::newInCell(&tableCell);
    for (const char16_t *name : {u"id", u"caption", u"formula", u"description", u"width", u"flags"})
        table->columnAdd(name);
    localErrorType status = localErrorTypeOK;
    localValueDescription value;
    for (const localVclGrid200123column &column : columns) {
        const size_t row = table->rowAdd(0);
        size_t c = 1;
        for (const std::u16string *text : {&column.id, &column.caption, &column.formula, &column.description}) {
            value.setString(*text);
            table->valueSet(status, row, c++, &value);
        }
        value.setVal(column.width);
        table->valueSet(status, row, c++, &value);
        value.setVal(column.flags);
        table->valueSet(status, row, c, &value);
    }
    grid->valueAdd(&tableCell, u"columns");
    localValueDescription sourceCell;
    localValueList *source = localValueList::newInCell(&sourceCell);
    const localValueList *kept = layoutList();
    const localValueList *keptGrid = kept != nullptr ? listAt(*kept, u"grid") : nullptr;
    const localValueList *keptSource = keptGrid != nullptr ? listAt(*keptGrid, u"dataSource") : nullptr;
    std::u16string varName = kept != nullptr ? itemText(*kept, u"grid:dataSource:varName") : std::u16string();
    if (varName.empty() && keptSource != nullptr)
        varName = itemText(*keptSource, u"varName");
    source->valueSetByPresentation(varName, u"varName");
    grid->valueAdd(&sourceCell, u"dataSource");
    layout->valueAdd(&gridCell, u"grid");
}

std::u16string localVclGrid200123::layoutAsJsonTest()
{
    std::u16string varName;
    if (const localValueList *kept = layoutList()) {
        varName = itemText(*kept, u"grid:dataSource:varName");
        const localValueList *grid = listAt(*kept, u"grid");
        const localValueList *source = grid != nullptr ? listAt(*grid, u"dataSource") : nullptr;
        if (varName.empty() && source != nullptr)
            varName = itemText(*source, u"varName");
    }
    std::u16string out = u"{\"grid\": {\"columns\": [";
    for (size_t i = 0; i < columns.size(); ++i) {
        const localVclGrid200123column &column = columns[i];
        out += i == 0 ? u"\n{" : u",\n{";
        jsonMember(out, u"id", column.id);
        out += u", ";
        jsonMember(out, u"caption", column.caption);
        out += u", ";
        jsonMember(out, u"formula", column.formula);
        out += u", ";
        jsonMember(out, u"description", column.description);
        out += u", \"width\": " + localAscii(std::to_string(column.width).c_str());
        out += u", \"flags\": " + localAscii(std::to_string(column.flags).c_str()) + u"}";
    }
    out += u"\n], \"dataSource\": {";
    jsonMember(out, u"varName", varName);
    out += u"}}}";
    return out;
}

localValueList *localVclGrid200123::layoutList() const
{
    return localValueList::fromValue(layoutCell);
}

void localVclGrid200123::layoutListKeep(localValueDescription *cell)
{
    localValueRelease(layoutCell);
    layoutCell = cell;
}

void localVclGrid200123::columnsFromList(const localValueList &list)
{
    if (const localValueList *entries = layoutColumns(list)) {
        for (const localValueListItem &item : entries->items) {
            const localValueList *entry = localValueList::fromValue(&item.value);
            if (entry == nullptr)
                continue;
            const std::u16string id = itemText(*entry, u"id");
            for (localVclGrid200123column &column : columns) {
                if (column.id != id)
                    continue;
                column.width = itemWidth(entry->valueByKey(u"width"), column.width);
                if (entry->valueByKey(u"caption") != nullptr)
                    column.caption = itemText(*entry, u"caption");
                column.formula = itemText(*entry, u"formula");
                column.description = itemText(*entry, u"description");
                column.flags = itemWidth(entry->valueByKey(u"flags"), column.flags);
            }
        }
    }
    // The settings of one column under its own flat keys win.
    for (localVclGrid200123column &column : columns) {
        column.width = itemWidth(list.valueByKey(column.id + u":width"), column.width);
        if (const localValueDescription *caption = list.valueByKey(column.id + u":caption"))
            column.caption = caption->toString();
        if (const localValueDescription *formula = list.valueByKey(column.id + u":formula"))
            column.formula = formula->toString();
    }
}

bool localVclGrid200123::layoutParse(const std::u16string &json)
{
    const std::u16string text = json.empty() ? layoutAsJsonTest() : json;
    localErrorType status = localErrorTypeOK;
    size_t position = 0;
    localValueDescription *parsed = nullptr;
    if (!localJson::scanStringParseJson(status, text, position, &parsed)) {
        logWriteStamped(u"layoutReconfigureByJson: " + localErrorText(status));
        return false;
    }
    layoutListKeep(parsed);
    return true;
}

bool localVclGrid200123::layoutReconfigureByJson(const std::u16string &json)
{
    if (!layoutParse(json))
        return false;
    columnsClear();
    if (const localValueList *entries = layoutColumns(*layoutList())) {
        for (const localValueListItem &item : entries->items) {
            const localValueList *entry = localValueList::fromValue(&item.value);
            if (entry == nullptr)
                continue;
            localVclGrid200123column column;
            column.id = itemText(*entry, u"id");
            column.caption = itemText(*entry, u"caption");
            columnAdd(column);
        }
    }
    columnsFromList(*layoutList());
    currentColumn = std::max(fixedColumns, std::min<int32_t>(currentColumn, fixedColumns + int32_t(columns.size()) - 1));
    firstColumn = std::min<int32_t>(firstColumn, std::max<int32_t>(0, int32_t(columns.size()) - 1));
    headButtonsLayout();
    update();
    return true;
}

// --- cells ---

QPixmap localVclGrid200123::cellPicture(int32_t, int32_t)
{
    return QPixmap();
}

std::u16string localVclGrid200123::headLineText(int32_t, int32_t)
{
    return std::u16string();
}

QPixmap localVclGrid200123::headLinePicture(int32_t)
{
    return QPixmap();
}

std::u16string localVclGrid200123::text(int32_t row, int32_t column)
{
    const int64_t record = int64_t(column) + firstColumn;
    if (column < 0 || record >= int64_t(columns.size()) || !context)
        return std::u16string();
    const std::u16string &formula = columns[size_t(record)].formula;
    if (formula.empty())
        return std::u16string();
    context->variableSetNumber(u"ROWNUMBER", row + 1);
    context->variableSetNumber(u"COLUMNNUMBER", double(record) + 1);
    localErrorType status = localErrorTypeOK;
    size_t position = 0;
    localValueDescription *value = nullptr;
    const bool done = localInterpretatorUTF8::scanStringGetExpressionAndEvaluete(status, formula, position, &value,
                                                                                context.get(), false);
    std::u16string cellText;
    if (done && value != nullptr)
        cellText = value->toString();
    else
        logWriteStamped(localFromQString(QStringLiteral(" %1-%2 ").arg(row).arg(column)) + localErrorText(status));
    localValueRelease(value);
    return cellText;
}

void localVclGrid200123::cellValueSet(int32_t, int32_t, const QString &) {}

void localVclGrid200123::cellEdit(int32_t line, int32_t column)
{
    messageLineShow(QStringLiteral("cellEdit(%1, %2) from func: %3 file: %4 line: %5")
                        .arg(line)
                        .arg(column)
                        .arg(QString::fromLatin1(__func__), QString::fromLatin1(__FILE__))
                        .arg(__LINE__));
    const int32_t dataColumn = column - fixedColumns;
    if (line < headLines || dataColumn < 0)
        return;
    const int32_t row = rowOfLine(line);
    QString value = localToQString(text(row, dataColumn));
    if (cellDialog(this, localToQString(columnRecordAt(column) >= 0 ? columns[size_t(columnRecordAt(column))].caption
                                                                    : std::u16string()),
                   value))
        cellValueSet(row, dataColumn, value);
    update();
}

bool localVclGrid200123::findFast(const std::u16string &)
{
    return false;
}

void localVclGrid200123::scrollDownOneLine()
{
    ++firstLine;
    currentCellSet(currentLine, currentColumn);
    update();
}

void localVclGrid200123::scrollUpOneLine()
{
    if (firstLine == 0)
        return;
    --firstLine;
    currentCellSet(currentLine, currentColumn);
    update();
}

// --- painting ---

void localVclGrid200123::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.setClipRegion(event->region());
    painter.fillRect(rect(), palette().color(QPalette::Base));
    const int32_t lines = visibleLines();
    int32_t screenColumns = fixedColumns;
    for (int32_t x = leftMargin + fixedColumns * fixedColumnWidth;
         columnRecordAt(screenColumns) >= 0 && x < width(); x += screenColumnWidth(screenColumns++)) {
    }
    const QColor gridLine = palette().color(QPalette::Mid);
    const QColor current = palette().color(QPalette::Highlight);
    for (int32_t line = 0; line < lines; ++line) {
        const bool head = line < headLines;
        if (head && line == headLines - 1)
            continue; // the buttons' line
        for (int32_t c = 0; c < screenColumns; ++c) {
            const QRect cell = cellRect(line, c);
            if (!event->region().intersects(cell.adjusted(-1, -1, 1, 1)))
                continue;
            if (line == currentLine && c == currentColumn && !head) {
                painter.fillRect(cell, current.lighter(170));
                painter.setPen(current);
                painter.drawRect(cell.adjusted(0, 0, -1, -1));
            }
            if (c < fixedColumns) {
                const QPixmap picture = head ? headLinePicture(line) : cellPicture(rowOfLine(line), c);
                if (!picture.isNull())
                    painter.drawPixmap(cell.x() + 2, cell.y() + (cell.height() - picture.height()) / 2, picture);
            } else {
                const std::u16string cellText =
                    head ? headLineText(line, c - fixedColumns) : text(rowOfLine(line), c - fixedColumns);
                painter.setPen(palette().color(QPalette::Text));
                painter.drawText(cell.adjusted(3, 0, -3, 0), Qt::AlignVCenter | Qt::AlignLeft,
                                 localToQString(cellText));
            }
            painter.setPen(gridLine);
            painter.drawLine(cell.topRight() + QPoint(0, 0), cell.bottomRight() + QPoint(0, lineSpacing));
        }
        const int32_t y = line * lineStep() + lineHeight;
        painter.setPen(gridLine);
        painter.drawLine(leftMargin, y, cellRect(line, screenColumns - 1).right(), y);
    }
}

// --- keys and mouse ---

void localVclGrid200123::lineDown()
{
    if (currentLine < visibleLines() - 1)
        currentCellSet(currentLine + 1, currentColumn);
    else
        scrollDownOneLine();
}

void localVclGrid200123::lineUp()
{
    if (currentLine > headLines)
        currentCellSet(currentLine - 1, currentColumn);
    else
        scrollUpOneLine();
}

void localVclGrid200123::columnRight()
{
    if (columnRecordAt(currentColumn + 1) < 0)
        return;
    if (cellRect(currentLine, currentColumn + 1).right() < width()) {
        currentCellSet(currentLine, currentColumn + 1);
        return;
    }
    ++firstColumn;
    headButtonsLayout();
    update();
}

void localVclGrid200123::columnLeft()
{
    if (currentColumn > fixedColumns) {
        currentCellSet(currentLine, currentColumn - 1);
        return;
    }
    if (firstColumn == 0)
        return;
    --firstColumn;
    headButtonsLayout();
    update();
}

void localVclGrid200123::keyPressEvent(QKeyEvent *event)
{
    gridKeyPress(event);
}

void localVclGrid200123::gridKeyPress(QKeyEvent *event)
{
    const bool typed = !event->text().isEmpty() && event->text().at(0).isPrint();
    // A move starts the next search afresh.
    if (!typed)
        findWord.clear();
    switch (event->key()) {
    case Qt::Key_Down:
        lineDown();
        return;
    case Qt::Key_Up:
        lineUp();
        return;
    case Qt::Key_Right:
        columnRight();
        return;
    case Qt::Key_Left:
        columnLeft();
        return;
    case Qt::Key_PageDown:
        currentCellSet(std::max(headLines, visibleLines() - 1), currentColumn);
        return;
    case Qt::Key_PageUp:
        currentCellSet(headLines, currentColumn);
        return;
    case Qt::Key_F12: {
        std::u16string json = layoutAsJsonTest();
        if (layoutDialog(this, json)) {
            layoutReconfigureByJson(json);
            headButtonsLayout();
            update();
        }
        setFocus();
        return;
    }
    default:
        break;
    }
    if (typed) {
        findWord += localFromQString(event->text());
        findFast(findWord);
    }
    update();
}

void localVclGrid200123::mousePressEvent(QMouseEvent *event)
{
    const int32_t line = event->y() / lineStep();
    if (line < headLines || line >= visibleLines())
        return;
    int32_t column = 0;
    int32_t x = leftMargin + screenColumnWidth(0);
    while (event->x() >= x && screenColumnWidth(column + 1) > 0)
        x += screenColumnWidth(++column);
    if (column < fixedColumns && columnRecordAt(fixedColumns) >= 0)
        column = fixedColumns;
    currentCellSet(line, column);
    setFocus();
}

void localVclGrid200123::wheelEvent(QWheelEvent *event)
{
    const int notches = event->angleDelta().y() / 120;
    const Qt::Key key = notches < 0 ? Qt::Key_Down : Qt::Key_Up;
    for (int i = 0; i < std::abs(notches) * wheelLines; ++i) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        keyPressEvent(&press);
    }
    event->accept();
}

void localVclGrid200123::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (bufferCapacity() > 0 && 2 * visibleLines() > bufferCapacity()) {
        localServices::instance().criticalBox(localFromQString(tr("resizeEvent")),
                                              u"Grid too big for buffer size! ");
        // The buffer holds two screens; a taller grid would show rows it
        // never read.
        std::exit(1);
    }
    headButtonsLayout();
    update();
}
