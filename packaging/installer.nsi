; The installer. ./package gives VERSION, STAGE (the folder of what is installed), OUTPUT and FILES, the
; macros that install and remove every single file of that folder: what else lies where somebody
; installed it is never touched.
;
;   KelosTessera-VERSION-setup.exe [/S] [/AllUsers | /CurrentUser] [/D=FOLDER]
;
; /S asks nothing; /D, when it is given, is the last argument and bears no quotes. The exit code is 0
; when everything is done, 1 when the user cancelled, 2 when something failed.
Target amd64-unicode
Unicode true
SetCompressor /SOLID lzma
AllowSkipFiles off
ManifestDPIAware true
ManifestLongPathAware true
Name "KelosTessera ${VERSION}"
OutFile "${OUTPUT}"
BrandingText " "

!define PRODUCT_KEY "Software\KelosTessera"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\KelosTessera"

!define MULTIUSER_MUI
!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_USE_PROGRAMFILES64
!define MULTIUSER_INSTALLMODE_INSTDIR KelosTessera
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${PRODUCT_KEY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME InstallFolder
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${PRODUCT_KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME InstallFolder
!define MULTIUSER_NOUNINSTALL
!include MultiUser.nsh
!include MUI2.nsh
!include FileFunc.nsh
!include Sections.nsh
!include "${FILES}"

!define MUI_ABORTWARNING
!define MUI_COMPONENTSPAGE_SMALLDESC
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_LICENSE "${STAGE}/LICENSE"
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey ProductName "KelosTessera"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileDescription "KelosTessera, installer"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey CompanyName "The KelosTessera developers"
VIAddVersionKey LegalCopyright "The KelosTessera developers"

!ifdef SIGN
  !uninstfinalize '${SIGN} "%1"' = 0
  !finalize '${SIGN} "%1"' = 0
!endif

; The registering program of a bitness; empty where the system has none for 32-bit programs.
Var Regsvr32
; What regsvr32 is told beside the file: "/n /i:user" registers for the current user only.
Var Scope

!macro FindRegsvr32 FOLDER
  StrCpy $Regsvr32 "$SYSDIR\regsvr32.exe"
  !if ${FOLDER} == x86
    StrCpy $Regsvr32 "$WINDIR\SysWOW64\regsvr32.exe"
    ${IfNot} ${FileExists} $Regsvr32
      StrCpy $Regsvr32 ""
    ${EndIf}
  !endif
!macroend

; Registers both DLLs of a folder, or none: the first one is taken out when the second one fails.
!macro Register FOLDER
  !insertmacro FindRegsvr32 ${FOLDER}
  ${If} $Regsvr32 == ""
    DetailPrint "This system runs no programs of the bitness ${FOLDER}: its DLLs are not registered."
  ${Else}
    !insertmacro RegisterLibrary ${FOLDER} Tessera.dll ""
    !insertmacro RegisterLibrary ${FOLDER} KelosHostKit.dll Tessera.dll
  ${EndIf}
!macroend

!macro RegisterLibrary FOLDER LIBRARY REGISTERED_BEFORE
  DetailPrint "Registering ${FOLDER}\${LIBRARY}"
  ExecWait '"$Regsvr32" /s $Scope "$INSTDIR\${FOLDER}\${LIBRARY}"' $0
  ${If} $0 <> 0
    !if "${REGISTERED_BEFORE}" != ""
      ExecWait '"$Regsvr32" /s /u $Scope "$INSTDIR\${FOLDER}\${REGISTERED_BEFORE}"'
    !endif
    StrCpy $1 "$INSTDIR\${FOLDER}\${LIBRARY} could not be registered (regsvr32: $0). The files are \
        there, and can be used without registration. Install again to repeat it, or remove the program."
    DetailPrint $1
    SetErrorLevel 2
    MessageBox MB_OK|MB_ICONSTOP $1 /SD IDOK
    Abort
  ${EndIf}
!macroend

!macro Unregister FOLDER
  !insertmacro FindRegsvr32 ${FOLDER}
  !insertmacro UnregisterLibrary ${FOLDER} KelosHostKit.dll
  !insertmacro UnregisterLibrary ${FOLDER} Tessera.dll
!macroend

!macro UnregisterLibrary FOLDER LIBRARY
  ${If} $Regsvr32 != ""
  ${AndIf} ${FileExists} "$INSTDIR\${FOLDER}\${LIBRARY}"
    DetailPrint "Unregistering ${FOLDER}\${LIBRARY}"
    ExecWait '"$Regsvr32" /s /u $Scope "$INSTDIR\${FOLDER}\${LIBRARY}"'
  ${EndIf}
!macroend

Function .onInit
  StrCpy $R9 $INSTDIR  ; what /D gave
  UserInfo::GetAccountType
  Pop $0
  ${GetParameters} $1
  ClearErrors
  ${GetOptions} $1 "/AllUsers" $2
  ${IfNot} ${Errors}
  ${AndIf} $0 != "Admin"
    MessageBox MB_OK|MB_ICONSTOP "Installing for all users takes the rights of an administrator. Start \
        the installer as one, or with /CurrentUser." /SD IDOK
    SetErrorLevel 2
    Quit
  ${EndIf}
  !insertmacro MULTIUSER_INIT
  ${If} $R9 != ""
    StrCpy $INSTDIR $R9
  ${EndIf}
FunctionEnd

Section "-"
  ${If} $MultiUser.InstallMode == CurrentUser
    StrCpy $Scope "/n /i:user"
  ${EndIf}
  ; Another version takes its own files away.
  ReadRegStr $0 SHCTX "${PRODUCT_KEY}" InstallFolder
  ReadRegStr $1 SHCTX "${PRODUCT_KEY}" Version
  ${If} $0 != ""
  ${AndIf} $1 != "${VERSION}"
  ${AndIf} ${FileExists} "$0\uninstall.exe"
    DetailPrint "Removing version $1"
    ExecWait '"$0\uninstall.exe" /S _?=$0'
    ; Waited for, it works where it lies and cannot remove itself.
    Delete "$0\uninstall.exe"
    RMDir $0
  ${EndIf}
  !insertmacro InstallRoot
SectionEnd

Section "64-bit component, host kit and tessera.exe" Section64
  SectionIn RO
  !insertmacro InstallX64
SectionEnd

Section "The same for 32-bit programs" Section32
  !insertmacro InstallX86
SectionEnd

Section "Headers and interface definitions" SectionInclude
  !insertmacro InstallInclude
SectionEnd

Section "Samples" SectionSamples
  !insertmacro InstallSamples
SectionEnd

Section "Documents" SectionDocuments
  !insertmacro InstallDocuments
SectionEnd

; What the system shows of the program. The copy of the installer is what it starts to repair it.
Section "-"
  SetOutPath $INSTDIR
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ${If} $EXEPATH != "$INSTDIR\KelosTessera-setup.exe"
    CopyFiles /SILENT $EXEPATH "$INSTDIR\KelosTessera-setup.exe"
  ${EndIf}
  WriteRegStr SHCTX "${PRODUCT_KEY}" InstallFolder $INSTDIR
  WriteRegStr SHCTX "${PRODUCT_KEY}" Version "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayName "KelosTessera"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayVersion "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\uninstall.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" Publisher "The KelosTessera developers"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" InstallLocation $INSTDIR
  WriteRegStr SHCTX "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\uninstall.exe"'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" ModifyPath '"$INSTDIR\KelosTessera-setup.exe" /$MultiUser.InstallMode'
  ${GetSize} $INSTDIR "/S=0K" $0 $1 $2
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" EstimatedSize $0
SectionEnd

; Last, so that an installation whose registration fails can be repaired and removed.
Section "-"
  !insertmacro Register x64
  ${If} ${SectionIsSelected} ${Section32}
    !insertmacro Register x86
  ${EndIf}
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${Section64} "Tessera.dll and KelosHostKit.dll, registered, and the console program."
  !insertmacro MUI_DESCRIPTION_TEXT ${Section32} "For automation clients of 32 bits, registered beside the others."
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionInclude} "For programs in C++ and for implementing a host."
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionSamples} "A sample project, and clients in seven languages."
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionDocuments} "The pages of the documentation."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; For whom it was installed is told by where its folder is written down.
Function un.onInit
  SetShellVarContext current
  StrCpy $Scope "/n /i:user"
  ReadRegStr $0 HKCU "${PRODUCT_KEY}" InstallFolder
  ${If} $0 != $INSTDIR
    SetShellVarContext all
    StrCpy $Scope ""
    UserInfo::GetAccountType
    Pop $0
    ${If} $0 != "Admin"
      MessageBox MB_OK|MB_ICONSTOP "KelosTessera was installed for all users: removing it takes the \
          rights of an administrator." /SD IDOK
      SetErrorLevel 2
      Quit
    ${EndIf}
  ${EndIf}
FunctionEnd

Section "Uninstall"
  !insertmacro Unregister x86
  !insertmacro Unregister x64
  !insertmacro RemoveFiles
  Delete "$INSTDIR\KelosTessera-setup.exe"
  Delete "$INSTDIR\uninstall.exe"
  SetOutPath $TEMP
  RMDir $INSTDIR
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
  DeleteRegKey SHCTX "${PRODUCT_KEY}"
SectionEnd
