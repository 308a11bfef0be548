; Layomat-setup.exe: installs the add-in (Layomats.dll), its launcher
; (layomat.exe) and the loader for LISP-capable CAD programs (layomat.lsp),
; registers the add-in's class and adds a Start-menu entry and an entry in
; the list of installed programs.
;
; For the current user by default (no administrator rights: the programs go
; to %LOCALAPPDATA%\Programs\Layomat, the class to HKCU\Software\Classes);
; /ALLUSERS installs for the machine (Program Files, HKLM). /ENGLISH adds the
; English interface (an empty Lang.ini beside the DLL). /S runs silently.
;
; The uninstaller removes everything installed and keeps the user's settings
; (%APPDATA%\Layomat) unless /REMOVESETTINGS is given or the box on its page
; is ticked.
;
; makensis -DVERSION=x.y.z -DBIN_DIR=<folder with the three files>
;          -DOUT_FILE=<Layomat-setup.exe> layomat.nsi

Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true

!include "MUI2.nsh"
!include "LogicLib.nsh"
!include "FileFunc.nsh"
!include "nsDialogs.nsh"

!ifndef VERSION
  !error "VERSION is not defined"
!endif
!ifndef BIN_DIR
  !error "BIN_DIR is not defined"
!endif
!ifndef OUT_FILE
  !define OUT_FILE "Layomat-setup.exe"
!endif

!define PRODUCT "Layomat"
!define PUBLISHER "Layomat"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Layomat"
; Where the loader finds the launcher (value "Launcher") and the uninstaller
; its scope.
!define PRODUCT_KEY "Software\Layomat"

Name "${PRODUCT}"
OutFile "${OUT_FILE}"
InstallDir ""
BrandingText "${PRODUCT} ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "${PRODUCT}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "${PRODUCT} setup"
VIAddVersionKey "CompanyName" "${PUBLISHER}"
VIAddVersionKey "LegalCopyright" "${PUBLISHER}"

Var AllUsers      ; 1: for the machine
Var RemoveSettings
Var SettingsBox

!define MUI_ABORTWARNING
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\layomat.exe"
!insertmacro MUI_PAGE_FINISH

!insertmacro MUI_UNPAGE_CONFIRM
UninstPage custom un.SettingsPage un.SettingsPageLeave
!insertmacro MUI_UNPAGE_INSTFILES

!insertmacro MUI_LANGUAGE "English"

; Sets the shell folders and the registry root SHCTX (HKLM or HKCU) for
; the chosen scope.
!macro UseScope
  ${If} $AllUsers == 1
    SetShellVarContext all
  ${Else}
    SetShellVarContext current
  ${EndIf}
!macroend



Section "Layomat" SecMain
  SectionIn RO
  !insertmacro UseScope
  SetOutPath "$INSTDIR"
  ; An add-in still loaded from an earlier installation keeps its DLL open.
  ClearErrors
  File "${BIN_DIR}\Layomats.dll"
  File "${BIN_DIR}\layomat.exe"
  File "${BIN_DIR}\layomat.lsp"
  ${If} ${Errors}
    Abort "Could not write to $INSTDIR: close the CAD program and Layomat, then run the setup again."
  ${EndIf}
  WriteUninstaller "$INSTDIR\uninstall.exe"

  ${If} $AllUsers == 1
    ExecWait '"$SYSDIR\regsvr32.exe" /s "$INSTDIR\Layomats.dll"' $0
  ${Else}
    ExecWait '"$SYSDIR\regsvr32.exe" /s /n /i:user "$INSTDIR\Layomats.dll"' $0
  ${EndIf}
  ${If} $0 != 0
    Abort "Registering Layomats.dll failed (regsvr32 returned $0)."
  ${EndIf}

  CreateShortcut "$SMPROGRAMS\${PRODUCT}.lnk" "$INSTDIR\layomat.exe"

  WriteRegStr SHCTX "${PRODUCT_KEY}" "InstallDir" "$INSTDIR"
  WriteRegStr SHCTX "${PRODUCT_KEY}" "Launcher" "$INSTDIR\layomat.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "${PUBLISHER}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\layomat.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $1 $2 $3
  IntFmt $1 "0x%08X" $1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" "$1"
SectionEnd

; The add-in is Russian unless Lang.ini lies beside the DLL; an empty one
; gives the built-in English texts.
Section /o "English interface" SecEnglish
  SetOutPath "$INSTDIR"
  FileOpen $0 "$INSTDIR\Lang.ini" w
  FileClose $0
SectionEnd

