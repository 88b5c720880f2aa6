// A dialog that lets the user pick one of a connection's tables.
#ifndef LOCALDBTABLECHOOSER_H
#define LOCALDBTABLECHOOSER_H

#include <QDialog>

#include <string>

class QListWidget;

class localDbTableChooser : public QDialog {
    Q_OBJECT
public:
    explicit localDbTableChooser(const std::u16string &dbName, QWidget *parent = nullptr);

    QListWidget *tableList() const { return list; }
    std::u16string tableChosen() const;

    // Runs the dialog; the chosen table, or "" when none was chosen.
    static std::u16string tableChoose(const std::u16string &dbName, QWidget *parent = nullptr);

private:
    QListWidget *list;
};

#endif
