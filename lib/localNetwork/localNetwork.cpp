#include "localNetwork.h"

#include "localClassDeclaration.h"
#include "localGlobalFunctions.h"
#include "localServices.h"
#include "localString.h"
#include "localValueList.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

#include <memory>

namespace {

const std::u16string itemContentType = u"contentTypeHeader";
const std::u16string itemRequestText = u"requestText";
const std::u16string itemReplyText = u"replyText";
const std::u16string itemErrorText = u"errorText";

// Programs have always sent this length, whatever the body; servers they talk
// to expect it, so it is not computed.
const QString fixedContentLength = QStringLiteral("15000\r\n");

void itemStore(localValueList *list, const std::u16string &name, const std::u16string &text)
{
    if (list != nullptr)
        list->valueSetByPresentation(text, name);
}

// A reply counts when a server sent one, an HTTP error status included; a
// refused connection or an unknown host does not, even where Qt leaves the
// failed reply open for reading.
bool replyCameFromServer(const QNetworkReply &reply)
{
    if (!reply.isFinished() || !reply.isReadable())
        return false;
    return reply.error() == QNetworkReply::NoError
        || reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid();
}

std::u16string replyText(QNetworkReply &reply)
{
    QByteArray bytes = reply.readAll();
    const int nul = bytes.indexOf('\0');
    if (nul >= 0)
        bytes.truncate(nul);
    return localFromQString(QString::fromUtf8(bytes));
}

bool networkRequestExecSync(localErrorType &status, localContextUTF8 *, localValueVector &arguments,
                            localValueDescription *result)
{
    if (!localArgCountRange(status, &arguments, 2, 3) || !localArgType(status, &arguments, 0, localValueTypeSTR)
        || !localArgType(status, &arguments, 1, localValueTypeSTR))
        return false;
    localValueList *list = nullptr;
    if (arguments.size() == 3) {
        list = localArgValueList(status, arguments, 2);
        if (list == nullptr)
            return false;
    }
    const bool replied
        = localNetwork::requestExecByMethodName(arguments[0]->localValueString, arguments[1]->localValueString, list);
    result->setBool(replied);
    return true;
}

} // namespace

bool localNetwork::requestExecByMethodName(const std::u16string &method, const std::u16string &url,
                                           localValueList *list)
{
    const std::u16string name = localString::toUpper(localString::trim(method));
    if (name == u"GET")
        return requestExec(methodGET, url, list);
    if (name == u"POST")
        return requestExec(methodPOST, url, list);
    itemStore(list, itemErrorText, u"Illegal method name \"" + name + u"\"");
    return false;
}

QByteArray localNetwork::requestPrepare(QNetworkRequest &request, const localValueList *list)
{
    QByteArray body;
    if (list == nullptr)
        return body;
    for (const localValueListItem &item : list->items) {
        if (item.presentation == itemContentType) {
            request.setHeader(QNetworkRequest::ContentTypeHeader, localToQString(item.value.toString()).toUtf8());
        } else if (item.presentation == itemRequestText) {
            body = localToQString(item.value.toString()).toUtf8();
            request.setHeader(QNetworkRequest::ContentLengthHeader, fixedContentLength);
        }
    }
    return body;
}

bool localNetwork::requestExec(int methodCode, const std::u16string &url, localValueList *list)
{
    QNetworkAccessManager manager;
    QNetworkRequest request(QUrl(localToQString(url)));
    const QByteArray body = requestPrepare(request, list);
    std::unique_ptr<QNetworkReply> reply(methodCode == methodPOST ? manager.post(request, body) : manager.get(request));
    // No time-out: the program waits as long as the server takes. The loop
    // turns on the calling thread, which is what delivers the reply's events
    // in korvel-cli's worker thread as well as in the console.
    while (!reply->isFinished())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    if (replyCameFromServer(*reply)) {
        itemStore(list, itemReplyText, replyText(*reply));
        return true;
    }
    const std::u16string error = localFromQString(reply->errorString());
    itemStore(list, itemErrorText, error);
    localServices::instance().messageBox(localServices::boxCritical, u"serviceRequestNotFinish()", error);
    return false;
}

void localNetworkInstall()
{
    localGlobalFunctionGraphicalSet(u"NETWORKREQUESTEXECSYNC", networkRequestExecSync);
}
