; The installer for Windows. makensis -DVERSION=1.2.8 -DFOLDER=<installed tree> -DICON=<veldor.ico> -DTARGET=<file>
SetCompressor zlib ; sounds hardly get smaller with anything slower
Target amd64-unicode
Name "Veldor"
OutFile "${TARGET}"
Icon "${ICON}"
UninstallIcon "${ICON}"
InstallDir "$PROGRAMFILES64\Veldor"
InstallDirRegKey HKLM "Software\Veldor" "Folder"
RequestExecutionLevel admin ; the folder is for every player of the machine
XPStyle on

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=1033 "ProductName" "Veldor"
VIAddVersionKey /LANG=1033 "FileDescription" "Installer of Veldor"
VIAddVersionKey /LANG=1033 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1033 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=1033 "LegalCopyright" "The Veldor developers"

LoadLanguageFile "${NSISDIR}\Contrib\Language files\English.nlf"
LoadLanguageFile "${NSISDIR}\Contrib\Language files\German.nlf"
LangString manual ${LANG_ENGLISH} "Manual"
LangString manual ${LANG_GERMAN} "Handbuch"
LangString uninstall ${LANG_ENGLISH} "Uninstall"
LangString uninstall ${LANG_GERMAN} "Deinstallieren"

Page directory
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Veldor"

Section
  SetRegView 64
  SetShellVarContext all
  ; What an older version had and this one lacks must go: the launcher takes what it finds.
  IfFileExists "$INSTDIR\uninstall.exe" 0 +2
    Call RemoveFiles
  SetOutPath "$INSTDIR"
  File /r "${FOLDER}\*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateDirectory "$SMPROGRAMS\Veldor"
  CreateShortCut "$SMPROGRAMS\Veldor\Veldor.lnk" "$INSTDIR\veldor.exe"
  CreateShortCut "$SMPROGRAMS\Veldor\$(manual).lnk" "$INSTDIR\docs\veldor_manual.pdf"
  CreateShortCut "$SMPROGRAMS\Veldor\$(uninstall).lnk" "$INSTDIR\uninstall.exe"
  WriteRegStr HKLM "Software\Veldor" "Folder" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "Veldor"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\veldor.exe"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

; Only what the installer brought: the chosen folder may hold other things. Players keep what is theirs.
!macro RemoveFiles
  Delete "$INSTDIR\*.exe"
  Delete "$INSTDIR\*.dll"
  RMDir /r "$INSTDIR\data"
  RMDir /r "$INSTDIR\docs"
  RMDir /r "$INSTDIR\fonts"
  RMDir /r "$INSTDIR\help"
  RMDir /r "$INSTDIR\images"
  RMDir /r "$INSTDIR\sounds"
  RMDir /r "$INSTDIR\tools"
!macroend

Function RemoveFiles
  !insertmacro RemoveFiles
FunctionEnd

Section "Uninstall"
  SetRegView 64
  SetShellVarContext all
  !insertmacro RemoveFiles
  RMDir "$INSTDIR"
  RMDir /r "$SMPROGRAMS\Veldor"
  DeleteRegKey HKLM "${UNINSTALL_KEY}"
  DeleteRegKey HKLM "Software\Veldor"
SectionEnd
