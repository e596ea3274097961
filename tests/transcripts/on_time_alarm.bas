10 ' The alarm is set two seconds ahead (at least one after ON TIME$ runs); the program loops until it has come.
20 T$=TIME$
30 S=(VAL(LEFT$(T$,2))*3600+VAL(MID$(T$,4,2))*60+VAL(RIGHT$(T$,2))+2) MOD 86400
40 A$=RIGHT$(STR$(100+S\3600),2)+":"+RIGHT$(STR$(100+(S\60) MOD 60),2)+":"+RIGHT$(STR$(100+S MOD 60),2)
50 ON TIME$=A$ GOSUB 100
60 TIME$ ON
70 IF F=0 THEN 70
80 PRINT "BACK"
90 END
100 PRINT "ALARM"
110 F=1
120 RETURN
