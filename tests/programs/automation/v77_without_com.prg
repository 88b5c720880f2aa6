// Without COM a V77 object is made, but nothing stands behind it: CONNECT
// fails its probe, calls answer empty, sub-objects fail with status 28.
? CLASSLOAD("V77");
base = CREATEOBJECT("V77");
? base.TOSTRING();
? base.CONNECT("D:/base", 1, "user", "pw");
? base.ПОДКЛЮЧЕН();
? "[" + base.EVALUATE("2+2") + "]";
? base.GETITEM(0);
? base.QUIT();
? base.CREATEOBJECT("Справочник.Товары");
? "not reached";
