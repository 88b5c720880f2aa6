// if inside a comment stays a comment
x = "a // b"; y = 1;
? "а"+"б";
w = QWidget; v = Qwerty; z = Q1; u = qt_x;
сообщить("привет"); message(x);
аСообщить(1); СТРОКАИЗФАЙЛА("f"); xStringFromReplace(1);
s = 'one' + 'two'; ЕСЛИ Если если IF
СтрокаДлина(s); stringlen(s); ФайлСуществует("x")
userdir(1); ПользовательКаталог(1); // declared, never answered: no colour
