#include "localString.h"

#include <QString>

#include <cstdio>

namespace localString {

std::u16string numberToWide(double value)
{
    // "%.20g" is the stream's precision-20 default float format, without
    // building a stream for every number the interpreter prints.
    char buffer[40];
    const int length = std::snprintf(buffer, sizeof buffer, "%.20g", value);
    return std::u16string(buffer, buffer + length);
}

std::string nameForFileSystem(const std::u16string &name)
{
    return localToQString(name).toUtf8().toStdString();
}

} // namespace localString

QString localToQString(const std::u16string &text)
{
    return QString::fromStdU16String(text);
}

std::u16string localFromQString(const QString &text)
{
    return text.toStdU16String();
}
