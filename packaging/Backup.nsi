; Installs Backup on a workstation. packaging/build defines VERSION, CONTENT (the folder with what is installed), LISTS
; (a script with one line for each list file), ICON, SIZE_KB, OUT_FILE and, where everything is to be signed, SIGN_WITH.
;
; Backup-setup.exe /S            asks nothing; 0 done, 2 not done
;                  /LANG=fr|en   speaks that language, whatever the user's Windows speaks
;                  /LOG=FILE     adds what was done, and why not, to a text file
;                  /DOWNGRADE    replaces a newer program too

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

!include FileFunc.nsh
!include LogicLib.nsh
!include MUI2.nsh
!include WordFunc.nsh

!ifdef SIGN_WITH
  !uninstfinalize '${SIGN_WITH} "%1"' = 0
  !finalize '${SIGN_WITH} "%1"' = 0
!endif

!define COMPANY "Ardel-Services"
!define SETTINGS_KEY "Software\Ardel-Services\Backup"
!define STAMPS_KEY "${SETTINGS_KEY}\ListFiles"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\ArdelServices.Backup"
!define EVENT_SOURCE_KEY "SYSTEM\CurrentControlSet\Services\EventLog\Application\Backup"
!define LIST_FOLDER "$INSTDIR\Fichierlst\Medium"
!define FILE_ATTRIBUTE_REPARSE_POINT 0x400

; Who may do what, in the security descriptor definition language. Administrators own the folder, whoever made it before;
; users read and execute. They may make a folder in it, though, because the program makes its work folder "zip" there:
; whoever makes it owns it, and the next user may empty and delete what the last one's crash left.
!define ALL_FOR_ADMINISTRATORS "(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)"
!define READ_FOR_USERS "(A;OICI;0x1200a9;;;BU)"
!define PROGRAM_RIGHTS "O:BAD:PAI${ALL_FOR_ADMINISTRATORS}${READ_FOR_USERS}(A;;0x4;;;BU)(A;CIIO;0x1301ff;;;BU)(A;OICIIO;FA;;;CO)"
!define CONTENT_RIGHTS "O:BAD:PAI${ALL_FOR_ADMINISTRATORS}${READ_FOR_USERS}"
!define SDDL_REVISION_1 1
!define SE_FILE_OBJECT 1
; Owner, access list, and nothing inherited from C:\.
!define OWNER_AND_RIGHTS 0x80000005
!define SE_TAKE_OWNERSHIP_PRIVILEGE 9
!define SE_RESTORE_PRIVILEGE 18

Name "$(ProductName)"
OutFile "${OUT_FILE}"
BrandingText "${COMPANY}"
ShowInstDetails nevershow
ShowUninstDetails nevershow

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${NSISDIR}/Contrib/Graphics/Wizard/nsis3-metro.bmp"
!define MUI_ABORTWARNING
; In French the titles need a line more than MUI gives them.
!define MUI_WELCOMEPAGE_TITLE_3LINES
!define MUI_WELCOMEPAGE_TEXT "$(WelcomeText)"
!define MUI_FINISHPAGE_TITLE_3LINES
!define MUI_FINISHPAGE_TEXT "$(FinishText)"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!define MUI_UNCONFIRMPAGE_TEXT_TOP "$(UninstallText)"
; The place for it is narrow: NSIS's own text is cut there.
!define MUI_UNCONFIRMPAGE_TEXT_LOCATION "$(UninstallPlace)"
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
!define ENGLISH_CHECK_NAME "Check a backup"
!define FRENCH_CHECK_NAME "Vérifier une copie de sécurité"
!insertmacro Text CheckName "${ENGLISH_CHECK_NAME}" "${FRENCH_CHECK_NAME}"
!insertmacro Text WelcomeText \
  "Backup ${VERSION} will be installed in$\r$\nC:\Valcoreaux\Backup$\r$\n$\r$\nSettings and list files that were changed on this \
computer are kept.$\r$\n$\r$\nQuestions: Ardel Support Desk, 1-800-555-0142." \
  "Le logiciel Copies de sécurité ${VERSION} sera installé dans$\r$\nC:\Valcoreaux\Backup$\r$\n$\r$\nLes paramètres et les \
listes de fichiers modifiés sur ce poste sont conservés.$\r$\n$\r$\nQuestions : Ardel-Services, 1-800-555-0199."
!insertmacro Text FinishText \
  "Backup ${VERSION} is installed. Open it from the desktop or from the Start menu; its Help button opens the user's \
guide.$\r$\n$\r$\nThe Start menu also has Check a backup." \
  "Copies de sécurité ${VERSION} est installé. Ouvrez-le à partir du bureau ou du menu Démarrer; son bouton Aide ouvre le guide \
de l'utilisateur.$\r$\n$\r$\nLe menu Démarrer a aussi Vérifier une copie de sécurité."
!insertmacro Text UninstallText \
  "Backup will be removed. Backup.ini and list files that were changed on this computer stay." \
  "Le logiciel Copies de sécurité sera retiré. Backup.ini et les listes de fichiers modifiées sur ce poste sont conservés."
