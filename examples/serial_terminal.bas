10 ' A small serial terminal: keys typed are sent to COM1, bytes that arrive are shown.
20 ' To try it without a device, link two pseudo-terminals:
30 '   socat -d -d pty,raw,echo=0,link=/tmp/ttyA pty,raw,echo=0,link=/tmp/ttyB
40 '   tessaly --com 1=/tmp/ttyA examples/serial_terminal.bas
50 ' and talk to it from another terminal: picocom /tmp/ttyB (or cat /tmp/ttyB and echo hi >/tmp/ttyB).
60 ' BREAK (ESC) ends it.
70 CLOSE
80 OPEN "COM1:9600,N,8,1,N" AS #1
90 ON COM(1) GOSUB 200
100 COM(1) ON
110 PRINT "Serial terminal on COM1: type to send, ESC ends"
120 K$=INKEY$
130 IF K$="" THEN 120
140 PRINT #1,K$;
150 GOTO 120
200 ' Bytes have arrived: show them (at most 255 at a time)
210 N=LOC(1)
220 IF N>255 THEN N=255
230 IF N>0 THEN PRINT INPUT$(N,#1);
240 RETURN
