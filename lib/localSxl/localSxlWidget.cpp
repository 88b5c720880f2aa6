#include "localSxlWidget.h"

#include "localSxl.h"
#include "localSxlDocument.h"
#include "localSxlPictures.h"
#include "localPictureCodec.h"

#include "localVCL.h"
#include "localVclDialogs.h"

#include "localServices.h"
#include "localString.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>

#include <algorithm>
#include <iostream>

namespace {

constexpr int line = localSxlWidget::lineWidth;
constexpr int margin = 2;
// Horizontal and vertical centre: the headers' alignment.
constexpr int headerAlignment = 132;

QColor rgb(int32_t value)
{
    return QColor(QRgb(uint32_t(value) & 0xFFFFFFu));
}

void headerPaint(QPainter &painter, const QRect &rect, const localSxlStyle &style, const QString &text)
{
    painter.setPen(rgb(style.colorBorder));
    painter.setBrush(rgb(style.colorFon));
    painter.drawRect(rect);
    painter.setPen(rgb(style.colorText));
    painter.drawText(rect, headerAlignment, text);
}

// One cell at (x, y) of the size its column and row give it. The cursor cell
// has every colour complemented.
void cellPaint(QPainter &painter, const localSxlDocument &document, uint32_t row, uint32_t column, QPoint at,
               QSize size, bool cursor, const QFont &baseFont)
{
    const localSxlCell *cell = document.cellFind(row, column);
    const localSxlStyle &style = cell != nullptr && cell->style != nullptr ? *cell->style : document.defaultStyle();
    const auto colour = [cursor](int32_t value) { return rgb(cursor ? ~value : value); };
    const QRect outer(at.x() + line, at.y(), size.width() + line, size.height() + line);
    const QRect inner(at.x() + 2 * line + margin, at.y() + 3 * line, size.width() - 2 * margin - 3 * line,
                      size.height() - 4 * line);
    painter.setBrush(colour(style.colorFon));
    painter.setPen(colour(style.colorBorder));
    painter.drawRect(outer);
    // A pattern colour of 0 means no pattern: a black hatch over every cell
    // would hide its text.
    if (style.colorPattern != 0) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QBrush(colour(style.colorPattern), Qt::Dense6Pattern));
        painter.drawRect(inner);
    }
    if (cell == nullptr)
        return;
    if (!cell->picture.isEmpty())
        painter.drawImage(inner, QImage::fromData(cell->picture));
    painter.setFont(cell->font != nullptr ? localSxlQFont(*cell->font) : baseFont);
    painter.setPen(colour(style.colorText));
    const int horizontal = style.alignmentH < 1 ? 1 : style.alignmentH;
    const int vertical = style.alignmentV < 1 ? 128 : style.alignmentV;
    painter.drawText(inner, horizontal | vertical, cell->text);
}

} // namespace

QFont localSxlQFont(const localSxlFont &font)
{
    const localSxlFont::face &face = font.qfont;
    QFont made(face.family, face.pointSize, face.weight, face.italic);
    made.setStrikeOut(face.strikeOut);
    made.setUnderline(face.underline);
    return made;
}

void localSxlPaint(QPainter &painter, const localSxlDocument &document, const localSxlView &view)
{
    const localSxlStyle &defaults = document.defaultStyle();
    const QFont baseFont = painter.font();
    const int headerHeight = defaults.height;
    headerPaint(painter, QRect(0, 0, localSxlWidget::headerWidth, headerHeight), defaults, QString());
    std::vector<std::pair<int, int>> columns; // x and width of each shown column
    for (int x = localSxlWidget::headerWidth + line, i = 0;
         x < view.area.width() && view.firstColumn + i <= localSxlWidget::lastPlace; ++i) {
        const uint32_t column = view.firstColumn + uint32_t(i);
        const int width = document.columnWidth(column);
        headerPaint(painter, QRect(x + line, 0, width, headerHeight), defaults, document.cellTextGet(0, column));
        columns.emplace_back(x, width);
        x += width + line;
    }
    painter.setPen(QPen(Qt::black, line));
    int y = headerHeight + line;
    for (uint32_t i = 0; y < view.area.height() && view.firstRow + i <= localSxlWidget::lastPlace; ++i) {
        const uint32_t row = view.firstRow + i;
        const int height = document.rowHeight(row);
        painter.setFont(baseFont);
        headerPaint(painter, QRect(0, y, localSxlWidget::headerWidth, height), defaults, document.cellTextGet(row, 0));
        for (size_t c = 0; c < columns.size(); ++c) {
            const bool cursor = view.cursorRow == i + 1 && view.cursorColumn == c + 1;
            cellPaint(painter, document, row, view.firstColumn + uint32_t(c), QPoint(columns[c].first, y),
                      QSize(columns[c].second, height), cursor, baseFont);
        }
        y += height + line;
        painter.setPen(QPen(Qt::black, line));
        painter.setBrush(QBrush(Qt::black, Qt::Dense2Pattern));
        painter.drawLine(0, y, view.area.width(), y);
    }
}

