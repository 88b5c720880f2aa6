// The first program: DO hello.prg at the console.
? "Hello, world!";
? "Здравствуй, мир!";
name = "Korvel";
? "This is " + name + ", " + "2 + 2 = " + STRING(2 + 2);
