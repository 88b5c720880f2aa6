// The manual: MANUAL (Ctrl+F1) runs this program, which reads the help file
// lying beside it and opens the help window over it.
helpFile = "testHelpLocalInterpretatorUtf8.json";
IF NOT FILEEXIST(helpFile) THEN
    helpFile = BINARYPATH() + "/prgTest/testHelpLocalInterpretatorUtf8.json";
ENDIF;
pages = CREATEOBJECT("VALUELIST");
pages.VALUEADD("Файл справки " + helpFile + " не найден.", "main.htm");
IF FILEEXIST(helpFile) THEN
    pages.VALUEADD(STRINGFROMFILE(helpFile), "help.json");
ENDIF;
___TEST__TEXTBROWSER(pages);
