@echo off
rem Registers the classes of this folder: for all users where this is run as an administrator, else for the present user.
rem The folder has to stay where it is as long as they are registered.
rem
rem usage: register.cmd [/q]    /q neither shows a window with the reason of a failure nor waits for a key
setlocal
set system=%SystemRoot%\System32
if "@MERVANE_WINDOWS_WIDTH@"=="32" if exist "%SystemRoot%\SysWOW64\regsvr32.exe" set system=%SystemRoot%\SysWOW64
set status=0
for %%s in (@server_names@) do call :register "%~dp0%%s" %%s %1
if "%status%"=="0" echo Registered: @server_names@
if not "%1"=="/q" pause
exit /b %status%

:register
"%system%\regsvr32.exe" /s %1
set result=%errorlevel%
if "%result%"=="0" exit /b 0
set status=1
echo %2 could not be registered, regsvr32 ended with %result%.
if "%result%"=="3" echo Windows cannot load it: it is missing, blocked as a download, or this Windows has no @MERVANE_WINDOWS_WIDTH@ bit programs.
if "%result%"=="5" echo The registry could not be written. Try again as an administrator: right-click, "Run as administrator".
echo README.txt says more.
rem Once more, this time with the window that shows what is wrong.
if not "%3"=="/q" "%system%\regsvr32.exe" %1
exit /b 0
