// The dialogs behind VALUELIST SHOW / ROWCHOOSE and VALUETABLE ROWCHOOSE:
// the core builds the captions and runs the loops, these show them.
#include "localVclServices.h"

#include "localVclDialogs.h"

#include "localString.h"
#include "localValueList.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QScreen>
#include <QVBoxLayout>

namespace {

// startRow from 1, 0 for none; the answer from 1, 0 on cancel.
size_t rowChoose(const std::u16string &title, const QStringList &captions, size_t startRow)
{
    localVclQStringListGetItemDialog dialog(localToQString(title), captions, int(startRow) - 1);
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    dialog.resize(available.width() / 3, available.height() / 2);
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    const int chosen = dialog.exec();
    QApplication::restoreOverrideCursor();
    return chosen < 0 ? 0 : size_t(chosen) + 1;
}

void textShow(const std::u16string &title, const std::u16string &text)
{
    QDialog dialog;
    dialog.setWindowTitle(localToQString(title));
    QPlainTextEdit *view = new QPlainTextEdit(localToQString(text));
    view->setReadOnly(true);
    QVBoxLayout *layout = new QVBoxLayout(&dialog);
    layout->addWidget(view);
    dialog.exec();
}

} // namespace

void localVclListDialogsRegister()
{
    localListDialogs::handlers.rowChoose = rowChoose;
    localListDialogs::handlers.textShow = textShow;
}
