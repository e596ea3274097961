10 VIEW (0,0)-(320,200),4
20 SCREEN 0,2
30 PRINT "Graphics hidden: text alone"
