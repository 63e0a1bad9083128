; Installs Backup on a workstation. packaging/build defines VERSION, CONTENT (the folder with what is installed), LISTS
; (a script with one line for each list file), ICON, SIZE_KB and OUT_FILE.

Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true
ManifestSupportedOS all
RequestExecutionLevel admin
; A file that cannot be replaced ends the installation; a silent one would otherwise go on without it.
AllowSkipFiles off

; Without list files nothing takes a stamp.
!pragma warning disable 6010

!include MUI2.nsh
!include LogicLib.nsh

!define COMPANY "Ardel-Services"
!define SETTINGS_KEY "Software\Ardel-Services\Backup"
!define STAMPS_KEY "${SETTINGS_KEY}\ListFiles"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\ArdelServices.Backup"
!define EVENT_SOURCE_KEY "SYSTEM\CurrentControlSet\Services\EventLog\Application\Backup"
!define LIST_FOLDER "$INSTDIR\Fichierlst\Medium"
!define FILE_ATTRIBUTE_REPARSE_POINT 0x400

Name "$(ProductName)"
OutFile "${OUT_FILE}"
BrandingText "${COMPANY}"
ShowInstDetails nevershow
ShowUninstDetails nevershow

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${NSISDIR}/Contrib/Graphics/Wizard/nsis3-metro.bmp"
!define MUI_ABORTWARNING
!define MUI_WELCOMEPAGE_TEXT "$(WelcomeText)"
!define MUI_FINISHPAGE_TEXT "$(FinishText)"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!define MUI_UNCONFIRMPAGE_TEXT_TOP "$(UninstallText)"
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES

; The first language serves users of any other, as in the program.
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "French"

!macro Text name english french
  LangString ${name} ${LANG_ENGLISH} "${english}"
  LangString ${name} ${LANG_FRENCH} "${french}"
!macroend

!define ENGLISH_NAME "Backup"
!define FRENCH_NAME "Copies de sécurité"
!insertmacro Text ProductName "${ENGLISH_NAME}" "${FRENCH_NAME}"
!insertmacro Text WelcomeText \
  "Backup ${VERSION} will be installed in$\r$\nC:\Valcoreaux\Backup$\r$\n$\r$\nSettings and list files that were changed on this \
computer are kept.$\r$\n$\r$\nQuestions: Ardel Support Desk, 1-800-555-0142." \
  "Le logiciel Copies de sécurité ${VERSION} sera installé dans$\r$\nC:\Valcoreaux\Backup$\r$\n$\r$\nLes paramètres et les \
listes de fichiers modifiés sur ce poste sont conservés.$\r$\n$\r$\nQuestions : Ardel-Services, 1-800-555-0199."
!insertmacro Text FinishText \
  "Backup ${VERSION} is installed. Open it from the desktop or from the Start menu; its Help button opens the user's guide." \
  "Copies de sécurité ${VERSION} est installé. Ouvrez-le à partir du bureau ou du menu Démarrer; son bouton Aide ouvre le \
guide de l'utilisateur."
!insertmacro Text UninstallText \
  "Backup will be removed. Backup.ini and list files that were changed on this computer stay." \
  "Le logiciel Copies de sécurité sera retiré. Backup.ini et les listes de fichiers modifiées sur ce poste sont conservés."
!insertmacro Text ProgramRuns \
  "Backup is running. Close it on every user's desktop, then retry." \
  "Le logiciel Copies de sécurité est ouvert. Fermez-le chez tous les utilisateurs du poste, puis réessayez."

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
!macro VersionTexts language description
  VIAddVersionKey /LANG=${language} ProductName "Backup"
  VIAddVersionKey /LANG=${language} CompanyName "${COMPANY}"
  VIAddVersionKey /LANG=${language} FileDescription "${description}"
  VIAddVersionKey /LANG=${language} FileVersion "${VERSION}"
  VIAddVersionKey /LANG=${language} ProductVersion "${VERSION}"
  VIAddVersionKey /LANG=${language} LegalCopyright "${COMPANY}"
!macroend
!insertmacro VersionTexts ${LANG_ENGLISH} "Installation of Backup"
!insertmacro VersionTexts ${LANG_FRENCH} "Installation de ${FRENCH_NAME}"

!macro Initialize
  ; The program looks for its settings and help documents here and nowhere else.
  StrCpy $INSTDIR "C:\Valcoreaux\Backup"
  SetRegView 64
  SetShellVarContext all
!macroend

Function .onInit
  !insertmacro Initialize
FunctionEnd

Function un.onInit
  !insertmacro Initialize
FunctionEnd

!macro NoteIfRunning name
  ${If} ${FileExists} "$INSTDIR\${name}"
    SetFileAttributes "$INSTDIR\${name}" NORMAL
    ClearErrors
    FileOpen $0 "$INSTDIR\${name}" a
    ${If} ${Errors}
      StrCpy $1 "${name}"
    ${Else}
      FileClose $0
    ${EndIf}
  ${EndIf}
!macroend

