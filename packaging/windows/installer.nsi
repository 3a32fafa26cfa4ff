; The installer for Windows. tools/windows/package compiles it, and gives it what it packs and the names:
;   VERSION, NUMBERS (four numbers), COMPANY, PRODUCT, COPYRIGHT, ICON, PICTURE (of the last page), OUTPUT, SIZE (in KiB), and
;   FILES: a folder with install.nsh and uninstall.nsh, which put and remove each file of the package.
;
; On its command line, besides NSIS's /S (no windows) and /D=FOLDER (at the end):
;   /AllUsers   for everybody on this computer; an administrator's right is asked for, with /S it must be there
;   /Path       put the folder with tessarine-batch on the PATH
; Exit status: 0 done, 1 cancelled, 32 a program to be replaced or removed is running, 740 no administrator's right,
; 1150 Windows is too old, 1603 the earlier version can't be removed.

Target amd64-unicode
Unicode true
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true
ManifestLongPathAware true
ManifestSupportedOS {8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}

!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include WinMessages.nsh
!include WinVer.nsh
!include nsDialogs.nsh

Name "${PRODUCT}"
OutFile "${OUTPUT}"
BrandingText "${PRODUCT} ${VERSION}"
ShowInstDetails nevershow
ShowUninstDetails nevershow

VIProductVersion ${NUMBERS}
VIAddVersionKey /LANG=1033 ProductName "${PRODUCT}"
VIAddVersionKey /LANG=1033 ProductVersion "${VERSION}"
VIAddVersionKey /LANG=1033 FileVersion "${VERSION}"
VIAddVersionKey /LANG=1033 FileDescription "${PRODUCT} Setup"
VIAddVersionKey /LANG=1033 CompanyName "${COMPANY}"
VIAddVersionKey /LANG=1033 LegalCopyright "${COPYRIGHT}"

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PRODUCT}"
!define CLASSES "Software\Classes"
!define FILE_CLASS "tsqfile"

Var AllUsers      ; 1 or 0
Var AllUsersFixed ; 1 when the command line has settled it
Var GivenFolder   ; by /D
Var EarlierFolder ; where an earlier version is installed; empty when there is none
Var Upgrade       ; 1 in an uninstaller that makes room for another version
Var OnlyMe
Var Everybody

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_ABORTWARNING
!define MULTIUSER_INSTALLMODEPAGE ; NSIS's own texts for who it is installed for
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION StartProgram
!define MUI_FINISHPAGE_NOREBOOTSUPPORT

Page custom ShowUsers LeaveUsers
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES

; The languages of the program; the user's own is taken, and the first where there is none.
!insertmacro MUI_LANGUAGE English
!insertmacro MUI_LANGUAGE German
!insertmacro MUI_LANGUAGE French
!insertmacro MUI_LANGUAGE Spanish
!insertmacro MUI_LANGUAGE Polish
!insertmacro MUI_LANGUAGE Russian
!insertmacro MUI_LANGUAGE TradChinese
!include "${__FILEDIR__}/texts.nsh"
!include "${__FILEDIR__}/path.nsh"

; Stop STATUS TEXT: says why, and ends; without windows the exit status alone tells it.
!macro Stop status text
    SetErrorLevel ${status}
    MessageBox MB_OK|MB_ICONSTOP "${text}" /SD IDOK
    Quit
!macroend
!define Stop "!insertmacro Stop"

; What installer and uninstaller have in common; "un" is "un." in the latter.
!macro CommonFunctions un
    ; $0 is 1 for somebody who may install for everybody.
    Function ${un}IsAdministrator
        UserInfo::GetAccountType
        Pop $0
        ${If} $0 == "Admin"
            StrCpy $0 1
        ${Else}
            StrCpy $0 0
        ${EndIf}
    FunctionEnd

    ; Registry, start menu and folders are those of the user or of everybody from here on.
    Function ${un}HeedUsers
        ${If} $AllUsers == 1
            SetShellVarContext all
        ${Else}
            SetShellVarContext current
        ${EndIf}
    FunctionEnd

    ; Waits until no program in $0 runs, which Windows would not let be replaced.
    Function ${un}WaitForPrograms
        !insertmacro WaitForProgram "$0\tessarine.exe"
        !insertmacro WaitForProgram "$0\tessarine-batch.exe"
    FunctionEnd

    ; The desktop is told of file types and variables.
    Function ${un}TellDesktop
        System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
        SendMessage ${HWND_BROADCAST} ${WM_SETTINGCHANGE} 0 "STR:Environment" /TIMEOUT=5000
    FunctionEnd
