10 ' Bytes of the user memory, of a variable and of a port, as the headless runner gives them
20 POKE 0, 300 : PRINT PEEK(0); DEFUSER; SEGPTR
30 A% = -2 : DEF SEG = 0 : PRINT PEEK(VARPTR(A%)); PEEK(VARPTR(A%) + 1)
40 POKE VARPTR(A%) + 1, 1 : PRINT A%
50 OUT 768, 65 : PRINT INP(768); INP(769)
60 ON ERROR GOTO 100
70 X = PEEK(0)
80 CALL 0
90 END
100 PRINT "Error"; ERR; "in"; ERL : RESUME NEXT
