// The small modal dialogs: find a string, choose a date, choose one item of
// a list, and the placeholders of the form settings and the value-list demo.
#ifndef LOCALVCLDIALOGS_H
#define LOCALVCLDIALOGS_H

#include <QDialog>
#include <QStringList>

class QCalendarWidget;
class QCheckBox;
class QComboBox;
class QListWidget;
class QRadioButton;

class localDialogFindString : public QDialog {
    Q_OBJECT
public:
    // `history` newest first: it is shown in that order.
    explicit localDialogFindString(const QStringList &history, QWidget *parent = nullptr);

    QString text() const;
    bool caseSensitive() const;
    bool forward() const;

    QComboBox *combo;
    QCheckBox *caseCheck;
    QRadioButton *forwardButton;
    QRadioButton *backwardButton;
};

class localCalendar : public QDialog {
    Q_OBJECT
public:
    // `date` as "yyyyMMdd"; empty or unreadable starts at today.
    explicit localCalendar(const QString &date = QString(), QWidget *parent = nullptr);

    // "yyyyMMdd" after an accepted choice, else empty.
    QString dateText() const;

    QCalendarWidget *calendar;

public slots:
    void dateSelected();
};

class localDialogFormSettingsSave : public QDialog {
    Q_OBJECT
public:
    explicit localDialogFormSettingsSave(QWidget *parent = nullptr);
};

class localVclQStringListGetItemDialog : public QDialog {
    Q_OBJECT
public:
    // `startRow` from 0 is selected at the start.
    localVclQStringListGetItemDialog(const QString &title, const QStringList &items, int startRow = 0,
                                     QWidget *parent = nullptr);

    // The chosen item's index from 0, or -1 when the dialog was not accepted.
    int exec() override;
    // "Accepted", "Rejected" or "Unexpected" for the last exec.
    QString resultText;

    QListWidget *list;
};

class DemoDialogForListOfValuesChange : public QDialog {
    Q_OBJECT
public:
    DemoDialogForListOfValuesChange(const QString &caption, const QStringList &values, QWidget *parent = nullptr);

    // The values as edited, after "Apply".
    QStringList values;
    QListWidget *list;

public slots:
    void okSlot();
    void applied1Slot();
};

#endif
