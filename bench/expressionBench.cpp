// Evaluates expression texts many times through the evaluator, as a running
// loop does, and prints the time per evaluation: read from the text each
// time, and through a kept form as a compiled statement reads it.
//   build/bench/expressionBench [rounds]
#include "localContextUTF8.h"
#include "localInterpretatorUTF8.h"
#include "localString.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <cstdlib>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const long rounds = argc > 1 ? std::atol(argv[1]) : 1000000;
    localContextUTF8 *context = new localContextUTF8();
    context->variableSetNumber(u"I", 3);
    context->variableSetNumber(u"TOTAL", 0);
    const char16_t *expressions[] = {
        u"2 + 3 * 4",
        u"(I + 1) * 2 - TOTAL / 3",
        u"(\"abc\" + \"def\") = \"abcdef\"",
        u"I > 2 ? I * I : 0",
    };
    // Seconds for `rounds` evaluations; negative when one fails.
    auto timed = [&](const std::u16string &text, localExpressionForm *form) {
        QElapsedTimer timer;
        timer.start();
        for (long round = 0; round < rounds; ++round) {
            localErrorType status = localErrorTypeOK;
            size_t position = 0;
            localValueDescription *result = nullptr;
            if (!localInterpretatorUTF8::scanStringGetExpressionAndEvaluete(status, text, position, &result, context,
                                                                           false, form)) {
                std::fprintf(stderr, "evaluation failed with status %d\n", int(status));
                return -1.0;
            }
            localValueRelease(result);
        }
        return double(timer.nsecsElapsed()) / 1e9;
    };
    std::printf("%-32s %14s %14s\n", "expression", "text ns", "kept form ns");
    for (const char16_t *expression : expressions) {
        const std::u16string text(expression);
        localExpressionForm form(text);
        const double fromText = timed(text, nullptr);
        const double fromForm = timed(text, &form);
        if (fromText < 0 || fromForm < 0)
            return 1;
        std::printf("%-32s %14.1f %14.1f\n", localNarrow(text).c_str(), fromText * 1e9 / double(rounds),
                    fromForm * 1e9 / double(rounds));
    }
    return 0;
}
