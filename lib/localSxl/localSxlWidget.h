// The window of a table document: paints the document with its headers and
// grid, moves a cursor by keys and mouse, finds text, sets column widths, and
// prints or exports the used area to PDF with the same painting code.
#ifndef LOCALSXLWIDGET_H
#define LOCALSXLWIDGET_H

#include <QFont>
#include <QSize>
#include <QWidget>

#include <cstdint>

class QPainter;
class QPrinter;
class localSxl;
class localSxlDocument;
struct localSxlFont;

// What one painting shows: the document from its first shown row and column
// over `area`, the cursor at a window place (0, 0 for none).
struct localSxlView {
    uint32_t firstRow = 1;
    uint32_t firstColumn = 1;
    uint32_t cursorRow = 0;
    uint32_t cursorColumn = 0;
    QSize area;
};

// The font a cell with that font record paints in.
QFont localSxlQFont(const localSxlFont &font);

void localSxlPaint(QPainter &painter, const localSxlDocument &document, const localSxlView &view);

class localSxlWidget : public QWidget {
    Q_OBJECT
public:
    static constexpr int lineWidth = 1;
    static constexpr int headerWidth = 30;
    static constexpr uint32_t lastPlace = 65535;

    // Holds a link on the object while the window lives.
    explicit localSxlWidget(localSxl &object, QWidget *parent = nullptr);
    ~localSxlWidget() override;

    localSxl &sxl;

    // The document column under x and row under y; 0 on the headers.
    uint32_t columnAt(int x) const;
    uint32_t rowAt(int y) const;
    // How many whole columns / rows fit into `span` from `start` on, forward
    // or backward; a partly visible last one does not count.
    uint32_t columnsFit(uint32_t start, int span, bool forward) const;
    uint32_t rowsFit(uint32_t start, int span, bool forward) const;
    int cellsWidth() const;
    int cellsHeight() const;

    // Brings the first cell holding `text` to the middle, cursor on it; a box
    // says when none does.
    bool findText(const QString &text, bool caseSensitive);
    void findString();
    // Asks for the width of a document column.
    void columnWidthAsk(uint32_t column, uint32_t windowColumn);
    // The used area over as many pages as it needs; answers the page count.
    int print(QPrinter &printer) const;
    int exportPdf(const QString &fileName) const;

    QSize sizeHint() const override { return QSize(640, 360); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void keyDown();
    void keyUp();
    void keyPageDown();
    void keyPageUp();
    void keyEnd();
    void keyRight();
    void keyLeft();
    void cellActivate();
    void printAsk();
    void printPreview();
    void pdfAsk();
};

// Registers the window as the document's SHOW, and the built-in image decoder
// for the picture functions. Call it after localSxlInstall.
void localSxlVclInstall();

#endif