!macroend

; A running program's file can't be opened for writing.
!macro WaitForProgram program
    ${DoWhile} ${FileExists} "${program}"
        ClearErrors
        FileOpen $1 "${program}" a
        ${IfNot} ${Errors}
            FileClose $1
            ${ExitDo}
        ${EndIf}
        ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(Running)$\r$\n$\r$\n${program}" /SD IDCANCEL IDCANCEL`
            SetErrorLevel 32
            Quit
        ${EndIf}
    ${Loop}
!macroend

!insertmacro CommonFunctions ""
!insertmacro CommonFunctions "un."
!insertmacro PathFunctions ""
!insertmacro PathFunctions "un."

Section "${PRODUCT}" SectionProgram
    SectionIn RO

    StrCpy $0 $INSTDIR
    Call WaitForPrograms
    ${If} $EarlierFolder != ""
        StrCpy $0 $EarlierFolder
        Call WaitForPrograms
        Call RemoveEarlier
    ${EndIf}

    SetOverwrite on
    !include "${FILES}/install.nsh"
    SetOutPath $INSTDIR
    WriteUninstaller "$INSTDIR\uninstall.exe"

    CreateShortCut "$SMPROGRAMS\${PRODUCT}.lnk" "$INSTDIR\tessarine.exe"

    ; As the program registers it at each start: without quotes, and for the icon with the number of its resource.
    WriteRegStr SHCTX "${CLASSES}\.tsq" "" "${FILE_CLASS}"
    WriteRegStr SHCTX "${CLASSES}\${FILE_CLASS}" "" "Tessarine-PowerPoint Setting File"
    WriteRegStr SHCTX "${CLASSES}\${FILE_CLASS}\shell\open\command" "" "$INSTDIR\tessarine.exe %1"
    WriteRegStr SHCTX "${CLASSES}\${FILE_CLASS}\DefaultIcon" "" "$INSTDIR\tessarine.exe, 30001"

    WriteRegStr SHCTX "${UNINSTALL}" "DisplayName" "${PRODUCT}"
    WriteRegStr SHCTX "${UNINSTALL}" "DisplayVersion" "${VERSION}"
    WriteRegStr SHCTX "${UNINSTALL}" "Publisher" "${COMPANY}"
    WriteRegStr SHCTX "${UNINSTALL}" "DisplayIcon" "$INSTDIR\tessarine.exe"
    WriteRegStr SHCTX "${UNINSTALL}" "InstallLocation" "$INSTDIR"
    WriteRegStr SHCTX "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr SHCTX "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD SHCTX "${UNINSTALL}" "EstimatedSize" ${SIZE}
    WriteRegDWORD SHCTX "${UNINSTALL}" "NoModify" 1
    WriteRegDWORD SHCTX "${UNINSTALL}" "NoRepair" 1
SectionEnd

Section /o "$(OnPath)" SectionPath
SectionEnd

