10 INPUT "Name";N$
20 INPUT "Two numbers",A,B
30 PRINT "Hello ";N$;", the sum is";A+B
40 INPUT X$,Y
50 PRINT X$;"|";Y
60 LINE INPUT L$
70 PRINT L$
72 PRINT "AB";
74 INPUT E$,F
76 PRINT "[";E$;"]";F
80 INPUT Q
90 PRINT "never"
