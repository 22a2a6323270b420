@rem Registers the control for this machine, or for the user where that is refused.
regsvr32 "%~dp0DravikDlg.ocx"
