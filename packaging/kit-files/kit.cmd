@echo off
rem Tries Backup on this computer and writes one report: kit.cmd [LETTER [--quick] [--install]]
rem LETTER is that of a USB stick; without it, it is asked for.
setlocal
if not exist "%~dp0tests\kit.exe" (
    echo Extrayez d'abord tout le contenu du fichier zip dans un dossier.
    echo Extract everything that is in the zip file into a folder first.
    pause
    exit /b 2
)
"%~dp0tests\kit.exe" %*
set outcome=%errorlevel%
if "%~1"=="" pause
exit /b %outcome%
