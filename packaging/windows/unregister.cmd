@echo off
rem Takes back what register.cmd did.
setlocal
set tool=regsvr32.exe
if "@MERVANE_WINDOWS_WIDTH@"=="32" if exist "%SystemRoot%\SysWOW64\regsvr32.exe" set tool=%SystemRoot%\SysWOW64\regsvr32.exe
for %%s in (@server_names@) do (
  "%tool%" /u /s "%~dp0%%s"
  if errorlevel 1 (
    echo %%s could not be unregistered.
    exit /b 1
  )
)
echo Unregistered: @server_names@
