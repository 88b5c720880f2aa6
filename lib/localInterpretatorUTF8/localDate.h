// The language's time value, the class DATE / ДАТА: the moment the object was
// made, shown as one token such as 20210315:14:05:09.
#ifndef LOCALDATE_H
#define LOCALDATE_H

#include "localClassDeclaration.h"

#include <cstdint>
#include <ctime>
#include <string>

class localDateTime {
public:
    time_t now;
    // The object's own link count: the cells that hold this date.
    int64_t objectLinks = 0;

    static int64_t counterStaticTotal;

    explicit localDateTime(time_t moment);
    localDateTime(const localDateTime &) = delete;
    localDateTime &operator=(const localDateTime &) = delete;
    virtual ~localDateTime();

    static localClassDeclaration *classDeclaration();
    static bool classImplementationMethodFunction(localErrorType &status, localContextUTF8 *context, void **object,
                                                  const std::u16string &name, localValueVector *arguments,
                                                  localValueDescription **result);
    static int64_t objectLinkFunction(void **object, int delta);
};

// Local time as yyyymmdd:hh:mm:ss, every field zero-filled: the date has no
// separators and a colon stands between the day and the hour.
std::u16string dateTimeToString(time_t moment);

#endif