!macro SharedFunctions prefix

  ; Ends the section while a program that is to be replaced runs, in whichever session: nobody can write to it then.
  Function ${prefix}RefuseWhileRunning
    again:
    StrCpy $1 ""
    !insertmacro NoteIfRunning "Backup.exe"
    !insertmacro NoteIfRunning "7Za.exe"
    ${If} $1 != ""
      MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(ProgramRuns)" /SD IDCANCEL IDRETRY again
      Abort "$(ProgramRuns)"
    ${EndIf}
  FunctionEnd

  ; $0 = path of a file; gives in $1 its size and time of change, empty when it cannot be read.
  Function ${prefix}TakeStamp
    StrCpy $1 ""
    ClearErrors
    FileOpen $2 "$0" r
    ${IfNot} ${Errors}
      FileSeek $2 0 END $3
      FileClose $2
      GetFileTime "$0" $4 $5
      StrCpy $1 "$3 $4 $5"
    ${EndIf}
  FunctionEnd

!macroend

!insertmacro SharedFunctions ""
!insertmacro SharedFunctions "un."

; A list file that is not as the last installation left it was changed for this computer.
!macro InstallListFile name
  StrCpy $0 "${LIST_FOLDER}\${name}"
  Call TakeStamp
  ReadRegStr $2 HKLM "${STAMPS_KEY}" "${name}"
  ${IfNot} ${FileExists} "$0"
  ${OrIf} $1 == $2
    File "${CONTENT}/lists/${name}"
    Call TakeStamp
    WriteRegStr HKLM "${STAMPS_KEY}" "${name}" "$1"
  ${EndIf}
!macroend

!macro RemoveListFile name
  StrCpy $0 "${LIST_FOLDER}\${name}"
  Call un.TakeStamp
  ReadRegStr $2 HKLM "${STAMPS_KEY}" "${name}"
  ${If} $1 == $2
    Delete "$0"
  ${EndIf}
!macroend

; Both names: the shortcuts may have been made in the other language.
!macro RemoveShortcuts
  Delete "$DESKTOP\${ENGLISH_NAME}.lnk"
  Delete "$DESKTOP\${FRENCH_NAME}.lnk"
  Delete "$SMPROGRAMS\${ENGLISH_NAME}.lnk"
  Delete "$SMPROGRAMS\${FRENCH_NAME}.lnk"
!macroend

; A folder of files. A link in its place goes without what it leads to: any user of the computer can have put it there.
!macro RemoveFolder name
  System::Call 'kernel32::GetFileAttributesW(w "$INSTDIR\${name}") i .r0'
  IntOp $0 $0 & ${FILE_ATTRIBUTE_REPARSE_POINT}
  ${If} $0 = 0
    Delete "$INSTDIR\${name}\*.*"
  ${EndIf}
  RMDir "$INSTDIR\${name}"
!macroend

Section
  Call RefuseWhileRunning

  SetOutPath "$INSTDIR"
  File "${CONTENT}/Backup.exe"
  File "${CONTENT}/7Za.exe"
  File "${CONTENT}/Copie de Sauvegarde.pdf"
  File "${CONTENT}/Backup.pdf"
  File "${CONTENT}/NOTICE.txt"
  File /r "${CONTENT}/LICENSES"

  SetOutPath "${LIST_FOLDER}"
  !define ForListFile InstallListFile
  !include "${LISTS}"
  !undef ForListFile

  SetOutPath "$INSTDIR"
  !insertmacro RemoveShortcuts
  CreateShortcut "$DESKTOP\$(ProductName).lnk" "$INSTDIR\Backup.exe"
  CreateShortcut "$SMPROGRAMS\$(ProductName).lnk" "$INSTDIR\Backup.exe"

  ; A part of Windows whose message 1 is the bare text of the entry.
  WriteRegExpandStr HKLM "${EVENT_SOURCE_KEY}" "EventMessageFile" "%SystemRoot%\System32\EventCreate.exe"
  WriteRegDWORD HKLM "${EVENT_SOURCE_KEY}" "TypesSupported" 7

  WriteUninstaller "$INSTDIR\Uninstall.exe"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "$(ProductName)"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\Backup.exe"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "${COMPANY}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "EstimatedSize" ${SIZE_KB}
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

Section Uninstall
  Call un.RefuseWhileRunning

  !insertmacro RemoveShortcuts

  !define ForListFile RemoveListFile
  !include "${LISTS}"
  !undef ForListFile
  RMDir "${LIST_FOLDER}"
  RMDir "$INSTDIR\Fichierlst"

  ; What an interrupted backup or restore left.
  !insertmacro RemoveFolder "zip"
  Delete "$INSTDIR\Backup.exe"
  Delete "$INSTDIR\7Za.exe"
  Delete "$INSTDIR\Copie de Sauvegarde.pdf"
  Delete "$INSTDIR\Backup.pdf"
  Delete "$INSTDIR\NOTICE.txt"
  !insertmacro RemoveFolder "LICENSES"
  Delete "$INSTDIR\Uninstall.exe"
  ; Only where nothing is left to keep.
  RMDir "$INSTDIR"
  RMDir "C:\Valcoreaux"

  DeleteRegKey HKLM "${EVENT_SOURCE_KEY}"
  DeleteRegKey HKLM "${SETTINGS_KEY}"
  DeleteRegKey /ifempty HKLM "Software\Ardel-Services"
  DeleteRegKey HKLM "${UNINSTALL_KEY}"
SectionEnd
