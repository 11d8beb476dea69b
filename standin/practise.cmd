@rem Starts the stand-in for SDR# with calls that come and go by themselves.
@start "" "%~dp0SdrStandin.exe" --scenario "%~dp0scenarios\practice.txt"
