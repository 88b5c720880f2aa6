// A compiled program: a tree of statements whose expressions stay as text.
// textCompile builds it, execute walks it, textExec / textLoad join the two.
#ifndef LOCALOPERATORCOMPILED_H
#define LOCALOPERATORCOMPILED_H

#include "localContextUTF8.h"
#include "localExpressionForm.h"

#include <memory>
#include <string>
#include <vector>

enum localCompiledOperatorType : int32_t {
    localCompiledOperatorTypeNONE = 0,
    localCompiledOperatorTypeBLOCK = 1,
    localCompiledOperatorTypeBREAK = 2,
    localCompiledOperatorTypeCONTINUE = 3,
    localCompiledOperatorTypeCOMMAND = 4,
    localCompiledOperatorTypeEXPRESSION = 5,
    localCompiledOperatorTypeIF = 6,
    localCompiledOperatorTypePRINT = 7,
    localCompiledOperatorTypeRENURN = 8,
    localCompiledOperatorTypeWHILE = 9
};

class localOperatorCompiled;

// (status, context, record, arguments, result); every record carries one, so a
// debugger can put its own in front of the executor.
typedef bool (*localExecuteFunction)(localErrorType &status, localContextUTF8 *context,
                                     const localOperatorCompiled *record, localValueVector *arguments,
                                     localValueDescription **result);

struct localCompiledParameter {
    std::u16string name;        // upper case
    std::u16string nameWritten; // as written
    bool byValue = false;       // VAR in the heading
};

struct localCompiledFunction {
    std::u16string name; // upper case
    // The body; shared so that a context that registered it keeps it alive.
    std::shared_ptr<const localOperatorCompiled> block;
};

class localOperatorCompiled {
public:
    int32_t position = 0;
    int32_t type = localCompiledOperatorTypeNONE;
    std::u16string name;
    bool declares = false;
    std::u16string expression;
    std::vector<localOperatorCompiled> children;
    std::vector<localCompiledParameter> parameters;
    localExecuteFunction execute = nullptr;
    std::vector<localCompiledFunction> functions;

    // What the scanner has read of `expression`, made at its first run and
    // shared by copies of the record, whose text is the same.
    localExpressionForm *expressionForm() const
    {
        if (form == nullptr)
            form = std::make_shared<localExpressionForm>(expression);
        return form.get();
    }

    explicit localOperatorCompiled(localExecuteFunction executeFunction = nullptr);
    virtual ~localOperatorCompiled() = default;
    localOperatorCompiled(const localOperatorCompiled &) = default;
    localOperatorCompiled(localOperatorCompiled &&) = default;
    localOperatorCompiled &operator=(const localOperatorCompiled &) = default;
    localOperatorCompiled &operator=(localOperatorCompiled &&) = default;

    // The executor of every record of this system.
    static bool executeRecord(localErrorType &status, localContextUTF8 *context,
                              const localOperatorCompiled *record, localValueVector *arguments,
                              localValueDescription **result);

    // Prints the record and what it holds, as program-like text, for debugging.
    void COUT(int indent = 0) const;

    // Where the last lookup of `name`, the variable an assignment writes, ended.
    mutable localVariableCache target;

private:
    mutable std::shared_ptr<localExpressionForm> form;
};

// Compiles `text` from `position` into the BLOCK `*block`.
bool textCompile(localErrorType &status, const std::u16string &text, size_t &position,
                 localOperatorCompiled **block);
// Compiles and runs a program; status 59 when it did not return the number 1.
bool textExec(localErrorType &status, const std::u16string &text, localContextUTF8 *context);
// Compiles and runs a library text, whose functions stay callable in `context`.
bool textLoad(localErrorType &status, const std::u16string &text, localContextUTF8 *context);

// The log file of the start's working directory.
void logWrite(const std::u16string &text);
void logWriteStamped(const std::u16string &text);
void dispMemoToLog(localContextUTF8 *context);
// Writes `text` in mode 0..4 (raw, Base64, CP1251, CP866, UTF-8).
bool save(bool append, int32_t mode, const std::u16string &text, const std::u16string &fileName);

#endif
