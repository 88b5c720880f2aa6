// Nobody listens at @REFUSED@: false, the error in the list, the box printed.
params = CREATEOBJECT("VALUELIST");
? NETWORKREQUESTEXECSYNC("GET", "@REFUSED@/echo", params);
? params.VALUEGETBYPRESENTATION("errorText");
? params.SIZE();
