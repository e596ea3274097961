10 REM Address book: one fixed record of 28 bytes per person in a random file
20 OPEN "ADDRESS.DAT" AS #1
30 FIELD #1, 12 AS N$, 14 AS T$, 2 AS Y$
40 FOR I=1 TO 4
50 READ NM$, TEL$, YR
60 LSET N$=NM$:LSET T$=TEL$:LSET Y$=MKI$(YR)
70 PUT #1, I
80 NEXT I
90 PRINT "Entries:";LOF(1)/28
100 REM Entry 3 moves: its number changes in place
110 GET #1, 3:LSET T$="06-5555-0003":PUT #1, 3
120 PRINT "No. Name        Telephone      Born"
130 FOR I=1 TO LOF(1)/28
140 GET #1, I
150 PRINT USING "###";I;:PRINT " ";N$;T$;CVI(Y$)
160 NEXT I
170 CLOSE #1
180 END
190 DATA "Aoki Ken","03-1111-2222",1985
200 DATA "Ito Hana","045-333-4444",1992
210 DATA "Sato Yui","011-222-3333",1978
220 DATA "Mori Jun","092-777-8888",2001
