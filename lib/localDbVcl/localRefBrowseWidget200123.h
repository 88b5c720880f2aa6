// The browse window of a reference book: a table whose rows form a tree of
// folders (`parentid` the folder's id, 0 at the root; `isfolder` 1 for a
// folder). Over an index that starts with those two fields it shows one
// folder at a time, its ancestors in the head lines.
#ifndef LOCALREFBROWSEWIDGET200123_H
#define LOCALREFBROWSEWIDGET200123_H

#include "localDbtBrowseWidget200123.h"

class localRefBrowseWidget200123 : public localDbtBrowseWidget200123 {
    Q_OBJECT
public:
    localRefBrowseWidget200123(localDbDataSource200123 &source, const std::vector<localDbGridColumn> &gridColumns,
                               bool selectionMode = false, QWidget *parent = nullptr);

    bool hierarchical = false;
    // The folders above the shown one, root first, as buffer rows.
    std::vector<localDbDataSource200123::row> ancestors;
    // The index (table "_DESCR") that sorts a folder's rows by description.
    std::u16string alternativeIndexName;

    // Switches the mode; the current record stays current.
    void setHierarchical(bool on);
    // Whether the current index starts with `parentid`, `isfolder`.
    bool hierarchyIndex() const;

    QPixmap cellPicture(int32_t row, int32_t column) override;

    // The three marks (folder, open folder, item) cut from the picture file.
    static const QPixmap &mark(int which);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    std::u16string headLineText(int32_t line, int32_t column) override;
    QPixmap headLinePicture(int32_t line) override;
    void indexAboutToChange(const std::u16string &indexName) override;
    bool indexKeepsFixed(const localDbIndex &index) const override;

private:
    // The column of a row (key or select column) holding the main table's
    // field, -1 for none.
    int fieldColumn(const std::u16string &field) const;
    bool isFolder(const localDbDataSource200123::row &values) const;
    // The ancestor shown on head line `line`, or null.
    const localDbDataSource200123::row *ancestorOnLine(int32_t line) const;
    // Head lines for the ancestors, as many as leave a data line.
    void headLinesSet();
    void folderEnter();
    void folderLeave();
    void hierarchyDrop();
};

#endif
