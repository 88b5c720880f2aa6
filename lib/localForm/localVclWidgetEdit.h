// The field of a form: a framed widget bound by name to one variable of the
// form's context. Its shape is settled once, by the type the variable holds
// when the field is made; edits are written back and the field's formula
// runs after a change.
#ifndef LOCALVCLWIDGETEDIT_H
#define LOCALVCLWIDGETEDIT_H

#include <QFrame>
#include <QLineEdit>

#include <cstdint>
#include <string>

class QInputDialog;
class QPushButton;
class localContextUTF8;
class localValueDescription;

// A number line of fixed format: `len` characters in all, `dec` of them
// behind the point, right-aligned; read-only while it has no focus.
class localVclEditWidgetNumeric : public QLineEdit {
    Q_OBJECT
public:
    int32_t len;
    int32_t dec;
    bool noSign;

    localVclEditWidgetNumeric(int32_t length, int32_t decimals, bool withoutSign, const QString &text,
                              QWidget *parent = nullptr);

    // Formats a number text; one that does not convert shows 0.
    void setText(const QString &text);
    // Blanks before the point dropped, the decimals filled up with zeros, the
    // last `len` characters kept.
    QString normalised(const QString &text) const;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
};

class localVclWidgetEdit : public QFrame {
    Q_OBJECT
public:
    QInputDialog *selectDialog = nullptr;
    QPushButton *buttonOpen = nullptr;
    QPushButton *buttonChoose = nullptr;
    QWidget *editWidget = nullptr;
    localContextUTF8 *context = nullptr;
    std::u16string identifier;
    std::u16string formula;
    int32_t reserved = 0;

    // Without a context the field makes an empty one of its own.
    localVclWidgetEdit(const std::u16string &variableName, localContextUTF8 *owner, QWidget *parent = nullptr);
    ~localVclWidgetEdit() override;

    // Shows a string variable unless the user is typing into the field.
    void varRead();
    virtual void choose();
    virtual void open();

signals:
    void varValueChanged();

public slots:
    void buttonChooseClickSlot();
    void buttonOpenClickSlot();
    void editingFinishedSlot();
    void SelectFormSignalAppliedSlot();
    void SelectFormSignalDestroyedSlot();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    localContextUTF8 *ownContext = nullptr;

    // The bound variable's cell; a missing one can only come from a broken
    // context and stops the program with `message`.
    localValueDescription *variableValue(const char *message) const;
    void buttonEnable(QPushButton *&button, const QString &word, const QString &text, void (localVclWidgetEdit::*slot)());
    void editPlace();
};

#endif
