#include "localFuzzSupport.h"

#include "localGlobalFunctions.h"
#include "localOperatorCompiled.h"
#include "localServices.h"
#include "localString.h"

#include <QDir>
#include <QString>

#include <sanitizer/allocator_interface.h>
#include <stdlib.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>
#include <streambuf>

namespace localFuzz {

namespace {

// Opens nothing; a fatal stop aborts with its message, so that libFuzzer
// reports it with the input that caused it.
class sandboxServices : public localServices {
public:
    void messageBox(boxKind, const std::u16string &, const std::u16string &) override {}
    void fatalBox(const std::u16string &title, const std::u16string &text) override
    {
        std::fprintf(stderr, "fatal stop: %s: %s\n", localNarrow(title).c_str(), localNarrow(text).c_str());
        std::abort();
    }
    void editFile(const std::u16string &, int32_t, bool) override {}
    bool escapePressed() override { return false; }
};

// Global functions that read or write files, change the working directory,
// write the log, load modules or wait for the clock. Their Russian twins go
// with them.
const char16_t *const hiddenFunctions[] = {
    u"FILEEXIST",      u"FILEDELETE",         u"PATHEXIST",          u"FILES",
    u"STRINGFROMFILE", u"STRINGAPPENDTOFILE", u"BASE64APPENDTOFILE", u"BASE64FROMFILE",
    u"CWD",            u"MODULELOAD",         u"LOGWRITE",           u"WAIT",
    u"MEMORYDISPLAY",  u"MEMORYDISPLAYVARS",  u"MEMORYDISPLAYDATA",
};

bool harmless(localErrorType &, localContextUTF8 *, void **, const std::u16string &, localValueVector *,
              localValueDescription **result)
{
    localResultMustBeNull(result, "localFuzz::harmless()");
    *result = localValueNew();
    return true;
}

void hideFunctions(localContextUTF8 *global)
{
    size_t count = 0;
    const localGlobalFunctionRow *rows = localGlobalFunctionRows(count);
    for (const char16_t *hidden : hiddenFunctions) {
        bool found = false;
        for (size_t i = 0; i < count; ++i) {
            if (rows[i].english == nullptr || std::u16string(rows[i].english) != hidden)
                continue;
            found = true;
            global->functionRegister(rows[i].english, harmless);
            if (rows[i].russian != nullptr && *rows[i].russian != 0)
                global->functionRegister(rows[i].russian, harmless);
        }
        require(found, "a hidden function is no longer in the table");
    }
}

class nullBuffer : public std::streambuf {
protected:
    int overflow(int c) override { return c; }
    std::streamsize xsputn(const char *, std::streamsize count) override { return count; }
};

std::string &scratchDirectory()
{
    static std::string directory;
    return directory;
}

void scratchRemove()
{
    QDir(QString::fromStdString(scratchDirectory())).removeRecursively();
}

void scratchMake()
{
    const char *temporary = std::getenv("TMPDIR");
    std::string pattern = std::string(temporary != nullptr && *temporary != 0 ? temporary : "/tmp")
                          + "/korvel-fuzz-XXXXXX";
    require(mkdtemp(&pattern[0]) != nullptr, "cannot make the scratch directory");
    scratchDirectory() = pattern;
    std::atexit(scratchRemove);
}

// The values of contextWithValues, made by this program in each new context.
const char16_t *const valuesProgram = uR"(
N = 12.5;
S = "строка [x] {y} \ ";
B = TRUE;
L = CREATEOBJECT("VALUELIST");
L.VALUEADD(1, "one");
L.VALUEADD("два", "two");
I = CREATEOBJECT("СПИСОКЗНАЧЕНИЙ");
I.VALUEADD(FALSE, "");
L.VALUEADD(I, "inner");
T = CREATEOBJECT("VALUETABLE");
T.COLUMNADD("name");
T.COLUMNADD("amount");
R = T.ROWADD();
T.VALUESET(R, "name", "чай");
T.VALUESET(R, 2, 120.5);
O = CREATEOBJECT("TEST");
)";

const localOperatorCompiled &valuesTree()
{
    static const std::unique_ptr<localOperatorCompiled> tree = [] {
        std::unique_ptr<localOperatorCompiled> compiled(new localOperatorCompiled);
        localErrorType status = localErrorTypeOK;
        size_t position = 0;
        localOperatorCompiled *pointer = compiled.get();
        require(textCompile(status, valuesProgram, position, &pointer), "the values program does not compile");
        return compiled;
    }();
    return *tree;
}

size_t heapAtStart = 0;

} // namespace

void require(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "invariant broken: %s\n", what);
    std::abort();
}

void setUp()
{
    scratchMake();
    localServices::install(new sandboxServices);
    if (std::getenv("KORVEL_FUZZ_VERBOSE") == nullptr) {
        static nullBuffer muted;
        std::cout.rdbuf(&muted);
    }
    localContextUTF8 *global = new localContextUTF8(); // the first context is the global one
    hideFunctions(global);
    localValueVector arguments{localValueNew()};
    arguments[0]->setString(u"TEST");
    localErrorType status = localErrorTypeOK;
    localValueDescription *loaded = nullptr;
    require(global->funcExec(status, u"CLASSLOAD", &arguments, &loaded), "CLASSLOAD(\"TEST\") failed");
    localValueRelease(loaded);
    localValueReleaseAll(arguments);
    valuesTree();
}

std::string scratchPath(const char *name)
{
    return scratchDirectory() + "/" + name;
}

std::u16string textOf(const uint8_t *data, size_t size)
{
    return localFromQString(QString::fromUtf8(reinterpret_cast<const char *>(data), int(size)));
}

localContextUTF8 *contextWithValues()
{
    localContextUTF8 *context = new localContextUTF8(localContextUTF8::globalContext);
    const localOperatorCompiled &tree = valuesTree();
    localErrorType status = localErrorTypeOK;
    localValueVector noArguments;
    localValueDescription *result = nullptr;
    require(tree.execute(status, context, &tree, &noArguments, &result), "the values program failed");
    localValueRelease(result);
    return context;
}

bool overBudget()
{
    constexpr size_t cellsAllowed = localMemoryManager::reservedCount / 2;
    constexpr size_t heapAllowed = size_t(64) << 20;
    return localMemoryManager::instance().getUsedCount() > cellsAllowed
           || __sanitizer_get_current_allocated_bytes() > heapAtStart + heapAllowed;
}

cellsReturn::cellsReturn() : before(localMemoryManager::instance().getUsedCount())
{
    heapAtStart = __sanitizer_get_current_allocated_bytes();
}

cellsReturn::~cellsReturn()
{
    const size_t after = localMemoryManager::instance().getUsedCount();
    if (after != before)
        std::fprintf(stderr, "used cells: %zu before the input, %zu after it\n", before, after);
    require(after == before, "the input leaked cells of the table");
}

} // namespace localFuzz
