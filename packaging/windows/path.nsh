; The PATH of the user, or of everybody. It is often longer than NSIS's own texts may be, which would cut it off, so it
; never gets into one of them: Windows reads, changes and writes it in memory.
!define ENVIRONMENT_OF_ALL "SYSTEM\CurrentControlSet\Control\Session Manager\Environment"
!define ENVIRONMENT_OF_USER "Environment"
!define LONGEST_PATH 8190 ; in units: what a command line of Windows can pass on

; Variables in here: $R2 the folder; $R3 the registry's key; $R4 a result; $R5 kind of the value; $R6 its size in bytes;
; $R7 the PATH; $R8 the PATH between two semicolons; $R9 what came of it; $0, $1 for a moment.
!macro PathFunctions un
    ; Reads the PATH. $R9 is empty, or "failed".
    Function ${un}OpenPath
        StrCpy $R7 0
        StrCpy $R8 0
        StrCpy $R9 "failed"
        ; The roots as Windows has them, negative in 64 bits; the right to read and write, in the registry of 64 bits.
        ${If} $AllUsers == 1
            System::Call 'advapi32::RegOpenKeyExW(p -2147483646, w "${ENVIRONMENT_OF_ALL}", i 0, i 0x2011F, *p .R3) i .R4'
        ${Else}
            System::Call 'advapi32::RegOpenKeyExW(p -2147483647, w "${ENVIRONMENT_OF_USER}", i 0, i 0x2011F, *p .R3) i .R4'
        ${EndIf}
        ${If} $R4 != 0
            StrCpy $R3 0
            Return
        ${EndIf}

        System::Call 'advapi32::RegQueryValueExW(p R3, w "Path", p 0, *i .R5, p 0, *i .R6) i .R4'
        ${If} $R4 == 2 ; there is none yet
            StrCpy $R5 2 ; a text with variables
            StrCpy $R6 0
        ${ElseIf} $R4 != 0
            Return
        ${EndIf}
        ${If} $R5 != 1
        ${AndIf} $R5 != 2
            Return ; no text: not ours to change
        ${EndIf}

        ; Room for a folder, semicolons and an end more; what is allocated is zero.
        StrLen $0 $R2
        IntOp $0 $0 + 8
        IntOp $0 $0 * 2
        IntOp $0 $0 + $R6
        System::Alloc $0
        Pop $R7
        System::Alloc $0
        Pop $R8
        ${If} $R7 == 0
        ${OrIf} $R8 == 0
            Return
        ${EndIf}
        ${If} $R6 > 0
            System::Call 'advapi32::RegQueryValueExW(p R3, w "Path", p 0, p 0, p R7, *i R6) i .R4'
            ${If} $R4 != 0
                Return ; another program has made it longer meanwhile
            ${EndIf}
        ${EndIf}
        System::Call 'kernel32::lstrcpyW(p R8, w ";")'
        System::Call 'kernel32::lstrcatW(p R8, p R7)'
        System::Call 'kernel32::lstrcatW(p R8, w ";")'
        StrCpy $R9 ""
    FunctionEnd

    Function ${un}ClosePath
        ${If} $R7 != 0
            System::Free $R7
        ${EndIf}
        ${If} $R8 != 0
            System::Free $R8
        ${EndIf}
        ${If} $R3 != 0
            System::Call 'advapi32::RegCloseKey(p R3)'
        ${EndIf}
    FunctionEnd

    ; Writes the text at $0.
    Function ${un}WritePath
        System::Call 'kernel32::lstrlenW(p r0) i .r1'
        IntOp $1 $1 + 1
        IntOp $1 $1 * 2
        System::Call 'advapi32::RegSetValueExW(p R3, w "Path", i 0, i R5, p r0, i r1) i .R4'
        ${If} $R4 != 0
            StrCpy $R9 "failed"
        ${EndIf}
    FunctionEnd

    ; Takes the folder $R2 out of the PATH. $R9: empty, or "failed".
    Function ${un}RemoveFromPath
        Call ${un}OpenPath
        ${If} $R9 == ""
            System::Call 'shlwapi::StrStrIW(p R8, w ";$R2;") p .r0'
            ${If} $0 != 0
                ; What follows the folder, with its semicolon, takes the place of the folder and the semicolon before.
                StrLen $1 $R2
                IntOp $1 $1 + 1
                IntOp $1 $1 * 2
                IntPtrOp $1 $0 + $1
                System::Call 'kernel32::lstrlenW(p r1) i .R4'
                IntOp $R4 $R4 + 1
                IntOp $R4 $R4 * 2
                System::Call 'ntdll::memmove(p r0, p r1, p R4)'

                ; Without the semicolons that were put around it.
                System::Call 'kernel32::lstrlenW(p R8) i .R4'
                ${If} $R4 <= 1
                    System::Call 'advapi32::RegDeleteValueW(p R3, w "Path")'
                ${Else}
                    IntOp $R4 $R4 - 1
                    IntOp $R4 $R4 * 2
                    IntPtrOp $1 $R8 + $R4
                    System::Call '*$1(&i2 0)'
                    IntPtrOp $0 $R8 + 2
                    Call ${un}WritePath
                ${EndIf}
            ${EndIf}
        ${EndIf}
        Call ${un}ClosePath
    FunctionEnd
!macroend

; Puts the folder $R2 at the end of the PATH. $R9: "added", "failed", or empty when it was there.
Function AddToPath
    Call OpenPath
    ${If} $R9 == ""
        System::Call 'shlwapi::StrStrIW(p R8, w ";$R2;") p .r0'
        ${If} $0 == 0
            System::Call 'kernel32::lstrlenW(p R7) i .R4'
            StrLen $0 $R2
            IntOp $0 $0 + $R4
            ${If} $0 >= ${LONGEST_PATH}
                StrCpy $R9 "failed"
            ${Else}
                StrCpy $R9 "added"
                ${If} $R4 > 0
                    IntOp $R4 $R4 - 1
                    IntOp $R4 $R4 * 2
                    IntPtrOp $1 $R7 + $R4
                    System::Call '*$1(&i2 .r0)'
                    ${If} $0 != 59 ; no semicolon at the end
                        System::Call 'kernel32::lstrcatW(p R7, w ";")'
                    ${EndIf}
                ${EndIf}
                System::Call 'kernel32::lstrcatW(p R7, w R2)'
                StrCpy $0 $R7
                Call WritePath
            ${EndIf}
        ${EndIf}
    ${EndIf}
    Call ClosePath
FunctionEnd
