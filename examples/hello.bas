10 REM Hello from Tessaly
20 BEEP
30 END
