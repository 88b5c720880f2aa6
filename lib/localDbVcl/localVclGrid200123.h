// The self-painted grid: lines and columns drawn by the widget itself, cell
// text asked of a virtual `text`, so that derived grids show a value table,
// a database window or anything else. The head is a row of push buttons, one
// a column; the layout goes to and comes from JSON.
#ifndef LOCALVCLGRID200123_H
#define LOCALVCLGRID200123_H

#include <QPixmap>
#include <QPushButton>
#include <QWidget>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class localContextUTF8;
class localValueDescription;
class localValueList;

class localVclGrid200123headButton : public QPushButton {
    Q_OBJECT
public:
    localVclGrid200123headButton(const QString &caption, size_t columnIndex, QWidget *parent);

    size_t column;

signals:
    // The user dragged the button's right edge to this width.
    void widthDragged(size_t column, int width);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    // Where a drag of the edge started, -1 while none runs.
    int dragStartX = -1;
    int dragStartWidth = 0;
};

struct localVclGrid200123column {
    std::u16string caption;
    std::u16string id;
    std::u16string formula;
    std::u16string description;
    int32_t width = 100;
    int32_t flags = 0;
    // Owned by the grid (a child widget).
    localVclGrid200123headButton *button = nullptr;
};

class localVclGrid200123 : public QWidget {
    Q_OBJECT
public:
    // The grid's context is made under `parentContext`, or under the global
    // context when that is null.
    explicit localVclGrid200123(QWidget *parent = nullptr, localContextUTF8 *parentContext = nullptr);
    ~localVclGrid200123() override;

    // Holds ROWNUMBER and COLUMNNUMBER while a formula runs.
    std::unique_ptr<localContextUTF8> context;
    std::vector<localVclGrid200123column> columns;
    // Screen lines from 0, the head lines included: the first data line is
    // `headLines`.
    int32_t currentLine = 1;
    // Screen columns, the fixed columns included.
    int32_t currentColumn = 1;
    int32_t leftMargin = 2;
    int32_t topMargin = 2;
    int32_t lineSpacing = 1;
    int32_t lineHeight = 20;
    int32_t firstLine = 0;
    int32_t firstColumn = 0;
    int32_t fixedColumns = 1;
    int32_t headHeight = 25;
    int32_t headLines = 1;
    std::u16string findWord;

    // The width of the fixed column before the data, which holds a row's picture.
    static constexpr int32_t fixedColumnWidth = 20;

    // The F12 editor of the layout text: true when the user accepted `json`
    // (edited in place). Replaceable, so that tests need no dialog.
    static bool (*layoutDialog)(QWidget *parent, std::u16string &json);
    // The editor of one cell's text; true when accepted.
    static bool (*cellDialog)(QWidget *parent, const QString &title, QString &text);

    // (area height + 1) / (line height + line spacing), the head included.
    int32_t visibleLines() const;
    // The column record under screen column `screenColumn`, or -1.
    int32_t columnRecordAt(int32_t screenColumn) const;
    // Adds a column record and its head button.
    void columnAdd(const localVclGrid200123column &column);
    void columnsClear();
    // Places the head buttons after a change of columns, widths or scroll.
    void headButtonsLayout();

    virtual void currentCellSet(int32_t line, int32_t column);
    // A new VALUELIST in `cell` with the item "grid" holding "columns" (a
    // VALUETABLE: id, caption, formula, description, width, flags) and
    // "dataSource" (a list with "varName").
    virtual void layoutAsValueListGet(localValueDescription *cell);
    virtual bool layoutReconfigureByJson(const std::u16string &json);
    virtual QPixmap cellPicture(int32_t row, int32_t column);
    // `column` counts the data columns on screen, from 0; the record is that
    // plus the first column.
    virtual std::u16string text(int32_t row, int32_t column);
    virtual void cellEdit(int32_t line, int32_t column);
    virtual bool findFast(const std::u16string &word);
    virtual void scrollDownOneLine();
    virtual void scrollUpOneLine();

    std::u16string layoutAsJsonTest();

    // The number of buffered rows a browse grid keeps, 0 for a grid without
    // a buffer: twice the visible lines must fit into it.
    virtual int32_t bufferCapacity() const { return 0; }

signals:
    void columnResized();

public slots:
    void onColumnResized();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

    // The grid's own key handling, callable by a derived class that has
    // handled a key's special cases itself.
    void gridKeyPress(QKeyEvent *event);
    // The row a data line shows; a derived grid maps it into its buffer.
    virtual int32_t rowOfLine(int32_t line) const { return firstLine + line - headLines; }
    // The text of a line above the data (the head lines other than the
    // buttons' line); empty in the base grid.
    virtual std::u16string headLineText(int32_t line, int32_t column);
    virtual QPixmap headLinePicture(int32_t line);
    // Stores an edited cell; the base grid has nowhere to keep it.
    virtual void cellValueSet(int32_t row, int32_t column, const QString &value);
    // The user's move to another line: the base grid moves within the screen.
    void lineDown();
    void lineUp();
    // The stored layout list the columns were last taken from, or null.
    localValueList *layoutList() const;
    // Applies the widths, captions, ids and formulas that `list` holds.
    void columnsFromList(const localValueList &list);
    // Keeps `cell` (a VALUELIST) as the grid's layout list.
    void layoutListKeep(localValueDescription *cell);
    // Parses the layout JSON (or, for an empty text, the current layout) and
    // keeps the list; a text that does not parse is logged and changes nothing.
    bool layoutParse(const std::u16string &json);

    QRect cellRect(int32_t line, int32_t screenColumn) const;
    int32_t lineStep() const { return lineHeight + lineSpacing; }

private:
    localValueDescription *layoutCell = nullptr;

    void cellUpdate(int32_t line, int32_t column);
    void columnRight();
    void columnLeft();
    // The width of screen column `screenColumn`; 0 beyond the records.
    int32_t screenColumnWidth(int32_t screenColumn) const;
    void onWidthDragged(size_t column, int width);
};

#endif
