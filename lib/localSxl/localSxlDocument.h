// The table document as data: a sparse sorted vector of cells with text,
// picture, font and style, plus the column and row records that carry widths
// and heights; its SXL text form (JSON with the type "SXL") and its value
// list form. QtCore only, so that programs without a screen fill, save and
// load documents and korvel-cli starts without the GUI libraries; the window
// makes fonts and images from this model.
#ifndef LOCALSXLDOCUMENT_H
#define LOCALSXLDOCUMENT_H

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class localValueDescription;
class localValueList;

struct localSxlStyle {
    int32_t width = 85;
    int32_t height = 20;
    int32_t alignmentH = 1;   // Qt::AlignLeft
    int32_t alignmentV = 128; // Qt::AlignVCenter
    int32_t colorBorder = 0;
    int32_t colorFon = 0xFFFFFF;
    int32_t colorPattern = 0;
    int32_t colorText = 0;
};

// The flags of a font: 1 bold, 2 italic, 4 strikeout, 8 underline.
struct localSxlFont {
    std::u16string family = u"Sans Serif";
    int32_t size = 8;
    int32_t flags = 0;
    // The font in effect, kept in step with the fields above; the window
    // makes its QFont from it.
    struct face {
        QString family = QStringLiteral("Sans Serif");
        int pointSize = 8;
        int weight = 50;
        bool italic = false;
        bool strikeOut = false;
        bool underline = false;
    } qfont;
};

struct localSxlCell {
    uint32_t rowNumber = 0; // from 1; 0 in the default cell
    uint32_t colNumber = 0; // from 1; 0 in the default cell
    std::u16string details; // written out, never read back
    std::unique_ptr<localSxlFont> font;
    std::unique_ptr<localSxlStyle> style;
    QString text;
    // The picture as the bytes of its file (PNG and the like); the window
    // decodes it.
    QByteArray picture;

    localSxlCell() = default;
    localSxlCell(uint32_t row, uint32_t column) : rowNumber(row), colNumber(column) {}

    localSxlStyle &styleMade();
    localSxlFont &fontMade();
};

class localSxlDocument {
public:
    // Records that carry a width (by colNumber) and a height (by rowNumber).
    std::vector<localSxlCell> columns;
    std::vector<localSxlCell> rows;
    // Element 0 is the default cell (row 0, column 0, with a style); behind it
    // the cells sorted by row, then column. Searches skip element 0.
    std::vector<localSxlCell> cells;

    localSxlDocument();

    // Empties the three vectors and makes the default cell anew.
    void clear();

    // The index in `cells` of the cell at (row, column), made empty at its
    // sorted place when there is none.
    size_t cellIndex(uint32_t row, uint32_t column);
    // The cell at (row, column), or null.
    const localSxlCell *cellFind(uint32_t row, uint32_t column) const;
    const localSxlCell &defaultCell() const { return cells[0]; }
    const localSxlStyle &defaultStyle() const { return *cells[0].style; }

    // Negative values keep what the cell has.
    void alignmentSet(uint32_t row, uint32_t column, int32_t horizontal, int32_t vertical);
    void colorSet(uint32_t row, uint32_t column, int32_t text, int32_t background, int32_t border,
                  int32_t pattern);
    // An empty family, a size of 0 or less, flags below 0 keep what the cell has.
    void fontSet(uint32_t row, uint32_t column, const std::u16string &family, int32_t size, int32_t flags);
    void textSet(uint32_t row, uint32_t column, const QString &text);
    void pictureSet(uint32_t row, uint32_t column, const QByteArray &picture);

    // From the column / row record, else the default cell's style.
    int32_t columnWidth(uint32_t column) const;
    int32_t rowHeight(uint32_t row) const;
    void columnWidthSet(uint32_t column, int32_t width);
    // The height of every row without a record of its own.
    void defaultHeightSet(int32_t height);

    // The text at (row, column), the default cell's for an untouched one; with
    // column 0 the row number, with row 0 the column number (the headers).
    QString cellTextGet(uint32_t row, uint32_t column) const;

    // The index of the first cell behind the default one, in vector order,
    // whose text holds `text`; 0 when none does.
    size_t find(const QString &text, Qt::CaseSensitivity sensitivity) const;

    // The SXL text, character for character as the readers of the format expect.
    std::u16string toJson() const;
    // Replaces the document by the cells of an SXL text, in the text's order.
    // False, with a line on the console, when the text is no SXL object.
    bool fromJson(const std::u16string &text);
    // fromJson of a UTF-8 file.
    bool load(const std::u16string &fileName);
    // The value list form: type, columns, rows, cells (no fonts, no pictures).
    // Stored into `cell` as a new list object.
    localValueList *toValueList(localValueDescription *cell) const;

    // The font setting of a cell, shared with the reader.
    static void fontApply(localSxlCell &cell, const std::u16string &family, int32_t size, int32_t flags);
};

#endif
