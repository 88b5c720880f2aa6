#include "localServices.h"

#include "localErrorType.h"
#include "localOperatorCompiled.h"
#include "localString.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QVariant>

#include <iostream>
#include <memory>

namespace {
std::unique_ptr<localServices> &installed()
{
    static std::unique_ptr<localServices> services(new localServices);
    return services;
}
} // namespace

localServices::~localServices() = default;

void localServices::messageBox(boxKind, const std::u16string &title, const std::u16string &text)
{
    std::cout << localNarrow(title) << "\n" << localNarrow(text) << "\n" << std::flush;
}

bool localServices::questionBox(const std::u16string &title, const std::u16string &text)
{
    messageBox(boxWarning, title, text);
    return false;
}

std::u16string localServices::openFileName(const std::u16string &, const std::u16string &, const std::u16string &)
{
    return std::u16string();
}

std::u16string localServices::saveFileName(const std::u16string &, const std::u16string &, const std::u16string &)
{
    return std::u16string();
}

void localServices::fatalBox(const std::u16string &, const std::u16string &)
{
    // Headless: the message went to std::cout already.
}

void localServices::waitCursorPush() {}
void localServices::waitCursorPop() {}
void localServices::processEvents() {}

void localServices::editFile(const std::u16string &fileName, int32_t, bool builtIn)
{
    std::cout << (builtIn ? "EDIT COMMAND" : "MODIFY COMMAND") << " needs the graphical console; the file is "
              << localNarrow(fileName) << "\n"
              << std::flush;
}

bool localServices::escapePressed()
{
    return false;
}

bool localServices::graphical() const
{
    return false;
}

std::u16string localServices::applicationGetDataFullFileName()
{
    QString name;
    if (QCoreApplication::instance() != nullptr)
        name = QCoreApplication::instance()->property("dataFileName").toString();
    if (name.isEmpty()) {
        name = QStringLiteral("../lib/Zakup200215.sqlite");
        logWrite(u"defaultName=" + localFromQString(name));
    }
    if (QFileInfo::exists(name))
        return localFromQString(name);
    return instance().openFileName(u"Open file database ", localFromQString(QDir::currentPath()),
                                   u"*.sqlite *.sqlite");
}

localServices &localServices::instance()
{
    return *installed();
}

void localServices::install(localServices *services)
{
    installed().reset(services != nullptr ? services : new localServices);
}
