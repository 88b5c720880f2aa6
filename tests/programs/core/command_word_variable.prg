// A word that is a console command reading nothing behind itself names a
// variable in a program like any other word.
director = "x";
? director;
