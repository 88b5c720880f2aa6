// Texts share their characters when copied, cut or joined: no value may see
// another one change.
a = "abc";
b = a + "d";
c = a + "e";
? a + " " + b + " " + c;
p = STRINGPARTLEFT(b, 2);
q = p + "Z";
r = STRINGPARTRIGHT(b, 2) + "Y";
? a + " " + b + " " + p + " " + q + " " + r;
s = "xy";
s = s + s + s;
? s;
FUNCTION bang(x)
    x = x + "!";
    RETURN x;
ENDFUNCTION;
t = "";
FOR i = 1 TO 100 DO
    t = t + CHR(65 + (i % 26));
ENDDO;
u = t;
t = t + bang(t);
? STRING(STRINGLEN(u)) + " " + STRING(STRINGLEN(t)) + " " + STRINGPARTRIGHT(u, 3) + " " + STRINGPARTRIGHT(t, 3);
? UPPER(a) + " " + (a + "f") + " " + a;
? STRINGPARTRIGHT(STRINGPARTLEFT("hello", 3), 1) = "l";
? STRINGPARTLEFT(a, -1) + " " + STRINGPARTRIGHT(a, 10) + " [" + STRINGPARTLEFT(a, 0) + "]";
? STRINGPARTLEFT("abd", 2) < STRINGPARTLEFT("abc", 3);
? STRINGPARTFIND(STRINGPARTLEFT("abcabc", 5), "c", 4);
