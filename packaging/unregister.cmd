@rem Takes away everything that register.cmd entered.
regsvr32 /u "%~dp0DravikDlg.ocx"