localSxlWidget::localSxlWidget(localSxl &object, QWidget *parent) : QWidget(parent), sxl(object)
{
    void *self = &sxl;
    localSxl::objectLinkFunction(&self, 1);
    setFocusPolicy(Qt::StrongFocus);
    QAction *printAction = new QAction(QStringLiteral("Print…"), this);
    printAction->setShortcut(QKeySequence::Print);
    printAction->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(printAction, &QAction::triggered, this, &localSxlWidget::printAsk);
    addAction(printAction);
}

localSxlWidget::~localSxlWidget()
{
    // The program may have dropped the object while the window was open.
    void *self = &sxl;
    if (localSxl::objectLinkFunction(&self, -1) <= 0)
        delete &sxl;
}

uint32_t localSxlWidget::columnAt(int x) const
{
    int sum = headerWidth + line;
    if (x < sum)
        return 0;
    for (uint32_t column = sxl.firstColumn; column <= lastPlace; ++column) {
        sum += sxl.document.columnWidth(column) + line;
        if (sum > x)
            return column;
    }
    return lastPlace;
}

uint32_t localSxlWidget::rowAt(int y) const
{
    int sum = sxl.document.defaultStyle().height + line;
    if (y < sum)
        return 0;
    for (uint32_t row = sxl.firstRow; row <= lastPlace; ++row) {
        sum += sxl.document.rowHeight(row) + line;
        if (sum > y)
            return row;
    }
    return lastPlace;
}

uint32_t localSxlWidget::columnsFit(uint32_t start, int span, bool forward) const
{
    uint32_t count = 0;
    int sum = 0;
    for (uint32_t column = start; column >= 1 && column <= lastPlace; forward ? ++column : --column) {
        sum += sxl.document.columnWidth(column) + line;
        if (sum > span)
            break;
        ++count;
    }
    return count;
}

uint32_t localSxlWidget::rowsFit(uint32_t start, int span, bool forward) const
{
    uint32_t count = 0;
    int sum = 0;
    for (uint32_t row = start; row >= 1 && row <= lastPlace; forward ? ++row : --row) {
        sum += sxl.document.rowHeight(row) + line;
        if (sum > span)
            break;
        ++count;
    }
    return count;
}

int localSxlWidget::cellsWidth() const
{
    return width() - headerWidth - line;
}

int localSxlWidget::cellsHeight() const
{
    return height() - sxl.document.defaultStyle().height - line;
}

void localSxlWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    localSxlPaint(painter, sxl.document, {sxl.firstRow, sxl.firstColumn, sxl.cursorRow, sxl.cursorColumn, size()});
}

void localSxlWidget::keyDown()
{
    if (sxl.cursorRow < lastPlace && sxl.cursorRow + 1 <= rowsFit(sxl.firstRow, cellsHeight(), true))
        ++sxl.cursorRow;
    else
        ++sxl.firstRow;
}

void localSxlWidget::keyUp()
{
    if (sxl.cursorRow == 1) {
        if (sxl.firstRow > 1)
            --sxl.firstRow;
    } else {
        --sxl.cursorRow;
    }
}

void localSxlWidget::keyPageDown()
{
    const uint32_t fit = rowsFit(sxl.firstRow, cellsHeight(), true);
    if (sxl.cursorRow < fit)
        sxl.cursorRow = std::max<uint32_t>(fit, 1);
    else if (fit > 1)
        sxl.firstRow += fit - 1;
}

void localSxlWidget::keyPageUp()
{
    if (sxl.cursorRow > 1) {
        sxl.cursorRow = 1;
        return;
    }
    const uint32_t back = sxl.firstRow > 1 ? rowsFit(sxl.firstRow - 1, cellsHeight(), false) : 0;
    sxl.firstRow = sxl.firstRow > back ? sxl.firstRow - back : 1;
}

