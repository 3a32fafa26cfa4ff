#include <gmock/gmock.h>

#include "BinaryOnDisk.h"
#include "office/builtin/records/Decryption.h"
#include "support/BinaryEncryption.h"
#include "support/BinaryRecords.h"

/// Binary presentations with a password: those that need it to be opened, and those that need it to be changed alone.
namespace tessarine::test::ppt
{
namespace
{

using builtin::Rc4;
using builtin::Sha1;
using testing::Contains;

TEST(Sha1, GivesTheDigestsThatArePublished)
{
    // RFC 3174, 7.3.
    EXPECT_EQ(Sha1("abc"),
              std::string("\xA9\x99\x3E\x36\x47\x06\x81\x6A\xBA\x3E\x25\x71\x78\x50\xC2\x6C\x9C\xD0\xD8\x9D", 20));
    EXPECT_EQ(Sha1("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              std::string("\x84\x98\x3E\x44\x1C\x3B\xD2\x6E\xBA\xAE\x4A\xA1\xF9\x51\x29\xE5\xE5\x46\x70\xF1", 20));
    EXPECT_EQ(Sha1(std::string(1'000'000, 'a')),
              std::string("\x34\xAA\x97\x3C\xD4\xC4\xDA\xA4\xF6\x1E\xEB\x2B\xDB\xAD\x27\x31\x65\x34\x01\x6F", 20));
}

TEST(Rc4, GivesTheBytesThatArePublished)
{
    // RFC 6229, 2: the first bytes for a key of 40 bits, in two steps.
    Rc4 cipher("\x01\x02\x03\x04\x05");
    const std::string zeros(8, '\0');
    const std::string first = cipher.Apply(zeros);
    EXPECT_EQ(first + cipher.Apply(zeros), "\xB2\x39\x63\x05\xF0\x3D\xC0\x27\xCC\xC3\x52\x4A\x0A\x11\x18\xA8");
}

BinaryDeck EncryptedWith(const String& password)
{
    return BinaryDeck()
        .Slide(Title(u"a cat"), TextBox(u"another cat"))
        .Summary(2, TextValue("a cat"))
        .Encrypted(password);
}

const String silent(SilentPassword);

TEST(BinaryProtection, ByAPasswordToOpenFailsAsOne)
{
    const BinaryOnDisk deck(EncryptedWith(u"secret"));

    EXPECT_THAT(RaisedBy([&] { deck.Open(); }), FailsWith(FailureNumber::Unspecified, "needs a password to be opened"));
}

TEST(BinaryProtection, ByAPasswordToChangeAloneIsOpenedAndNotChanged)
{
    for (const std::size_t bits : {40U, 128U}) {
        const BinaryOnDisk deck(EncryptedWith(silent).KeyBits(bits));
        const std::string before = deck.Bytes();

        EXPECT_THAT(deck.Texts(), Contains("slide 1 shape 1 (14): a cat"));
        EXPECT_EQ(deck.Find(Location::ShapesAndTextboxes, u"cat"), 1);
        EXPECT_THAT(RaisedBy([&] {
                        deck.Change([](powerpoint::Presentation& presentation) {
                            ReplaceInShape(presentation, 1, 1, u"cat", u"dog");
                        });
                    }),
                    FailsWith(FailureNumber::PermissionDenied, "password to be changed"));
        EXPECT_EQ(deck.Bytes(), before);
    }
}

TEST(BinaryProtection, OfAnUnknownKindFailsAsAPassword)
{
    BinaryDeck otherCipher = EncryptedWith(silent);
    // The algorithm stands in the header, behind versions, flags and the header's size.
    otherCipher.ChangeObject(otherCipher.SessionId(),
                             [](std::string& session) { PutLong(session, 8 + 12 + 8, 0x660E); });
    EXPECT_THAT(RaisedBy([&] { BinaryOnDisk(otherCipher).Open(); }),
                FailsWith(FailureNumber::Unspecified, "needs a password to be opened"));
    BinaryDeck cut = EncryptedWith(silent);
    cut.ChangeObject(cut.SessionId(), [](std::string& session) { session = Container(12052, "short"); });
    EXPECT_THAT(RaisedBy([&] { BinaryOnDisk(cut).Open(); }),
                FailsWith(FailureNumber::Unspecified, "needs a password to be opened"));
}

TEST(BinaryProtection, OfAFinalPresentationIsNoneAndTold)
{
    const BinaryOnDisk deck(BinaryDeck().Slide(Title(u"a cat")).Custom("_MarkAsFinal", TruthValue(true)));

    EXPECT_EQ(deck.Replace(Location::Slides, u"cat", u"dog"), 1);

    EXPECT_THAT(deck.Texts(), Contains("slide 1 shape 1 (14): a dog"));
}

}  // namespace
}  // namespace tessarine::test::ppt
