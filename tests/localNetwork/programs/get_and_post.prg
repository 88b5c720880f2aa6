// GET and POST against the test's server (@URL@ is its address): the reply
// lands in the list, a POST's body and type come back from /echo, an HTTP
// error status is still a reply, an unknown method sends nothing.
params = CREATEOBJECT("VALUELIST");
? NETWORKREQUESTEXECSYNC("GET", "@URL@/cyrillic", params);
? params.VALUEGETBYPRESENTATION("replyText");
params.VALUEADD("Привет, сервер", "requestText");
params.VALUEADD("text/plain; charset=utf-8", "contentTypeHeader");
? СетьЗапросВыполнитьСинхронно(" post ", "@URL@/echo", params);
? params.VALUEGETBYPRESENTATION("replyText");
? params.SIZE();
? NETWORKREQUESTEXECSYNC("get", "@URL@/status/404", params);
? params.VALUEGETBYPRESENTATION("replyText");
? NETWORKREQUESTEXECSYNC("GET", "@URL@/nul", params);
? stringlen(params.VALUEGETBYPRESENTATION("replyText"));
? NETWORKREQUESTEXECSYNC("PUT", "@URL@/echo", params);
? params.VALUEGETBYPRESENTATION("errorText");
? NETWORKREQUESTEXECSYNC("GET", "@URL@/echo");
