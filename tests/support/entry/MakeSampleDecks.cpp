// make-sample-decks FOLDER: writes the sample decks into a folder.
#include <exception>
#include <iostream>

#include "support/SampleDecks.h"

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: make-sample-decks FOLDER\n";
        return 2;
    }
    try {
        tessarine::test::WriteSampleDecks(argv[1]);
    } catch (const std::exception& error) {
        std::cerr << "make-sample-decks: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
