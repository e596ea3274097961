10 REM drawn on page 0 while no page is shown: the drawing is not visible
20 SCREEN 0,0,0,0
30 VIEW (20,40)-(200,150),2,6
40 PRINT "No page shown"