!insertmacro Text UninstallPlace "Folder:" "Dossier :"
!insertmacro Text FileInUse \
  "$1 is in use. Close Backup and its guides on every user's desktop, then retry." \
  "$1 est utilisé. Fermez Copies de sécurité et ses guides chez tous les utilisateurs du poste, puis réessayez."
!insertmacro Text NewerIsInstalled \
  "Backup $1 is installed, which is newer than ${VERSION}. Remove it first, or run this setup with /DOWNGRADE." \
  "Copies de sécurité $1 est installé, une version plus récente que ${VERSION}. Retirez-la d'abord, ou lancez cette \
installation avec /DOWNGRADE."

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

Var LogFile

; Adds a line to the log, where one was asked for.
!macro Log text
  ${If} $LogFile != ""
    FileOpen $9 "$LogFile" a
    FileSeek $9 0 END
    FileWriteUTF16LE /BOM $9 "${text}$\r$\n"
    FileClose $9
  ${EndIf}
!macroend

!macro Initialize
  ; The program looks for its settings and help documents here and nowhere else.
  StrCpy $INSTDIR "C:\Valcoreaux\Backup"
  SetRegView 64
  SetShellVarContext all
  ${GetParameters} $8
  ClearErrors
  ${GetOptions} $8 "/LOG=" $LogFile
  ClearErrors
  ${GetOptions} $8 "/LANG=" $9
  ${If} $9 == "fr"
    StrCpy $LANGUAGE ${LANG_FRENCH}
  ${ElseIf} $9 == "en"
    StrCpy $LANGUAGE ${LANG_ENGLISH}
  ${EndIf}
  ClearErrors
!macroend

Function .onInit
  !insertmacro Initialize
FunctionEnd

Function un.onInit
  !insertmacro Initialize
FunctionEnd

; What lies in the program's folder, LICENSES and the lists apart.
!macro ForEachFile do
  !insertmacro ${do} "Backup.exe"
  !insertmacro ${do} "BackupCheck.exe"
  !insertmacro ${do} "7Za.exe"
  !insertmacro ${do} "Copie de Sauvegarde.pdf"
  !insertmacro ${do} "Backup.pdf"
  !insertmacro ${do} "NOTICE.txt"
  !insertmacro ${do} "Backup.sample.ini"
!macroend

!macro NoteIfInUse name
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

!macro InstallFile name
  ; Not written over: a file that somebody prepared would keep its owner and his rights.
  Delete "$INSTDIR\${name}"
  File "${CONTENT}/${name}"
  !insertmacro Log "installed ${name}"
!macroend

!macro RemoveFile name
  Delete "$INSTDIR\${name}"
!macroend

!macro SharedFunctions prefix

  ; Ends the section before it has touched anything while one of the files is in use, in whichever session: nobody can
  ; write to it then.
  Function ${prefix}RefuseWhileInUse
    again:
    StrCpy $1 ""
    !insertmacro ForEachFile NoteIfInUse
    ${If} $1 != ""
      !insertmacro Log "$(FileInUse)"
      MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(FileInUse)" /SD IDCANCEL IDRETRY again
      Abort "$(FileInUse)"
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
!macro RemoveShortcut name
  Delete "$DESKTOP\${name}.lnk"
  Delete "$SMPROGRAMS\${name}.lnk"
!macroend