void localSxlWidget::keyEnd()
{
    const std::vector<localSxlCell> &cells = sxl.document.cells;
    if (cells.size() < 2)
        return;
    const uint32_t row = std::max<uint32_t>(cells.back().rowNumber, 1);
    const uint32_t column = std::max<uint32_t>(cells.back().colNumber, 1);
    sxl.firstRow = row - std::max<uint32_t>(rowsFit(row, cellsHeight(), false), 1) + 1;
    sxl.cursorRow = row - sxl.firstRow + 1;
    if (column < sxl.firstColumn || column >= sxl.firstColumn + columnsFit(sxl.firstColumn, cellsWidth(), true))
        sxl.firstColumn = column - std::max<uint32_t>(columnsFit(column, cellsWidth(), false), 1) + 1;
    sxl.cursorColumn = column - sxl.firstColumn + 1;
}

void localSxlWidget::keyRight()
{
    if (sxl.cursorColumn >= lastPlace)
        return;
    if (sxl.cursorColumn + 1 <= columnsFit(sxl.firstColumn, cellsWidth(), true)) {
        ++sxl.cursorColumn;
        return;
    }
    ++sxl.firstColumn;
    // A wide column at the cursor moves the window on until it fits.
    while (sxl.cursorColumn > 1 && sxl.cursorColumn > columnsFit(sxl.firstColumn, cellsWidth(), true)) {
        ++sxl.firstColumn;
        --sxl.cursorColumn;
    }
}

void localSxlWidget::keyLeft()
{
    if (sxl.cursorColumn == 1) {
        if (sxl.firstColumn > 1)
            --sxl.firstColumn;
    } else {
        --sxl.cursorColumn;
    }
}

void localSxlWidget::cellActivate()
{
    localErrorType status = localErrorTypeOK;
    if (!sxl.cellActivate(status, sxl.firstRow + sxl.cursorRow - 1, sxl.firstColumn + sxl.cursorColumn - 1))
        std::cout << localNarrow(localErrorText(status)) << "\n" << std::flush;
}

