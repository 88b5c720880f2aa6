#include "localVclWidgetEditor.h"

#include "localVCL.h"
#include "localVclDialogs.h"
#include "localVclPrgTextHighlighter.h"

#include "localInterpretatorUTF8.h"
#include "localOperatorCompiled.h"
#include "localServices.h"
#include "localString.h"
#include "localValueList.h"
#include "localValueTable.h"

#include <QDragEnterEvent>
#include <QInputDialog>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QUrl>

#include <iostream>

namespace {

typedef localInterpretatorUTF8 li;

QString q(const std::u16string &text)
{
    return localToQString(text);
}

// The letters of the Cyrillic layout on the keys of F, G, O, P, S and Z, and
// of "." (Ю): shortcuts work whichever layout is on.
enum cyrillicKey { keyA = 0x0410, keyPe = 0x041F, keyShcha = 0x0429, keyZe = 0x0417, keyYeru = 0x042B, keyYa = 0x042F,
                   keyYu = 0x042E };

bool isKey(int key, int latin, int cyrillic)
{
    return key == latin || key == cyrillic;
}

// The procedure's name on a line, or empty when the line declares none.
std::u16string procedureName(const std::u16string &line)
{
    size_t position = 0;
    li::scanStringSkipSpace(line, position);
    const std::u16string word = localString::toUpper(li::scanStringGetNameToken(line, position));
    if (word != u"FUNCTION" && word != u"ФУНКЦИЯ" && word != u"PROCEDURE" && word != u"ПРОЦЕДУРА")
        return std::u16string();
    while (position < line.size()
           && (line[position] == u' ' || line[position] == u'\t' || line[position] == u'\n'
               || line[position] == u'\f' || line[position] == u'\r'))
        ++position;
    if (line.compare(position, 2, u"//") == 0)
        return std::u16string();
    return li::scanStringGetNameToken(line, position);
}

const std::u16string programFolder()
{
    return localString::binaryPath() + u"/prgTest";
}

} // namespace

localVclWidgetEditorLineNumberArea::localVclWidgetEditorLineNumberArea(localVclWidgetEditor *owner)
    : QWidget(owner), editor(owner)
{
}

QSize localVclWidgetEditorLineNumberArea::sizeHint() const
{
    return QSize(editor->lineNumberAreaWidth(), 0);
}

void localVclWidgetEditorLineNumberArea::paintEvent(QPaintEvent *event)
{
    editor->lineNumberAreaPaintEvent(event);
}

localVclWidgetEditor::localVclWidgetEditor(QWidget *parent) : QPlainTextEdit(parent)
{
    setObjectName(QStringLiteral("localVclWidgetEditor"));
    lineNumberArea = new localVclWidgetEditorLineNumberArea(this);
    QFont fixed(QStringLiteral("Courier"));
    fixed.setFixedPitch(true);
    fixed.setPointSize(10);
    setFont(fixed);
    setTabStopDistance(4 * QFontMetricsF(fixed).horizontalAdvance(QLatin1Char(' ')));
    highlighter = new localVclPrgTextHighlighter(document());
    installEventFilter(this);
    setAcceptDrops(true);

    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &localVclWidgetEditor::highlightCurrentLine);
    connect(this, &QPlainTextEdit::textChanged, this, &localVclWidgetEditor::textChangedSlot);
    connect(this, &QPlainTextEdit::blockCountChanged, this, &localVclWidgetEditor::updateLineNumberAreaWidth);
    connect(this, &QPlainTextEdit::updateRequest, this, &localVclWidgetEditor::updateLineNumberArea);
    updateLineNumberAreaWidth(0);
    highlightCurrentLine();
}

// --- line numbers and the current line ---------------------------------------

int localVclWidgetEditor::lineNumberAreaWidth() const
{
    const int digits = QString::number(qMax(1, blockCount())).size();
    return digits * fontMetrics().horizontalAdvance(QLatin1Char('9')) + 2;
}

void localVclWidgetEditor::updateLineNumberAreaWidth(int)
{
    setViewportMargins(lineNumberAreaWidth() + 21, 5, 5, 5);
    lineNumberAreaPlace();
}

