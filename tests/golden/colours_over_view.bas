10 VIEW (40,20)-(300,120),1,2
20 FOR I=0 TO 15:PSET (60+I*4,60),I MOD 8:NEXT
30 COLOR 6:PRINT "Yellow text over a blue view"
40 COLOR 5:PRINT "Cyan ";:COLOR 7:PRINT "and white"
50 PSET (120,20),0:REM a pixel in the background colour under the text row
