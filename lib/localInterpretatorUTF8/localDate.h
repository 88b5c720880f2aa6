// The language's time value, the class DATE / ДАТА: the moment the object was
// made, shown as one token such as 20210315:14:05:09.
#ifndef LOCALDATE_H
#define LOCALDATE_H

#include "localNativeClass.h"

#include <cstdint>
#include <ctime>
#include <string>

class localDateTime : public localNativeClass<localDateTime> {
public:
    time_t now;

    explicit localDateTime(time_t moment) : now(moment) {}

    static const localNativeClassShape<localDateTime> &classShape();
    // The moment of creation is kept: TOSTRING shows it, not the time of the call.
    static bool construct(localErrorType &status, localContextUTF8 *context, localValueVector *arguments,
                          localValueDescription *result);
};

// Local time as yyyymmdd:hh:mm:ss, every field zero-filled: the date has no
// separators and a colon stands between the day and the hour.
std::u16string dateTimeToString(time_t moment);

#endif
