IF 1 THEN ? 1; ENDIF
? "a" - "b";
