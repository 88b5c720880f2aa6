#include "localMainWindow.h"

#include <QCoreApplication>
#include <QDir>
#include <QIcon>

localMainWindow::localMainWindow(QWidget *parent) : QMainWindow(parent)
{
    setWindowIcon(QIcon(iconDirectory() + QStringLiteral("/logoKV_3232.png")));
}

QString localMainWindow::iconDirectory()
{
    const QString programDirectory = QCoreApplication::applicationDirPath();
    const QString icons = programDirectory + QStringLiteral("/lib/icons");
    return QDir(icons).exists() ? icons : programDirectory;
}
