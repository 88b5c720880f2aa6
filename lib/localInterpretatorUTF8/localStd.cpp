#include "localStd.h"

#include "localErrorType.h"

#include <unistd.h>

#include <climits>

namespace localStd {

#ifdef Q_OS_WIN
const char separator = '\\';
const char16_t separatorWide = u'\\';
#else
const char separator = '/';
const char16_t separatorWide = u'/';
#endif

namespace {
std::string &argv0Storage()
{
    static std::string path;
    return path;
}

// Fixed at static initialisation, before anything can change directory.
const std::string logPathAtStart = cwdNarrow() + separator + "current.log";
} // namespace

const std::string &argv0()
{
    return argv0Storage();
}

void argv0Set(const char *path)
{
    if (!argv0Storage().empty())
        exit_FAILURE("localStd::argv0 redefinition forbidden!!");
    argv0Storage() = path != nullptr ? path : "";
}

std::string cwdNarrow()
{
    char buffer[PATH_MAX];
    if (getcwd(buffer, sizeof buffer) == nullptr)
        return std::string();
    return buffer;
}

std::string argv0Directory()
{
    const std::string &path = argv0();
    const size_t last = path.rfind(separator);
    return last == std::string::npos ? std::string() : path.substr(0, last);
}

const std::string &logPath()
{
    return logPathAtStart;
}

} // namespace localStd
