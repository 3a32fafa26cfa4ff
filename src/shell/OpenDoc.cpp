#include "shell/OpenDoc.h"

#include <utility>

#include "log/Treatments.h"
#include "platform/Messages.h"
#include "shell/BrowserObject.h"
#include "shell/DesktopOpener.h"
#include "shell/OpenNamedFile.h"

namespace tessarine
{

namespace
{

DocumentOpenerPort documentOpener;
BrowserPort browser;

std::int32_t Open(const String& target)
{
    return documentOpener ? documentOpener(target) : OpenWithDesktop(target);
}

bool Browse(const String& address)
{
    return browser ? browser(address) : ShowInBrowserObject(u"INTERNETEXPLORER.Application", address);
}

}  // namespace

std::int32_t OpenDoc(const String& File, String& ErrorText)
{
    return LogAndReturn({u"OpenDoc", u"Module modShell"}, [&] {
        const std::int32_t code = File.empty() ? ShellResult::FileNotFound : OpenNamedFile(File, Open);
        if (code < ShellResult::Opened)
            ErrorText = OpenDocErrorText(code);
        return code;
    });
}

void OpenOrTell(const String& File)
{
    String errorText;
    OpenDoc(File, errorText);
    if (!errorText.empty())
        ShowMessage(errorText, MessageIcon::Exclamation);
}

String OpenDocErrorText(std::int32_t code)
{
    switch (code) {
        case ShellResult::FileNotFound:
            return u"File not found";
        case ShellResult::PathNotFound:
            return u"Path not found";
        case ShellResult::AccessDenied:
            return u"Access denied";
        // The shell of Windows has more codes than the opener of Linux, which gives only those with a name.
        case 8:
            return u"Out of memory";
        case 11:
            return u"Invalid EXE file or error in EXE image";
        case 26:
            return u"A sharing violation occurred";
        case 27:
            return u"Incomplete or invalid file association";
        case 28:
            return u"DDE Time out";
        case 29:
            return u"DDE transaction failed";
        case 30:
            return u"DDE busy";
        case ShellResult::NoAssociation:
            return u"No association for file extension";
        case 32:
            return u"DLL not found";
        default:
            return u"Unknown error";
    }
}

void OpenAddress(const String& address)
{
    LogAndReturn({u"OpenAddress", u"Module modShell"}, [&] {
        if (!Browse(address))
            Open(address);
    });
}

DocumentOpenerPort SetDocumentOpener(DocumentOpenerPort port)
{
    return std::exchange(documentOpener, std::move(port));
}

BrowserPort SetBrowser(BrowserPort port)
{
    return std::exchange(browser, std::move(port));
}

}  // namespace tessarine
