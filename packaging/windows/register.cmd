@echo off
rem Registers the classes of this folder: for all users where this is run as an administrator, else for the present user.
rem The folder has to stay where it is as long as they are registered.
setlocal
set tool=regsvr32.exe
if "@MERVANE_WINDOWS_WIDTH@"=="32" if exist "%SystemRoot%\SysWOW64\regsvr32.exe" set tool=%SystemRoot%\SysWOW64\regsvr32.exe
for %%s in (@server_names@) do (
  "%tool%" /s "%~dp0%%s"
  if errorlevel 1 (
    echo %%s could not be registered.
    exit /b 1
  )
)
echo Registered: @server_names@
