@rem Runs the check and keeps its report here. A filter of GoogleTest may follow.
@cd /d "%~dp0"
@windows_check.exe %*
@set CHECK_CODE=%ERRORLEVEL%
@echo.
@echo The report is report.txt, what each program said is in the folder logs.
@if not defined CORVANE_CHECK_UNATTENDED pause
@exit /b %CHECK_CODE%
