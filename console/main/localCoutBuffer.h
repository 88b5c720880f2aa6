// The stream buffer installed on std::cout while the console runs: it
// collects the bytes of a line and hands each completed line to the console,
// letting the window repaint in the middle of a long program.
#ifndef LOCALCOUTBUFFER_H
#define LOCALCOUTBUFFER_H

#include <QObject>
#include <QString>

#include <streambuf>
#include <string>

class localCoutBuffer : public QObject, public std::streambuf {
    Q_OBJECT
public:
    std::string buffer; // UTF-8 bytes of the line so far
    char lastChar = 0;

signals:
    void COUT(QString text);

protected:
    // No put area is set, so every character arrives here.
    int_type overflow(int_type c) override;
};

#endif
