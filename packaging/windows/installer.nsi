; The installer for Windows: per machine, into Program Files.
;
; makensis -DVERSION=1.2 -DBINARIES=folder -DHELP=omra.chm -DLICENCES=file -DICON=file -DRESULT=setup.exe installer.nsi

Unicode true
Target amd64-unicode
ManifestDPIAware true
RequestExecutionLevel admin
SetCompressor /SOLID lzma
AllowSkipFiles off

!include FileFunc.nsh
!include MUI2.nsh
!include WordFunc.nsh

!define PROGRAM "Veldara"
!define COMPANY_KEY "Software\Korvane"
!define PROGRAM_KEY "Software\Korvane\omra"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PROGRAM}"
!define PROFILES "printer_edge_config"

Name "${PROGRAM}"
Caption "${PROGRAM} ${VERSION}"
OutFile "${RESULT}"
InstallDir "$PROGRAMFILES64\${PROGRAM}"
; Only administrators can write the uninstall key. The program's own key can be changed by every user.
InstallDirRegKey HKLM "${UNINSTALL_KEY}" "InstallLocation"
BrandingText " "
VIProductVersion ${VERSION}.0.0
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

; What stands under a name, without following a link: $4 its attributes, $5 how many names it has.
; Both are 0 where there is nothing.
!macro LookAt PATH
  StrCpy $4 0
  StrCpy $5 0
  ; Access: read attributes. Share: everything. Flags: open folders, and links themselves.
  System::Call 'kernel32::CreateFileW(w "${PATH}", i 0x80, i 7, p 0, i 3, i 0x02200000, p 0) p.r1'
  ${If} $1 != -1
    System::Call '*(&v52) p.r2'
    System::Call 'kernel32::GetFileInformationByHandle(p r1, p r2) i.r3'
    System::Call '*$2(i .r4, &v36, i .r5)'
    System::Free $2
    System::Call 'kernel32::CloseHandle(p r1)'
  ${EndIf}
!macroend

!macro Refuse REASON
  DetailPrint "${REASON}"
  MessageBox MB_OK|MB_ICONSTOP "${REASON}" /SD IDOK
  Abort "${REASON}"
!macroend

; The administrator's rights must not reach a foreign file: one that a link leads to, or one of several
; names.
!macro RefuseLink FILE
  !insertmacro LookAt "$INSTDIR\${FILE}"
  IntOp $4 $4 & 0x400 ; a reparse point
  ${If} $4 <> 0
  ${OrIf} $5 > 1
    !insertmacro Refuse "$INSTDIR\${FILE} is a link to another file. Remove it, then install again."
  ${EndIf}
!macroend

!macro OfferFor ENDING
  WriteRegStr HKLM "Software\Classes\Applications\veldara.exe\SupportedTypes" "${ENDING}" ""
  WriteRegStr HKLM "Software\Classes\${ENDING}\OpenWithList\veldara.exe" "" ""
!macroend

!macro StopOfferingFor ENDING
  DeleteRegKey HKLM "Software\Classes\${ENDING}\OpenWithList\veldara.exe"
!macroend

!macro ForEveryEnding DO
  !insertmacro ${DO} ".jpg"
  !insertmacro ${DO} ".jpeg"
  !insertmacro ${DO} ".jpe"
  !insertmacro ${DO} ".tif"
  !insertmacro ${DO} ".tiff"
  !insertmacro ${DO} ".bmp"
  !insertmacro ${DO} ".dib"
  !insertmacro ${DO} ".png"
  !insertmacro ${DO} ".webp"
  !insertmacro ${DO} ".heic"
  !insertmacro ${DO} ".heif"
  !insertmacro ${DO} ".avif"
!macroend

