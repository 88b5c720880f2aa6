#include "localCoutBuffer.h"

#include <QCoreApplication>

localCoutBuffer::int_type localCoutBuffer::overflow(int_type c)
{
    if (traits_type::eq_int_type(c, traits_type::eof()))
        return traits_type::not_eof(c);
    lastChar = char(c);
    if (c != '\n') {
        buffer += lastChar;
        return c;
    }
    // A NUL ends what is shown of the line.
    const QString line = QString::fromUtf8(buffer.c_str());
    buffer.clear();
    emit COUT(line);
    // Repaints and timers run; typing waits until the command is done.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    return c;
}
