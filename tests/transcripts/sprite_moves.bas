10 ' A sprite: a little ship drawn once, kept in an array with GET@,
20 ' and moved over a striped background with PUT@ (XOR draws it, XOR again takes it away).
30 CLS 3
40 DIM SHIP%(409)
50 LINE (0,0)-(15,7),6,BF : LINE (4,8)-(11,15),2,BF : PSET (7,3),0
60 GET @(0,0)-(15,15), SHIP%
70 CLS 2
80 FOR Y = 0 TO 399 STEP 40 : LINE (0,Y)-(639,Y+19),1,BF : NEXT
90 X = 20 : Y = 30
100 PUT @(X,Y), SHIP%
110 FOR S = 1 TO 60
120   PUT @(X,Y), SHIP%
130   X = X + 8 : Y = Y + 5
140   PUT @(X,Y), SHIP%
150 NEXT
160 PUT @(X + 40,Y), SHIP%, PSET
170 PRINT "Ship at"; X; Y
172 DEF SEG = 0 : PRINT "Image"; PEEK(VARPTR(SHIP%(0))); PEEK(VARPTR(SHIP%(1)))
174 PRINT "Colours"; POINT(X + 7,Y + 1); POINT(X + 47,Y + 10); POINT(20,30)
180 END