; Without /ENGLISH a reinstallation returns to Russian.
Section "-language" SecLanguage
  ${IfNot} ${SectionIsSelected} ${SecEnglish}
    Delete "$INSTDIR\Lang.ini"
  ${EndIf}
SectionEnd

Function .onInit
  StrCpy $AllUsers 0
  ${GetParameters} $R0
  ClearErrors
  ${GetOptions} $R0 "/ALLUSERS" $R1
  ${IfNot} ${Errors}
    StrCpy $AllUsers 1
    ; A machine installation writes Program Files and HKLM.
    UserInfo::GetAccountType
    Pop $R1
    ${If} $R1 != "Admin"
      MessageBox MB_ICONSTOP "Installing for all users needs administrator rights: start the setup as administrator, or without /ALLUSERS for yourself only." /SD IDOK
      SetErrorLevel 740
      Quit
    ${EndIf}
  ${EndIf}
  ClearErrors
  ${GetOptions} $R0 "/ENGLISH" $R1
  ${IfNot} ${Errors}
    SectionSetFlags ${SecEnglish} ${SF_SELECTED}
  ${EndIf}
  ; /D= sets the folder before this function runs.
  ${If} $INSTDIR == ""
    ${If} $AllUsers == 1
      StrCpy $INSTDIR "$PROGRAMFILES64\${PRODUCT}"
    ${Else}
      StrCpy $INSTDIR "$LOCALAPPDATA\Programs\${PRODUCT}"
    ${EndIf}
  ${EndIf}
FunctionEnd

LangString DESC_SecMain ${LANG_ENGLISH} "The add-in, its launcher and the loader for CAD programs with LISP."
LangString DESC_SecEnglish ${LANG_ENGLISH} "Show the add-in in English (otherwise Russian)."
!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${SecMain} $(DESC_SecMain)
  !insertmacro MUI_DESCRIPTION_TEXT ${SecEnglish} $(DESC_SecEnglish)
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function un.onInit
  ; The scope is the one whose product key names this folder.
  StrCpy $AllUsers 0
  ReadRegStr $R0 HKLM "${PRODUCT_KEY}" "InstallDir"
  ${If} $R0 == $INSTDIR
    StrCpy $AllUsers 1
  ${EndIf}
  StrCpy $RemoveSettings 0
  ${GetParameters} $R0
  ClearErrors
  ${GetOptions} $R0 "/REMOVESETTINGS" $R1
  ${IfNot} ${Errors}
    StrCpy $RemoveSettings 1
  ${EndIf}
FunctionEnd

Function un.SettingsPage
  !insertmacro MUI_HEADER_TEXT "Settings" "Your Layomat settings can stay for a later installation."
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateCheckbox} 0 0 100% 24u "Also remove my settings (LayomatNas.ini in $APPDATA\Layomat)"
  Pop $SettingsBox
  ${If} $RemoveSettings == 1
    ${NSD_Check} $SettingsBox
  ${EndIf}
  nsDialogs::Show
FunctionEnd

Function un.SettingsPageLeave
  ${NSD_GetState} $SettingsBox $0
  ${If} $0 == ${BST_CHECKED}
    StrCpy $RemoveSettings 1
  ${Else}
    StrCpy $RemoveSettings 0
  ${EndIf}
FunctionEnd

Section "Uninstall"
  !insertmacro UseScope
  ${If} $AllUsers == 1
    ExecWait '"$SYSDIR\regsvr32.exe" /s /u "$INSTDIR\Layomats.dll"' $0
  ${Else}
    ExecWait '"$SYSDIR\regsvr32.exe" /s /u /n /i:user "$INSTDIR\Layomats.dll"' $0
  ${EndIf}
  Delete "$SMPROGRAMS\${PRODUCT}.lnk"
  Delete "$INSTDIR\Layomats.dll"
  Delete "$INSTDIR\layomat.exe"
  Delete "$INSTDIR\layomat.lsp"
  Delete "$INSTDIR\Lang.ini"
  Delete "$INSTDIR\uninstall.exe"
  ; Only an empty folder goes: files the user put there stay.
  RMDir "$INSTDIR"

  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
  DeleteRegKey SHCTX "${PRODUCT_KEY}"

  ; The settings belong to the user who uninstalls, whatever the scope.
  ${If} $RemoveSettings == 1
    SetShellVarContext current
    Delete "$APPDATA\Layomat\LayomatNas.ini"
    Delete "$APPDATA\Layomat\FormViewport.ini"
    RMDir "$APPDATA\Layomat"
  ${EndIf}
SectionEnd
