; The installer for Windows: per machine, into Program Files.
;
; makensis -DBINARIES=folder -DHELP=omra.chm -DLICENCES=file -DICON=file -DRESULT=setup.exe installer.nsi

Unicode true
Target amd64-unicode
ManifestDPIAware true
RequestExecutionLevel admin
SetCompressor /SOLID lzma
AllowSkipFiles off

!include MUI2.nsh

!define PROGRAM "Veldara"
!define VERSION "1.20"
!define COMPANY_KEY "Software\Korvane"
!define PROGRAM_KEY "Software\Korvane\omra"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PROGRAM}"
!define PROFILES "printer_edge_config"

Name "${PROGRAM}"
Caption "${PROGRAM} ${VERSION}"
OutFile "${RESULT}"
InstallDir "$PROGRAMFILES64\${PROGRAM}"
InstallDirRegKey HKLM "${PROGRAM_KEY}" "app_dir"
BrandingText " "
VIProductVersion 1.20.0.0
VIAddVersionKey ProductName "${PROGRAM}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileDescription "Installs ${PROGRAM}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey CompanyName "Korvane"
VIAddVersionKey LegalCopyright ""

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_NOAUTOCLOSE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; Gives an object of the system (KIND 1: a file, 4: a registry key) the access list of DESCRIPTION. When
; the system refuses, the program is installed and works, but not for everybody: that is said, and the
; installer ends with status 3.
!macro SetAccess NAME KIND DESCRIPTION
  StrCpy $0 "the access list is wrong"
  System::Call 'advapi32::ConvertStringSecurityDescriptorToSecurityDescriptorW(w "${DESCRIPTION}", i 1, *p .r1, p 0) i.r2'
  ${If} $2 <> 0
    System::Call 'advapi32::GetSecurityDescriptorDacl(p r1, *i .r2, *p .r3, *i .r4) i.r5'
    ${If} $5 <> 0
      ; 0x80000004: the access list, without what the object would inherit.
      System::Call 'advapi32::SetNamedSecurityInfoW(w "${NAME}", i ${KIND}, i 0x80000004, p 0, p 0, p r3, p 0) i.r0'
    ${EndIf}
    System::Call 'kernel32::LocalFree(p r1)'
  ${EndIf}
  DetailPrint "Access of ${NAME}: $0"
  ${If} $0 != "0"
    SetErrorLevel 3
    MessageBox MB_OK|MB_ICONEXCLAMATION \
      "Users without administrator rights cannot be given access to ${NAME} ($0). For them, settings or calibration profiles will not be kept." \
      /SD IDOK
  ${EndIf}
!macroend

; A program that runs can be neither replaced nor removed: nothing is begun before it has ended. Without
; anybody to ask, this ends with status 2.
!macro WaitForEndOf FILE
  ${Do}
    ${IfNot} ${FileExists} "$INSTDIR\${FILE}"
      ${ExitDo}
    ${EndIf}
    ClearErrors
    FileOpen $0 "$INSTDIR\${FILE}" a
    ${IfNot} ${Errors}
      FileClose $0
      ${ExitDo}
    ${EndIf}
    ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "${FILE} is in use. Close it, then try again." /SD IDCANCEL IDCANCEL`
      Abort "${FILE} is in use"
    ${EndIf}
  ${Loop}
!macroend

Section "Install"
  SetShellVarContext all
  SetRegView 64
  !insertmacro WaitForEndOf veldara.exe
  !insertmacro WaitForEndOf veldara-tiles.exe
  SetOutPath "$INSTDIR"
  File "${BINARIES}/veldara.exe"
  File "${BINARIES}/veldara-tiles.exe"
  File "${HELP}"
  File "/oname=licences.txt" "${LICENCES}"

  ; The program keeps its settings machine-wide. Ordinary users get the right to change its own key
  ; and its one file of profiles, and nothing else in the program's folder.
  WriteRegStr HKLM "${PROGRAM_KEY}" "app_dir" "$INSTDIR"
  !insertmacro SetAccess "MACHINE\${PROGRAM_KEY}" 4 "D:P(A;CI;KA;;;SY)(A;CI;KA;;;BA)(A;CI;KRKW;;;BU)"
  ${IfNot} ${FileExists} "$INSTDIR\${PROFILES}"
    FileOpen $0 "$INSTDIR\${PROFILES}" w
    FileClose $0
  ${EndIf}
  !insertmacro SetAccess "$INSTDIR\${PROFILES}" 1 "D:P(A;;FA;;;SY)(A;;FA;;;BA)(A;;FRFW;;;BU)"

  CreateShortcut "$SMPROGRAMS\${PROGRAM}.lnk" "$INSTDIR\veldara.exe"

  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "${PROGRAM}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\veldara.exe"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "Korvane"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
  SectionGetSize 0 $0
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "EstimatedSize" $0
SectionEnd

Section "Uninstall"
  SetShellVarContext all
  SetRegView 64
  !insertmacro WaitForEndOf veldara.exe
  !insertmacro WaitForEndOf veldara-tiles.exe
  ; A silent run keeps them: nobody was asked.
  MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 \
    "Remove the settings and the edge calibration profiles too?" /SD IDNO IDNO keep
    Delete "$INSTDIR\${PROFILES}"
    DeleteRegKey HKLM "${PROGRAM_KEY}"
    DeleteRegKey /ifempty HKLM "${COMPANY_KEY}"
  keep:
  DeleteRegValue HKLM "${PROGRAM_KEY}" "app_dir"
  DeleteRegKey HKLM "${UNINSTALL_KEY}"
  Delete "$SMPROGRAMS\${PROGRAM}.lnk"
  Delete "$INSTDIR\veldara.exe"
  Delete "$INSTDIR\veldara-tiles.exe"
  Delete "$INSTDIR\omra.chm"
  Delete "$INSTDIR\licences.txt"
  Delete "$INSTDIR\uninstall.exe"
  ; Only when it is empty: a user's own files are not ours to remove.
  RMDir "$INSTDIR"
SectionEnd
