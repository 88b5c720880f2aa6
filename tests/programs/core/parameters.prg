// Parameters are passed by reference: a function that assigns to one
// changes the caller's variable.
PROCEDURE bump(counter)
    counter = counter + 1;
ENDPROCEDURE;

c = 1;
bump(c);
bump(c);
? c;

// VAR in the heading takes a copy
PROCEDURE bumpCopy(VAR counter)
    counter = counter + 1;
    ? counter;
ENDPROCEDURE;
bumpCopy(c);
? c;

// so does an argument in round brackets, or any other expression
bump((c));
? c;
bump(c + 0);
? c;

// a procedure returns 1
? bump(c);
? c;

// arguments beyond the parameters are ignored
FUNCTION first(a)
    RETURN a;
ENDFUNCTION;
? first(7, 8, 9);

// the Russian VAR may be cut to four letters
ПРОЦЕДУРА удвоить(ПЕРЕ значение)
    значение = значение * 2;
    ? значение;
КОНЕЦПРОЦЕДУРЫ;
v = 21;
удвоить(v);
? v;

// strings travel by reference too
PROCEDURE exclaim(text)
    text = text + "!";
ENDPROCEDURE;
s = "hi";
exclaim(s);
exclaim(s);
? s;

// two parameters bound to one variable are one cell
PROCEDURE addTo(target, amount)
    target = target + amount;
ENDPROCEDURE;
w = 5;
addTo(w, w);
? w;

// a second definition of a name replaces the first
FUNCTION which()
    RETURN "first";
ENDFUNCTION;
FUNCTION which()
    RETURN "second";
ENDFUNCTION;
? which();

// a function of the program takes precedence over a built-in one
FUNCTION message(text)
    ? "mine: " + text;
ENDFUNCTION;
message("hello");