// A new digit widens the strip at once, not only at the next resize.
void localVclWidgetEditor::lineNumberAreaPlace()
{
    const QRect contents = contentsRect();
    lineNumberArea->setGeometry(QRect(contents.left(), contents.top(), lineNumberAreaWidth(), contents.height()));
}

void localVclWidgetEditor::updateLineNumberArea(const QRect &rect, int dy)
{
    if (dy != 0)
        lineNumberArea->scroll(0, dy);
    else
        lineNumberArea->update(0, rect.y(), lineNumberArea->width(), rect.height());
    if (rect.contains(viewport()->rect()))
        updateLineNumberAreaWidth(0);
}

void localVclWidgetEditor::resizeEvent(QResizeEvent *event)
{
    QPlainTextEdit::resizeEvent(event);
    lineNumberAreaPlace();
}

void localVclWidgetEditor::lineNumberAreaPaintEvent(QPaintEvent *event)
{
    QPainter painter(lineNumberArea);
    painter.fillRect(event->rect(), Qt::lightGray);
    QTextBlock block = firstVisibleBlock();
    int top = qRound(blockBoundingGeometry(block).translated(contentOffset()).top()) + viewportMargins().top();
    int bottom = top + qRound(blockBoundingRect(block).height());
    while (block.isValid() && top <= event->rect().bottom()) {
        if (block.isVisible() && bottom >= event->rect().top())
            painter.drawText(0, top, lineNumberArea->width(), fontMetrics().height(), Qt::AlignRight,
                             QString::number(block.blockNumber() + 1));
        block = block.next();
        top = bottom;
        bottom = top + qRound(blockBoundingRect(block).height());
    }
}

void localVclWidgetEditor::highlightCurrentLine()
{
    QList<QTextEdit::ExtraSelection> selections;
    if (!isReadOnly()) {
        QTextEdit::ExtraSelection selection;
        selection.format.setBackground(QColor(Qt::yellow).lighter(160));
        selection.format.setProperty(QTextFormat::FullWidthSelection, true);
        selection.cursor = textCursor();
        selection.cursor.clearSelection();
        selections.append(selection);
    }
    setExtraSelections(selections);
}

// --- keys --------------------------------------------------------------------

bool localVclWidgetEditor::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress)
        return keyPress(static_cast<QKeyEvent *>(event)) || QPlainTextEdit::eventFilter(watched, event);
    if (event->type() == QEvent::Close) {
        logWrite(localFromQString(QStringLiteral("event->type()=%1 this=0x%2 obj=0x%3")
                                      .arg(int(event->type()))
                                      .arg(quintptr(this), 0, 16)
                                      .arg(quintptr(watched), 0, 16)));
        event->setAccepted(false);
        return true;
    }
    return QPlainTextEdit::eventFilter(watched, event);
}

bool localVclWidgetEditor::keyPress(QKeyEvent *event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    const bool ctrl = modifiers & Qt::ControlModifier;
    const bool alt = modifiers & Qt::AltModifier;
    const bool shift = modifiers & Qt::ShiftModifier;
    const int key = event->key();

    if (ctrl && (key == Qt::Key_Period || key == Qt::Key_Slash || key == keyYu)) {
        commentSelection();
    } else if (alt && key == Qt::Key_F2) {
        std::cout << "line number = " << textCursor().blockNumber() + 1 << "\n" << std::flush;
    } else if (key == Qt::Key_F3 && !ctrl) {
        findNext();
    } else if (ctrl && (key == Qt::Key_F3 || isKey(key, Qt::Key_F, keyA))) {
        findDialog();
    } else if (alt && key == Qt::Key_F10) {
        QWidget *frame = window();
        frame->setWindowState(frame->windowState() ^ Qt::WindowMaximized);
    } else if (ctrl && isKey(key, Qt::Key_G, keyPe)) {
        gotoLineAsk();
    } else if (ctrl && isKey(key, Qt::Key_O, keyShcha)) {
        load(std::u16string(), localString::possibleCodePageUTF8);
    } else if (alt && isKey(key, Qt::Key_P, keyZe)) {
        gotoProcedureSlot();
    } else if (ctrl && shift && isKey(key, Qt::Key_S, keyYeru)) {
        saveAsSlot();
    } else if (ctrl && isKey(key, Qt::Key_S, keyYeru)) {
        saveSlot();
    } else {
        if (ctrl && shift && isKey(key, Qt::Key_Z, keyYa))
            logWrite(u"localVclWidgetEditor: Ctrl+Shift+Z");
        return false;
    }
    return true;
}

