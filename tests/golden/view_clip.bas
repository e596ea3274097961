10 REM figures crossing the edges of a bordered VIEW stop one pixel inside its right and bottom edges
20 VIEW (100,60)-(300,200),1,2
30 LINE (0,130)-(639,130),7:LINE (200,0)-(200,399),7
40 CIRCLE (300,200),60,6
50 LINE (260,160)-(330,230),4,BF
60 PAINT (150,100),3,7
70 DRAW "C5BM120,180R300"
80 REM SCREEN resets VIEW but the page keeps its clip until the next VIEW
90 SCREEN 0,0
100 LINE (0,0)-(639,399),7
110 PRINT "VIEW clip"