; After the choice: also when it was taken back, or the folder is another one than the earlier version's.
Section -
    ReadRegStr $R2 SHCTX "${UNINSTALL}" "PathEntry"
    ${If} $R2 != ""
        ${IfNot} ${SectionIsSelected} ${SectionPath}
        ${OrIf} $R2 != $INSTDIR
            Call RemoveFromPath
            DeleteRegValue SHCTX "${UNINSTALL}" "PathEntry"
        ${EndIf}
    ${EndIf}
    ${If} ${SectionIsSelected} ${SectionPath}
        StrCpy $R2 $INSTDIR
        Call AddToPath
        ${If} $R9 == "added"
            WriteRegStr SHCTX "${UNINSTALL}" "PathEntry" $INSTDIR
        ${ElseIf} $R9 == "failed"
            MessageBox MB_OK|MB_ICONEXCLAMATION "$(PathFailed)" /SD IDOK
        ${EndIf}
    ${EndIf}
    Call TellDesktop
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
    !insertmacro MUI_DESCRIPTION_TEXT ${SectionProgram} "$(AboutProgram)"
    !insertmacro MUI_DESCRIPTION_TEXT ${SectionPath} "$(AboutPath)"
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function .onInit
    SetRegView 64
    ${IfNot} ${AtLeastWin10}
        ${Stop} 1150 "$(TooOld)"
    ${EndIf}

    StrCpy $GivenFolder $INSTDIR
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/Path" $1
    ${IfNot} ${Errors}
        !insertmacro SelectSection ${SectionPath}
    ${EndIf}

    StrCpy $AllUsers 0
    ClearErrors
    ${GetOptions} $0 "/AllUsers" $1
    ${IfNot} ${Errors}
        StrCpy $AllUsers 1
        StrCpy $AllUsersFixed 1
        Call IsAdministrator
        ${If} $0 == 0
        ${AndIf} ${Silent}
            SetErrorLevel 740
            Quit
        ${ElseIf} $0 == 0
            Call Elevate
            SetErrorLevel 740
            Quit
        ${EndIf}
    ${EndIf}
    Call ChooseFolder
FunctionEnd

; Starts the installer again with an administrator's right, and ends this one. Comes back when the user declines.
Function Elevate
    ${GetParameters} $1
    ${If} $AllUsersFixed != 1
        StrCpy $1 "/AllUsers $1"
    ${EndIf}
    ClearErrors
    ExecShell "runas" "$EXEPATH" "$1"
    ${IfNot} ${Errors}
        SetErrorLevel 0
        Quit
    ${EndIf}
FunctionEnd

; For the users that are chosen: where the earlier version is, and else the usual place.
Function ChooseFolder
    Call HeedUsers
    ReadRegStr $EarlierFolder SHCTX "${UNINSTALL}" "InstallLocation"
    ${If} $GivenFolder != ""
        StrCpy $INSTDIR $GivenFolder
    ${ElseIf} $EarlierFolder != ""
        StrCpy $INSTDIR $EarlierFolder
    ${ElseIf} $AllUsers == 1
        StrCpy $INSTDIR "$PROGRAMFILES64\${PRODUCT}"
    ${Else}
        StrCpy $INSTDIR "$LOCALAPPDATA\Programs\${PRODUCT}"
    ${EndIf}

    ReadRegStr $0 SHCTX "${UNINSTALL}" "PathEntry"
    ${If} $0 != ""
        !insertmacro SelectSection ${SectionPath}
    ${EndIf}
FunctionEnd

; The earlier version's own uninstaller knows its files. What it registered stays, and is written anew.
Function RemoveEarlier
    ${IfNot} ${FileExists} "$EarlierFolder\uninstall.exe"
        Return
    ${EndIf}
    ClearErrors
    ExecWait '"$EarlierFolder\uninstall.exe" /S /Upgrade _?=$EarlierFolder' $0
    ${If} ${Errors}
    ${OrIf} $0 != 0
        ${Stop} 1603 "$(EarlierStays)"
    ${EndIf}
    Delete "$EarlierFolder\uninstall.exe" ; it ran from there, and could not do it
    RMDir "$EarlierFolder"
FunctionEnd

