// A form needs a screen: without one FORMOPEN fails with status 26 and the
// program stops there.
? "opening";
FORMOPEN("invoice.xml");
? "not reached";
