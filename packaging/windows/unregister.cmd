@echo off
rem Takes back what register.cmd did in this folder. Another folder's registration and the remembered options stay.
rem
rem usage: unregister.cmd [/q]    /q neither shows a window with the reason of a failure nor waits for a key
setlocal
set system=%SystemRoot%\System32
if "@MERVANE_WINDOWS_WIDTH@"=="32" if exist "%SystemRoot%\SysWOW64\regsvr32.exe" set system=%SystemRoot%\SysWOW64
set status=0
for %%s in (@server_names@) do call :unregister "%~dp0%%s" %%s %1
if "%status%"=="0" echo Unregistered: @server_names@
if not "%1"=="/q" pause
exit /b %status%

:unregister
"%system%\regsvr32.exe" /u /s %1
set result=%errorlevel%
if "%result%"=="0" exit /b 0
set status=1
echo %2 could not be unregistered, regsvr32 ended with %result%.
if "%result%"=="5" echo It was registered for all users. Try again as an administrator: right-click, "Run as administrator".
if not "%3"=="/q" "%system%\regsvr32.exe" /u %1
exit /b 0
