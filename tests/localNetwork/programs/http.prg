// HTTP against the test's server at @URL@; nobody listens at @REFUSED@.
params = CREATEOBJECT("VALUELIST");
? NETWORKREQUESTEXECSYNC("GET", "@URL@/cyrillic", params);
? params.VALUEGETBYPRESENTATION("replyText");
params.VALUEADD("Привет, сервер", "requestText");
params.VALUEADD("text/plain; charset=utf-8", "contentTypeHeader");
? СетьЗапросВыполнитьСинхронно(" post ", "@URL@/echo", params);
? params.VALUEGETBYPRESENTATION("replyText");
? NETWORKREQUESTEXECSYNC("get", "@URL@/status/404", params);
? params.VALUEGETBYPRESENTATION("replyText");
? NETWORKREQUESTEXECSYNC("PUT", "@URL@/echo", params);
? params.VALUEGETBYPRESENTATION("errorText");
? NETWORKREQUESTEXECSYNC("GET", "@REFUSED@/echo", params);
? params.VALUEGETBYPRESENTATION("errorText");
? params.SIZE();
? NETWORKREQUESTEXECSYNC("GET", "@URL@/echo", "params");
