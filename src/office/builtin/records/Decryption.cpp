#include "office/builtin/records/Decryption.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <utility>

#include "office/builtin/records/PersistObjects.h"
#include "office/builtin/records/Record.h"
#include "office/builtin/records/RecordTypes.h"

namespace tessarine::builtin
{

namespace
{

/// The password that PowerPoint takes for files that need one to be changed alone.
constexpr std::u16string_view knownPassword = u"/01Hannes Ruescher/01";

/// What CryptSession10Container tells: versions, flags, a header with its size, and a verifier
/// ([MS-OFFCRYPTO] 2.3.5.1).
struct Session {
    std::size_t keyBytes = 0;
    std::string salt;
    std::string encryptedVerifier;
    std::string encryptedHash;
};

std::optional<Session> SessionIn(std::string_view content)
{
    constexpr std::size_t fixedPart = 12;
    constexpr std::size_t algorithmAt = 8;
    constexpr std::size_t keyBitsAt = 16;
    constexpr std::size_t saltBytes = 16;
    constexpr std::size_t hashBytes = 20;
    constexpr std::uint32_t rc4 = 0x6801;
    if (content.size() < fixedPart)
        return {};
    const std::size_t headerSize = U32At(content, 8);
    if (headerSize < keyBitsAt + 4 || headerSize > content.size() - fixedPart)
        return {};
    const std::string_view header = content.substr(fixedPart, headerSize);
    const std::string_view verifier = content.substr(fixedPart + headerSize);
    if (U32At(header, algorithmAt) != rc4 || verifier.size() < 4 + saltBytes + 16 + 4 + hashBytes)
        return {};
    constexpr std::uint32_t usualBits = 40;
    const std::uint32_t bits = U32At(header, keyBitsAt) == 0 ? usualBits : U32At(header, keyBitsAt);
    if (bits < usualBits || bits > 128)
        return {};
    return Session{bits / 8, std::string(verifier.substr(4, saltBytes)), std::string(verifier.substr(20, 16)),
                   std::string(verifier.substr(40, hashBytes))};
}

/// The key of a block: of each persist object, by its number.
class Keys
{
public:
    Keys(const Session& session, std::u16string_view password)
        : keyBytes_(session.keyBytes), hash_(Sha1(session.salt + BytesOfUtf16(password)))
    {
    }

    Rc4 For(std::uint32_t block) const
    {
        std::string number;
        AppendU32(number, block);
        std::string key = Sha1(hash_ + number).substr(0, keyBytes_);
        constexpr std::size_t shortKey = 5;
        constexpr std::size_t paddedKey = 16;
        if (keyBytes_ == shortKey)
            key.resize(paddedKey, '\0');
        return Rc4(key);
    }

private:
    std::size_t keyBytes_;
    std::string hash_;
};

bool Fits(const Session& session, const Keys& keys)
{
    const std::string plain = keys.For(0).Apply(session.encryptedVerifier + session.encryptedHash);
    return Sha1(plain.substr(0, 16)) == plain.substr(16);
}

}  // namespace

std::optional<std::string> DecryptedByPowerPoint(std::string_view stream, const PersistObjects& objects)
{
    const auto offset = objects.Find(objects.EncryptionSession());
    if (!offset)
        return {};
    const Record container = RecordAt(stream, *offset, stream.size());
    const auto session =
        container.type == record::CryptSession10Container ? SessionIn(container.Content(stream)) : std::nullopt;
    if (!session)
        return {};
    const Keys keys(*session, knownPassword);
    if (!Fits(*session, keys))
        return {};
    std::string plain(stream);
    std::size_t decrypted = 0;
    for (const auto& [id, begin] : objects.All()) {
        if (id == objects.EncryptionSession() || begin > stream.size() || stream.size() - begin < Record::headerSize)
            continue;
        Rc4 cipher = keys.For(id);
        const std::string header = cipher.Apply(stream.substr(begin, Record::headerSize));
        const std::size_t size = std::min<std::size_t>(U32At(header, 4), stream.size() - begin - Record::headerSize);
        // Objects that overlap would be decrypted over and over; they are refused when the stream is read.
        decrypted += size;
        if (decrypted > stream.size())
            return {};
        plain.replace(begin, header.size(), header);
        plain.replace(begin + Record::headerSize, size, cipher.Apply(stream.substr(begin + Record::headerSize, size)));
    }
    return objects.WithoutEncryption(std::move(plain));
}

std::string Sha1(std::string_view bytes)
{
    std::array<std::uint32_t, 5> hash{0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0};
    constexpr std::size_t block = 64;
    std::string padded(bytes);
    padded += '\x80';
    padded.resize((padded.size() + 8 + block - 1) / block * block - 8, '\0');
    const std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
    for (int shift = 56; shift >= 0; shift -= 8)
        padded += static_cast<char>(bits >> shift & 0xFF);
    for (std::size_t begin = 0; begin < padded.size(); begin += block) {
        std::array<std::uint32_t, 80> words{};
        for (std::size_t i = 0; i < 64; ++i)
            words[i / 4] = words[i / 4] << 8 | static_cast<unsigned char>(padded[begin + i]);
        for (std::size_t i = 16; i < words.size(); ++i)
            words[i] = std::rotl(words[i - 3] ^ words[i - 8] ^ words[i - 14] ^ words[i - 16], 1);
        auto [a, b, c, d, e] = hash;
        for (std::size_t i = 0; i < words.size(); ++i) {
            std::uint32_t mixed = 0;
            if (i < 20)
                mixed = ((b & c) | (~b & d)) + 0x5A827999;
            else if (i < 40)
                mixed = (b ^ c ^ d) + 0x6ED9EBA1;
            else if (i < 60)
                mixed = ((b & c) | (b & d) | (c & d)) + 0x8F1BBCDC;
            else
                mixed = (b ^ c ^ d) + 0xCA62C1D6;
            const std::uint32_t next = std::rotl(a, 5) + mixed + e + words[i];
            e = d;
            d = c;
            c = std::rotl(b, 30);
            b = a;
            a = next;
        }
        hash[0] += a;
        hash[1] += b;
        hash[2] += c;
        hash[3] += d;
        hash[4] += e;
    }
    std::string result;
    for (const std::uint32_t word : hash)
        for (int shift = 24; shift >= 0; shift -= 8)
            result += static_cast<char>(word >> shift & 0xFF);
    return result;
}

Rc4::Rc4(std::string_view key)
{
    for (std::size_t i = 0; i < std::size(state_); ++i)
        state_[i] = static_cast<unsigned char>(i);
    std::size_t j = 0;
    for (std::size_t i = 0; i < std::size(state_); ++i) {
        j = (j + state_[i] + static_cast<unsigned char>(key[i % key.size()])) % std::size(state_);
        std::swap(state_[i], state_[j]);
    }
}

std::string Rc4::Apply(std::string_view bytes)
{
    std::string result(bytes);
    for (char& byte : result) {
        j_ = static_cast<unsigned char>(j_ + state_[++i_]);
        std::swap(state_[i_], state_[j_]);
        byte = static_cast<char>(byte ^ state_[static_cast<unsigned char>(state_[i_] + state_[j_])]);
    }
    return result;
}

}  // namespace tessarine::builtin