// The end moves by 4 for each "//" of 2, so the walk can take in a short
// line after the selection as well: users know it so.
void localVclWidgetEditor::commentSelection()
{
    QTextCursor cursor = textCursor();
    int end = cursor.selectionEnd();
    cursor.setPosition(cursor.selectionStart());
    cursor.movePosition(QTextCursor::StartOfBlock);
    cursor.beginEditBlock();
    while (cursor.position() <= end) {
        cursor.insertText(QStringLiteral("//"));
        end += 4;
        cursor.movePosition(QTextCursor::EndOfBlock);
        if (!cursor.movePosition(QTextCursor::NextBlock))
            break;
    }
    cursor.endEditBlock();
    setTextCursor(cursor);
}

void localVclWidgetEditor::gotoLineAsk()
{
    bool accepted = false;
    const int line = QInputDialog::getInt(this, QStringLiteral("Введите номер строки %1 :").arg(1),
                                          QStringLiteral("Введите номер строки:"), 1, 0, 65535, 1, &accepted);
    if (accepted)
        gotoLine(line);
}

// Line 0 names block -1, whose position reads as 0: the document's start.
void localVclWidgetEditor::gotoLine(int line)
{
    const QTextBlock block = document()->findBlockByNumber(line - 1);
    QTextCursor cursor = textCursor();
    cursor.setPosition(block.isValid() ? block.position() : 0);
    setTextCursor(cursor);
    centerCursor();
}

// --- find ---------------------------------------------------------------------

bool localVclWidgetEditor::search(const QString &text, QTextDocument::FindFlags flags)
{
    const QTextCursor before = textCursor();
    const int scroll = verticalScrollBar()->value();
    if (find(text, flags))
        return true;
    QTextCursor wrapped = textCursor();
    wrapped.movePosition(flags & QTextDocument::FindBackward ? QTextCursor::End : QTextCursor::Start);
    setTextCursor(wrapped);
    if (find(text, flags))
        return true;
    setTextCursor(before);
    verticalScrollBar()->setValue(scroll);
    localServices::instance().messageBox(localServices::boxInformation, u"", u"String not found.");
    return false;
}

void localVclWidgetEditor::findDialog()
{
    QStringList history;
    for (auto record = searchHistory.rbegin(); record != searchHistory.rend(); ++record)
        history.append(record->text);
    localDialogFindString dialog(history, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    QTextDocument::FindFlags flags;
    if (dialog.caseSensitive())
        flags |= QTextDocument::FindCaseSensitively;
    if (!dialog.forward())
        flags |= QTextDocument::FindBackward;
    searchHistory.push_back({dialog.text(), flags});
    search(dialog.text(), flags);
}

void localVclWidgetEditor::findNext()
{
    if (!searchHistory.empty())
        search(searchHistory.back().text, searchHistory.back().flags);
}

// --- the procedure list -----------------------------------------------------------

void localVclWidgetEditor::gotoProcedureSlot()
{
    localValueTable table;
    const size_t descr = table.columnAdd(u"Descr");
    const size_t line = table.columnAdd(u"NomStr");
    const size_t key = table.columnAdd(u"DescrInUpperCaseForSort");
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        const std::u16string text = localFromQString(block.text());
        const std::u16string name = procedureName(text);
        if (name.empty())
            continue;
        const size_t row = table.rowAdd(0);
        table.cell(row, descr)->setString(text);
        table.cell(row, line)->setVal(block.blockNumber() + 1);
        table.cell(row, key)->setString(localString::toUpper(name));
    }
    localErrorType status = localErrorTypeOK;
    bool sorted = false;
    table.sort(status, u"DESCRINUPPERCASEFORSORT", sorted);
    if (localListDialogs::handlers.rowChoose == nullptr)
        return;
    QStringList captions;
    for (size_t row = 1; row <= table.rowsCount(); ++row)
        captions.append(q(table.cell(row, descr)->localValueString));
    const size_t chosen = localListDialogs::handlers.rowChoose(u"Процедуры и функции", captions, 1);
    if (chosen == 0 || chosen > table.rowsCount())
        return;
    gotoLine(int(table.cell(chosen, line)->localValueNumber));
}

