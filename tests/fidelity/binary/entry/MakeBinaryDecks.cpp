// make-binary-decks FOLDER: writes binary presentations that a reader of another kind is to be compared over.
#include <filesystem>
#include <iostream>

#include "support/BinaryEncryption.h"
#include "support/BinarySamples.h"

int main(int argc, char** argv)
{
    using namespace tessarine::test::ppt;
    if (argc != 2) {
        std::cerr << "usage: make-binary-decks FOLDER\n";
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    std::filesystem::create_directories(folder);
    const BinaryDeck everything = DeckWithEverything();
    everything.WriteTo(folder / "everything.ppt");
    BinaryDeck(everything).WithoutCurrentUser().PersistStep(2).Junk("junk").WriteTo(folder / "gaps.ppt");
    BinaryDeck(everything).DualStorage().WriteTo(folder / "dual.ppt");
    BinaryDeck(everything).Encrypted(tessarine::String(SilentPassword)).WriteTo(folder / "protected of changes.ppt");
    BinaryDeck(everything).Encrypted(u"secret").WriteTo(folder / "encrypted.ppt");
    BinaryDeck()
        .Slide(Title(u"Fabrikam"), TextBox(u"new Fabrikam"))
        .After(BinaryDeck().Slide(Title(u"Fabrikam"), TextBox(u"old Fabrikam")))
        .WriteTo(folder / "two edits.ppt");
    BinaryDeck().WriteTo(folder / "empty.ppt");
    return 0;
}