Function ShowUsers
    ${If} $AllUsersFixed == 1
        Abort ; the page
    ${EndIf}
    !insertmacro MUI_HEADER_TEXT "$(MULTIUSER_TEXT_INSTALLMODE_TITLE)" "$(MULTIUSER_TEXT_INSTALLMODE_SUBTITLE)"
    nsDialogs::Create 1018
    Pop $0
    ${NSD_CreateLabel} 0 0 100% 32u "$(MULTIUSER_INNERTEXT_INSTALLMODE_TOP)"
    Pop $0
    ${NSD_CreateRadioButton} 8u 40u -8u 12u "$(MULTIUSER_INNERTEXT_INSTALLMODE_CURRENTUSER)"
    Pop $OnlyMe
    ${NSD_CreateRadioButton} 8u 56u -8u 12u "$(MULTIUSER_INNERTEXT_INSTALLMODE_ALLUSERS)"
    Pop $Everybody
    ${If} $AllUsers == 1
        ${NSD_Check} $Everybody
    ${Else}
        ${NSD_Check} $OnlyMe
    ${EndIf}
    Call IsAdministrator
    ${If} $0 == 0
        SendMessage $Everybody ${BCM_SETSHIELD} 0 1 ; Windows' sign for a question about rights
    ${EndIf}
    nsDialogs::Show
FunctionEnd

Function LeaveUsers
    ${NSD_GetState} $Everybody $0
    ${If} $0 == ${BST_CHECKED}
        Call IsAdministrator
        ${If} $0 == 0
            Call Elevate
            Abort ; declined: the page stays
        ${EndIf}
        StrCpy $AllUsers 1
    ${Else}
        StrCpy $AllUsers 0
    ${EndIf}
    Call ChooseFolder
FunctionEnd

; Through the Explorer: an installer with an administrator's right must not hand it on.
Function StartProgram
    Exec '"$WINDIR\explorer.exe" "$INSTDIR\tessarine.exe"'
FunctionEnd

; Removes what was installed. What users made (projects, settings, logs) is theirs and stays.
Section Uninstall
    StrCpy $0 $INSTDIR
    Call un.WaitForPrograms

    !include "${FILES}/uninstall.nsh"
    ${If} $Upgrade == 1
        Return
    ${EndIf}
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
    RMDir "$LOCALAPPDATA\Programs" ; goes when nothing else is there

    Delete "$SMPROGRAMS\${PRODUCT}.lnk"

    ; Unless a program in another folder has taken the file type over.
    ReadRegStr $0 SHCTX "${CLASSES}\${FILE_CLASS}\shell\open\command" ""
    ${If} $0 == "$INSTDIR\tessarine.exe %1"
        DeleteRegKey SHCTX "${CLASSES}\${FILE_CLASS}\shell\open\command"
        DeleteRegKey /ifempty SHCTX "${CLASSES}\${FILE_CLASS}\shell\open"
        DeleteRegKey /ifempty SHCTX "${CLASSES}\${FILE_CLASS}\shell"
        DeleteRegKey SHCTX "${CLASSES}\${FILE_CLASS}\DefaultIcon"
        DeleteRegValue SHCTX "${CLASSES}\${FILE_CLASS}" ""
        DeleteRegKey /ifempty SHCTX "${CLASSES}\${FILE_CLASS}"
        ReadRegStr $0 SHCTX "${CLASSES}\.tsq" ""
        ${If} $0 == "${FILE_CLASS}"
            DeleteRegValue SHCTX "${CLASSES}\.tsq" ""
            DeleteRegKey /ifempty SHCTX "${CLASSES}\.tsq"
        ${EndIf}
    ${EndIf}

    ReadRegStr $R2 SHCTX "${UNINSTALL}" "PathEntry"
    ${If} $R2 != ""
        Call un.RemoveFromPath
    ${EndIf}
    DeleteRegKey SHCTX "${UNINSTALL}"
    Call un.TellDesktop
SectionEnd

Function un.onInit
    SetRegView 64
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/Upgrade" $1
    ${IfNot} ${Errors}
        StrCpy $Upgrade 1
    ${EndIf}

    ReadRegStr $1 HKLM "${UNINSTALL}" "InstallLocation"
    ${If} $1 == $INSTDIR
        StrCpy $AllUsers 1
        Call un.IsAdministrator
        ${If} $0 == 0
        ${AndIfNot} ${Silent}
            ExecShell "runas" "$INSTDIR\uninstall.exe"
            Quit
        ${ElseIf} $0 == 0
            SetErrorLevel 740
            Quit
        ${EndIf}
    ${EndIf}
    Call un.HeedUsers
FunctionEnd