// --- files ----------------------------------------------------------------------

bool localVclWidgetEditor::load(const std::u16string &name, int32_t codePage)
{
    std::u16string chosen = name;
    if (chosen.empty() || !localString::fileExist(chosen)) {
        chosen = localServices::instance().openFileName(u"Open formFile ", programFolder(), u"*.prg *.prg");
        if (chosen.empty())
            return false;
    }
    localErrorType status = localErrorTypeOK;
    std::u16string text;
    if (!localString::fileRead(status, chosen, text, localString::possibleCodePage(codePage))) {
        localServices::instance().messageBox(localServices::boxWarning, u"", u"Error reading file  [" + chosen);
        return false;
    }
    textLoaded(text, chosen);
    return true;
}

void localVclWidgetEditor::textLoaded(const std::u16string &text, const std::u16string &name)
{
    setPlainText(q(text));
    fileName = name;
    changed = false;
    titleUpdate();
}

void localVclWidgetEditor::test()
{
    textLoaded(u"пол=создатьОбъект(\"Справочник.Товары\");\n"
               u"пол.выбратьЭлементы();\n"
               u"если 1=пол.выбран() тогда\n"
               u"  сообщить(пол.наименование);\n"
               u"конецЕсли;\n"
               u"возврат 1;\n",
               u"W:/4/test.prg");
}

bool localVclWidgetEditor::saveTo(const std::u16string &name)
{
    if (!localString::fileWrite(false, localString::possibleCodePageUTF8, localFromQString(toPlainText()), name)) {
        localServices::instance().messageBox(localServices::boxWarning, u"", u"Файл не сохранён!" + name);
        return false;
    }
    fileName = name;
    changed = false;
    titleUpdate();
    return true;
}

void localVclWidgetEditor::saveSlot()
{
    saveTo(fileName);
}

void localVclWidgetEditor::saveAsSlot()
{
    const std::u16string name = localServices::instance().saveFileName(u"SaveAs", programFolder(), u"*.*");
    if (!name.empty())
        saveTo(name);
}

void localVclWidgetEditor::textChangedSlot()
{
    if (changed)
        return;
    changed = true;
    titleUpdate();
}

QString localVclWidgetEditor::titleText() const
{
    return (changed ? QStringLiteral("[!] ") : QString()) + q(fileName);
}

void localVclWidgetEditor::titleUpdate()
{
    setWindowTitle(titleText());
    if (window() != this)
        window()->setWindowTitle(titleText());
}

QWidget *localVclWidgetEditor::editorShow(const QString &title)
{
    QWidget *frame = localVCL::applicationShowWidget(this, title, false);
    frame->setWindowTitle(title);
    return frame;
}

// --- dropping a file ----------------------------------------------------------------

void localVclWidgetEditor::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
    else
        QPlainTextEdit::dragEnterEvent(event);
}

void localVclWidgetEditor::dragMoveEvent(QDragMoveEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
    else
        QPlainTextEdit::dragMoveEvent(event);
}

void localVclWidgetEditor::dropEvent(QDropEvent *event)
{
    if (!event->mimeData()->hasUrls()) {
        QPlainTextEdit::dropEvent(event);
        return;
    }
    event->acceptProposedAction();
    const std::u16string name = localFromQString(event->mimeData()->urls().value(0).toLocalFile());
    localErrorType status = localErrorTypeOK;
    std::u16string text;
    if (name.empty() || !localString::fileRead(status, name, text, u"CP1251")) {
        localServices::instance().messageBox(localServices::boxWarning, u"", u"Ошибка чтения файла!");
        return;
    }
    textLoaded(text, name);
}
