10 REM Hello from Tessaly
20 PRINT "Hello, world!"
30 FOR I=1 TO 5
40 PRINT I;"squared is";I*I
50 NEXT I
60 GOSUB *DONE
70 END
80 *DONE PRINT "Done."
90 RETURN
