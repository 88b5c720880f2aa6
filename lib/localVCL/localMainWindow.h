// The frame a widget gets when no MDI area exists.
#ifndef LOCALMAINWINDOW_H
#define LOCALMAINWINDOW_H

#include <QMainWindow>

class localMainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit localMainWindow(QWidget *parent = nullptr);

    // The project's icon folder below the program, or the program's own
    // folder when that does not exist.
    static QString iconDirectory();
};

#endif
