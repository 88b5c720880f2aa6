#include "localServices.h"

#include "localErrorType.h"

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

void localServices::criticalBox(const std::u16string &title, const std::u16string &text)
{
    std::cout << localNarrow(title) << "\n" << localNarrow(text) << "\n" << std::flush;
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

localServices &localServices::instance()
{
    return *installed();
}

void localServices::install(localServices *services)
{
    installed().reset(services != nullptr ? services : new localServices);
}