!macro RemoveShortcuts
  !insertmacro RemoveShortcut "${ENGLISH_NAME}"
  !insertmacro RemoveShortcut "${FRENCH_NAME}"
  !insertmacro RemoveShortcut "${ENGLISH_CHECK_NAME}"
  !insertmacro RemoveShortcut "${FRENCH_CHECK_NAME}"
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

; An older setup that is found in a drawer must not take a computer back.
Function RefuseOverNewer
  ClearErrors
  ${GetParameters} $8
  ${GetOptions} $8 "/DOWNGRADE" $9
  ${IfNot} ${Errors}
  ${OrIfNot} ${FileExists} "$INSTDIR\Backup.exe"
    Return
  ${EndIf}
  ClearErrors
  ${GetFileVersion} "$INSTDIR\Backup.exe" $1
  ${If} ${Errors}
    Return
  ${EndIf}
  ${VersionCompare} "$1" "${VERSION}.0" $0
  ${If} $0 = 1
    !insertmacro Log "$(NewerIsInstalled)"
    MessageBox MB_OK|MB_ICONEXCLAMATION "$(NewerIsInstalled)" /SD IDOK
    Abort "$(NewerIsInstalled)"
  ${EndIf}
FunctionEnd

; $0 = path of a folder, $1 = its owner and rights. What is inherited by what lies in it is brought up to date by the
; system. A system that refuses leaves the rights as they were, and the log says so.
Function Protect
  System::Call 'ntdll::RtlAdjustPrivilege(i ${SE_TAKE_OWNERSHIP_PRIVILEGE}, i 1, i 0, *i .r2)'
  System::Call 'ntdll::RtlAdjustPrivilege(i ${SE_RESTORE_PRIVILEGE}, i 1, i 0, *i .r2)'
  System::Call 'advapi32::ConvertStringSecurityDescriptorToSecurityDescriptorW(w r1, i ${SDDL_REVISION_1}, *p .r2, p 0) i .r3'
  ${If} $3 = 0
    !insertmacro Log "the rights of $0 cannot be read: $1"
    Return
  ${EndIf}
  System::Call 'advapi32::GetSecurityDescriptorOwner(p r2, *p .r4, *i .r5)'
  System::Call 'advapi32::GetSecurityDescriptorDacl(p r2, *i .r5, *p .r6, *i .r7)'
  System::Call 'advapi32::SetNamedSecurityInfoW(w r0, i ${SE_FILE_OBJECT}, i ${OWNER_AND_RIGHTS}, p r4, p 0, p r6, p 0) i .r3'
  System::Call 'kernel32::LocalFree(p r2)'
  !insertmacro Log "rights of $0: $3"
FunctionEnd

!macro ProtectFolder path rights
  StrCpy $0 "${path}"
  StrCpy $1 "${rights}"
  Call Protect
!macroend

Section
  !insertmacro Log "Backup ${VERSION}"
  Call RefuseOverNewer
  Call RefuseWhileInUse

  SetOutPath "$INSTDIR"
  !insertmacro ProtectFolder "$INSTDIR" "${PROGRAM_RIGHTS}"
  !insertmacro ForEachFile InstallFile
  File /r "${CONTENT}/LICENSES"
  !insertmacro ProtectFolder "$INSTDIR\LICENSES" "${CONTENT_RIGHTS}"

  SetOutPath "${LIST_FOLDER}"
  !insertmacro ProtectFolder "$INSTDIR\Fichierlst" "${CONTENT_RIGHTS}"
  !define ForListFile InstallListFile
  !include "${LISTS}"
  !undef ForListFile

  SetOutPath "$INSTDIR"
  !insertmacro RemoveShortcuts
  CreateShortcut "$DESKTOP\$(ProductName).lnk" "$INSTDIR\Backup.exe"
  CreateShortcut "$SMPROGRAMS\$(ProductName).lnk" "$INSTDIR\Backup.exe"
  CreateShortcut "$SMPROGRAMS\$(CheckName).lnk" "$INSTDIR\BackupCheck.exe"

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
  Call un.RefuseWhileInUse

  !insertmacro RemoveShortcuts

  !define ForListFile RemoveListFile
  !include "${LISTS}"
  !undef ForListFile
  RMDir "${LIST_FOLDER}"
  RMDir "$INSTDIR\Fichierlst"

  ; What an interrupted backup or restore left.
  !insertmacro RemoveFolder "zip"
  !insertmacro ForEachFile RemoveFile
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