Section "Install"
  ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "DisplayVersion"
  ${VersionCompare} "$0" "${VERSION}" $1
  ${If} $1 = 1
    ${GetParameters} $2
    ClearErrors
    ${GetOptions} $2 "/DOWNGRADE" $3
    ${If} ${Errors}
    ${AndIf} ${Cmd} `MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "${PROGRAM} $0 is installed, which is newer. Replace it by ${VERSION}?" /SD IDNO IDNO`
      Abort "${PROGRAM} $0 is newer"
    ${EndIf}
  ${EndIf}
  !insertmacro LookAt "$INSTDIR"
  IntOp $4 $4 & 0x400
  ${If} $4 <> 0
    !insertmacro Refuse "$INSTDIR leads to another folder. Choose the folder itself."
  ${EndIf}
  !insertmacro RefuseLink veldara.exe
  !insertmacro RefuseLink veldara-tiles.exe
  !insertmacro RefuseLink libheif.dll
  !insertmacro RefuseLink libde265.dll
  !insertmacro RefuseLink omra.chm
  !insertmacro RefuseLink licences.txt
  !insertmacro RefuseLink uninstall.exe
  SetShellVarContext all
  SetRegView 64
  !insertmacro WaitForEndOf veldara.exe
  !insertmacro WaitForEndOf veldara-tiles.exe
  SetOutPath "$INSTDIR"
  File "${BINARIES}/veldara.exe"
  File "${BINARIES}/veldara-tiles.exe"
  File "${LIBRARIES}/libheif.dll"
  File "${LIBRARIES}/libde265.dll"
  File "${HELP}"
  File "/oname=licences.txt" "${LICENCES}"

  ; The program keeps its settings machine-wide. Ordinary users get the right to read and set the values
  ; of its own key (0x2001b), but to create no key below it, which could be a link to a foreign one; and
  ; to write its one file of profiles, and nothing else in the program's folder.
  WriteRegStr HKLM "${PROGRAM_KEY}" "app_dir" "$INSTDIR"
  !insertmacro SetAccess "MACHINE\${PROGRAM_KEY}" 4 "D:P(A;CI;KA;;;SY)(A;CI;KA;;;BA)(A;;0x2001b;;;BU)"
  ${IfNot} ${FileExists} "$INSTDIR\${PROFILES}"
    FileOpen $0 "$INSTDIR\${PROFILES}" w
    FileClose $0
  ${EndIf}
  ; A file of several names may be a foreign one; it keeps the rights that it has.
  !insertmacro LookAt "$INSTDIR\${PROFILES}"
  IntOp $4 $4 & 0x400
  ${If} $4 = 0
  ${AndIf} $5 = 1
    !insertmacro SetAccess "$INSTDIR\${PROFILES}" 1 "D:P(A;;FA;;;SY)(A;;FA;;;BA)(A;;FRFW;;;BU)"
  ${EndIf}

  CreateShortcut "$SMPROGRAMS\${PROGRAM}.lnk" "$INSTDIR\veldara.exe"

  ; In "Open with" of every kind of photo that can be opened; none of them becomes the program's own.
  WriteRegStr HKLM "Software\Classes\Applications\veldara.exe" "FriendlyAppName" "${PROGRAM}"
  WriteRegStr HKLM "Software\Classes\Applications\veldara.exe\shell\open\command" "" '"$INSTDIR\veldara.exe" "%1"'
  !insertmacro ForEveryEnding OfferFor

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

!macro DeleteValues
  DeleteRegValue HKLM "${PROGRAM_KEY}" "app_dir"
  DeleteRegValue HKLM "${PROGRAM_KEY}" "last_folder"
  DeleteRegValue HKLM "${PROGRAM_KEY}" "prefs_numTiles"
  DeleteRegValue HKLM "${PROGRAM_KEY}" "prefs_printSize"
  DeleteRegValue HKLM "${PROGRAM_KEY}" "prefs_edgeAdjust"
  DeleteRegValue HKLM "${PROGRAM_KEY}" "prefs_showTiles"
  DeleteRegValue HKLM "${PROGRAM_KEY}" "prefs_heightEqualsWidth"
  DeleteRegValue HKLM "${PROGRAM_KEY}" "prefs_units"
  DeleteRegValue HKLM "${PROGRAM_KEY}" "paperRegLine"
  DeleteRegValue HKLM "${PROGRAM_KEY}" "cmbMarginLocked"
  DeleteRegValue HKLM "${PROGRAM_KEY}" "window_place"
  DeleteRegValue HKLM "${PROGRAM_KEY}" "dim_outside"
  DeleteRegValue HKLM "${PROGRAM_KEY}" "recent_photos"
!macroend

Section "Uninstall"
  SetShellVarContext all
  SetRegView 64
  !insertmacro WaitForEndOf veldara.exe
  !insertmacro WaitForEndOf veldara-tiles.exe
  ; A silent run keeps them, unless the command line says /SETTINGS: nobody was asked.
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/SETTINGS" $1
  ${If} ${Errors}
  ${AndIf} ${Cmd} `MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "Remove the settings and the edge calibration profiles too?" /SD IDNO IDNO`
    Goto keep
  ${EndIf}
    Delete "$INSTDIR\${PROFILES}"
    ; By name, and never with what is below: a key there may be a link that leads anywhere.
    !insertmacro DeleteValues
    DeleteRegKey /ifempty HKLM "${PROGRAM_KEY}"
    DeleteRegKey /ifempty HKLM "${COMPANY_KEY}"
  keep:
  DeleteRegValue HKLM "${PROGRAM_KEY}" "app_dir"
  DeleteRegKey HKLM "${UNINSTALL_KEY}"
  !insertmacro ForEveryEnding StopOfferingFor
  DeleteRegKey HKLM "Software\Classes\Applications\veldara.exe"
  Delete "$SMPROGRAMS\${PROGRAM}.lnk"
  Delete "$INSTDIR\veldara.exe"
  Delete "$INSTDIR\veldara-tiles.exe"
  Delete "$INSTDIR\libheif.dll"
  Delete "$INSTDIR\libde265.dll"
  Delete "$INSTDIR\omra.chm"
  Delete "$INSTDIR\licences.txt"
  Delete "$INSTDIR\uninstall.exe"
  ; Only when it is empty: a user's own files are not ours to remove.
  RMDir "$INSTDIR"
SectionEnd