void localSxlWidget::keyPressEvent(QKeyEvent *event)
{
    const bool control = event->modifiers() & Qt::ControlModifier;
    switch (event->key()) {
    case Qt::Key_Down: keyDown(); break;
    case Qt::Key_Up: keyUp(); break;
    case Qt::Key_PageDown: keyPageDown(); break;
    case Qt::Key_PageUp: keyPageUp(); break;
    case Qt::Key_Right: keyRight(); break;
    case Qt::Key_Left: keyLeft(); break;
    case Qt::Key_Return:
    case Qt::Key_Enter: cellActivate(); break;
    case Qt::Key_Home:
        if (control)
            sxl.firstRow = sxl.firstColumn = sxl.cursorRow = sxl.cursorColumn = 1;
        break;
    case Qt::Key_End:
        if (control)
            keyEnd();
        break;
    case Qt::Key_F10:
        if (event->modifiers() & Qt::AltModifier)
            window()->setWindowState(window()->windowState() ^ Qt::WindowMaximized);
        break;
    case Qt::Key_F:
        if (control)
            findString();
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    update();
}

bool localSxlWidget::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        keyPressEvent(static_cast<QKeyEvent *>(event));
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void localSxlWidget::mousePressEvent(QMouseEvent *event)
{
    const uint32_t column = columnAt(event->pos().x());
    if (column != 0)
        sxl.cursorColumn = column - sxl.firstColumn + 1;
    const uint32_t row = rowAt(event->pos().y());
    if (row != 0)
        sxl.cursorRow = row - sxl.firstRow + 1;
    if (event->type() == QEvent::MouseButtonDblClick && column != 0)
        columnWidthAsk(column, column - sxl.firstColumn + 1);
    update();
}

void localSxlWidget::mouseDoubleClickEvent(QMouseEvent *event)
{
    mousePressEvent(event);
}

void localSxlWidget::columnWidthAsk(uint32_t column, uint32_t windowColumn)
{
    bool accepted = false;
    const int width = QInputDialog::getInt(this, QStringLiteral("Колонка %1 (%2) :").arg(column).arg(windowColumn),
                                           QStringLiteral("Введите ширину:"), sxl.document.columnWidth(column), 0,
                                           65535, 1, &accepted);
    if (accepted)
        sxl.document.columnWidthSet(column, width);
}

bool localSxlWidget::findText(const QString &text, bool caseSensitive)
{
    const size_t index = sxl.document.find(text, caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive);
    if (index == 0) {
        localServices::instance().messageBox(localServices::boxInformation, u"Сообщение",
                                             u"Не нашел \"" + localFromQString(text) + u"\"");
        return false;
    }
    const localSxlCell &cell = sxl.document.cells[index];
    const uint32_t row = std::max<uint32_t>(cell.rowNumber, 1);
    const uint32_t column = std::max<uint32_t>(cell.colNumber, 1);
    const uint32_t rowsAbove = row > 1 ? rowsFit(row - 1, cellsHeight() / 2, false) : 0;
    const uint32_t columnsBefore = column > 1 ? columnsFit(column - 1, cellsWidth() / 2, false) : 0;
    sxl.firstRow = row - rowsAbove;
    sxl.firstColumn = column - columnsBefore;
    sxl.cursorRow = rowsAbove + 1;
    sxl.cursorColumn = columnsBefore + 1;
    update();
    return true;
}

void localSxlWidget::findString()
{
    static QStringList history;
    localDialogFindString dialog(history, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    QString text = dialog.text();
    history.removeAll(text);
    history.prepend(text);
    while (text.endsWith(QLatin1Char(' ')))
        text.chop(1);
    findText(text, dialog.caseSensitive());
}

int localSxlWidget::print(QPrinter &printer) const
{
    uint32_t lastRow = 1, lastColumn = 1;
    for (size_t i = 1; i < sxl.document.cells.size(); ++i) {
        lastRow = std::max(lastRow, sxl.document.cells[i].rowNumber);
        lastColumn = std::max(lastColumn, sxl.document.cells[i].colNumber);
    }
    QPainter painter;
    if (!painter.begin(&printer))
        return 0;
    // Screen pixels at 96 to the inch, whatever the printer's resolution.
    const double scale = printer.resolution() / 96.0;
    painter.scale(scale, scale);
    const QSizeF page = printer.pageRect(QPrinter::DevicePixel).size() / scale;
    const int spanWidth = int(page.width()) - headerWidth - line;
    const int spanHeight = int(page.height()) - sxl.document.defaultStyle().height - line;
    int pages = 0;
    for (uint32_t firstRow = 1; firstRow <= lastRow;) {
        const uint32_t rows = std::min(std::max<uint32_t>(rowsFit(firstRow, spanHeight, true), 1),
                                       lastRow - firstRow + 1);
        int height = sxl.document.defaultStyle().height + line;
        for (uint32_t r = firstRow; r < firstRow + rows; ++r)
            height += sxl.document.rowHeight(r) + line;
        for (uint32_t firstColumn = 1; firstColumn <= lastColumn;) {
            const uint32_t columns = std::min(std::max<uint32_t>(columnsFit(firstColumn, spanWidth, true), 1),
                                              lastColumn - firstColumn + 1);
            int width = headerWidth + line;
            for (uint32_t c = firstColumn; c < firstColumn + columns; ++c)
                width += sxl.document.columnWidth(c) + line;
            if (pages++ > 0)
                printer.newPage();
            localSxlPaint(painter, sxl.document, {firstRow, firstColumn, 0, 0, QSize(width, height)});
            firstColumn += columns;
        }
        firstRow += rows;
    }
    painter.end();
    return pages;
}

int localSxlWidget::exportPdf(const QString &fileName) const
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(fileName);
    return print(printer);
}

void localSxlWidget::printAsk()
{
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() == QDialog::Accepted)
        print(printer);
}

void localSxlWidget::printPreview()
{
    QPrinter printer(QPrinter::HighResolution);
    QPrintPreviewDialog dialog(&printer, this);
    connect(&dialog, &QPrintPreviewDialog::paintRequested, this, [this](QPrinter *target) { print(*target); });
    dialog.exec();
}

void localSxlWidget::pdfAsk()
{
    const QString name = QFileDialog::getSaveFileName(this, QStringLiteral("Export to PDF"), QString(),
                                                      QStringLiteral("PDF (*.pdf)"));
    if (!name.isEmpty())
        exportPdf(name);
}

void localSxlWidget::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu menu(this);
    menu.addAction(QStringLiteral("Print…"), this, &localSxlWidget::printAsk, QKeySequence::Print);
    menu.addAction(QStringLiteral("Print preview…"), this, &localSxlWidget::printPreview);
    menu.addAction(QStringLiteral("Export to PDF…"), this, &localSxlWidget::pdfAsk);
    menu.exec(event->globalPos());
}

namespace {

void documentShow(localSxl &sxl, const QString &title, bool modal)
{
    localVCL::applicationShowWidget(new localSxlWidget(sxl), title, modal);
}

} // namespace

void localSxlVclInstall()
{
    localSxlWindows::handlers.show = documentShow;
    localPictureFunctionsRegister(&localPictureCodecBuiltIn());
}
