// Where new variables land. Each value goes into a new cell before the
// variable takes the lowest free one, whatever the value was read from:
// a literal, a sum (whose cell stands above its operands), or another
// variable's own cell. An existing variable keeps its cell. The dump's own
// call takes the two lowest cells left free.
a = 1;
b = "two";
c = a + 1;
d = a;
a = a + 5;
MEMORYDISPLAYDATA();
