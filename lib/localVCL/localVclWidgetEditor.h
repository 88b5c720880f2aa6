// The program editor: a plain-text editor with line numbers, the current
// line marked, program colouring, find, go to line, the list of procedures
// and files in the system's code pages. The console's EDIT COMMAND and the
// debuggers use it.
#ifndef LOCALVCLWIDGETEDITOR_H
#define LOCALVCLWIDGETEDITOR_H

#include <QPlainTextEdit>
#include <QTextDocument>

#include <cstdint>
#include <string>
#include <vector>

class localVclPrgTextHighlighter;
class localVclWidgetEditor;

// The strip left of the text that shows the line numbers; the editor paints it.
class localVclWidgetEditorLineNumberArea : public QWidget {
public:
    explicit localVclWidgetEditorLineNumberArea(localVclWidgetEditor *owner);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    localVclWidgetEditor *editor;
};

class localVclWidgetEditor : public QPlainTextEdit {
    Q_OBJECT
public:
    struct searchRecord {
        QString text;
        QTextDocument::FindFlags flags;
    };

    explicit localVclWidgetEditor(QWidget *parent = nullptr);

    localVclWidgetEditorLineNumberArea *lineNumberArea;
    std::u16string fileName;
    localVclPrgTextHighlighter *highlighter;
    // Oldest first; the last one serves find next.
    std::vector<searchRecord> searchHistory;

    // Reads the file in the code page (localString::possibleCodePage); a
    // name of no existing file asks for one. False when nothing was loaded.
    bool load(const std::u16string &name, int32_t codePage);
    // A sample program to try the widget with.
    void test();
    // Shows the editor in a window of its own (non-modal) under `title`;
    // answers the window.
    QWidget *editorShow(const QString &title);

    int lineNumberAreaWidth() const;
    void lineNumberAreaPaintEvent(QPaintEvent *event);

    // Searches from the cursor, wrapping round once; "String not found."
    // and the cursor where it was when neither pass finds it.
    bool search(const QString &text, QTextDocument::FindFlags flags);
    // The find dialog, then the search.
    void findDialog();
    void findNext();
    // Cursor to the start of line `line` (from 1), centred.
    void gotoLine(int line);
    // Puts "//" in front of every line of the selection.
    void commentSelection();

    // The title shown: the file name, with "[!] " in front once changed.
    QString titleText() const;

public slots:
    void highlightCurrentLine();
    void gotoProcedureSlot();
    void saveSlot();
    void saveAsSlot();
    void textChangedSlot();
    void updateLineNumberAreaWidth(int blockCount);
    void updateLineNumberArea(const QRect &rect, int dy);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    bool changed = false;

    bool keyPress(QKeyEvent *event);
    void lineNumberAreaPlace();
    void gotoLineAsk();
    // Text replaced by a file's: name and title follow, the change mark goes.
    void textLoaded(const std::u16string &text, const std::u16string &name);
    bool saveTo(const std::u16string &name);
    void titleUpdate();
};

#endif
