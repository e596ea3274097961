10 INPUT "Number";N
20 PRINT N*2
30 INPUT "Small";S%
40 PRINT "never"
