// One synchronous HTTP call for programs: the request is described by named
// items of a value list (contentTypeHeader, requestText) and the answer comes
// back into it (replyText, or errorText on failure). The call blocks the
// program but turns the calling thread's event loop while it waits, so it
// works the same in the graphical console and in korvel-cli's worker thread.
#ifndef LOCALNETWORK_H
#define LOCALNETWORK_H

#include <QByteArray>

#include <string>

class QNetworkRequest;
class localValueList;

class localNetwork {
public:
    enum methodCode { methodGET = 0, methodPOST = 1 };

    // The method name is trimmed of blanks, tabs and line feeds and
    // upper-cased; GET and POST go on to requestExec, anything else stores
    // `Illegal method name "NAME"` as errorText and answers false without
    // sending anything. `list` may be null.
    static bool requestExecByMethodName(const std::u16string &method, const std::u16string &url, localValueList *list);
    // True when a server answered, whatever its HTTP status; the body, cut at
    // its first NUL byte, is then stored as replyText. Otherwise the error is
    // stored as errorText and shown in a critical box.
    static bool requestExec(int methodCode, const std::u16string &url, localValueList *list);
    // The headers of `request` and the body (UTF-8) from the list's items, in
    // whatever order they come. A body brings the fixed length header
    // "15000\r\n"; Qt's HTTP layer puts the body's real length on the wire.
    static QByteArray requestPrepare(QNetworkRequest &request, const localValueList *list);
};

// Registers the handler of NETWORKREQUESTEXECSYNC; both executables call it
// once at start-up.
void localNetworkInstall();

#endif
