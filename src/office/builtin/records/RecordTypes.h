#pragma once

#include <cstdint>

/// Types of the records of a binary presentation that the engine knows ([MS-PPT] 2.13.24, [MS-ODRAW] 2.2), by their
/// names there.
namespace tessarine::builtin::record
{

// Presentation.
inline constexpr std::uint16_t Document = 0x03E8;
inline constexpr std::uint16_t DocumentAtom = 0x03E9;
inline constexpr std::uint16_t Slide = 0x03EE;  ///< A slide or a title master.
inline constexpr std::uint16_t SlideAtom = 0x03EF;
inline constexpr std::uint16_t Notes = 0x03F0;  ///< A notes page or the notes master.
inline constexpr std::uint16_t SlidePersistAtom = 0x03F3;
inline constexpr std::uint16_t MainMaster = 0x03F8;
inline constexpr std::uint16_t ExternalObjectList = 0x0409;
inline constexpr std::uint16_t ExternalObjectListAtom = 0x040A;
inline constexpr std::uint16_t Drawing = 0x040C;
inline constexpr std::uint16_t RoundTripTheme12Atom = 0x040E;
inline constexpr std::uint16_t RoundTripOriginalMainMasterId12Atom = 0x041C;
inline constexpr std::uint16_t RoundTripCompositeMasterId12Atom = 0x041D;
inline constexpr std::uint16_t RoundTripHFPlaceholder12Atom = 0x0420;
inline constexpr std::uint16_t ExternalObjectRefAtom = 0x0BC1;
inline constexpr std::uint16_t PlaceholderAtom = 0x0BC3;
inline constexpr std::uint16_t Handout = 0x0FC9;
inline constexpr std::uint16_t HeadersFooters = 0x0FD9;
inline constexpr std::uint16_t HeadersFootersAtom = 0x0FDA;
inline constexpr std::uint16_t SlideListWithText = 0x0FF0;
inline constexpr std::uint16_t CString = 0x0FBA;

// Text.
inline constexpr std::uint16_t OutlineTextRefAtom = 0x0F9E;
inline constexpr std::uint16_t TextHeaderAtom = 0x0F9F;
inline constexpr std::uint16_t TextCharsAtom = 0x0FA0;
inline constexpr std::uint16_t StyleTextPropAtom = 0x0FA1;
inline constexpr std::uint16_t MasterTextPropAtom = 0x0FA2;
inline constexpr std::uint16_t TextBookmarkAtom = 0x0FA7;
inline constexpr std::uint16_t TextBytesAtom = 0x0FA8;
inline constexpr std::uint16_t TextSpecialInfoAtom = 0x0FAA;
inline constexpr std::uint16_t SlideNumberMetaCharAtom = 0x0FD8;
inline constexpr std::uint16_t TextInteractiveInfoAtom = 0x0FDF;
inline constexpr std::uint16_t InteractiveInfo = 0x0FF2;
inline constexpr std::uint16_t InteractiveInfoAtom = 0x0FF3;
inline constexpr std::uint16_t DateTimeMetaCharAtom = 0x0FF7;
inline constexpr std::uint16_t GenericDateMetaCharAtom = 0x0FF8;
inline constexpr std::uint16_t HeaderMetaCharAtom = 0x0FF9;
inline constexpr std::uint16_t FooterMetaCharAtom = 0x0FFA;
inline constexpr std::uint16_t RtfDateTimeMetaCharAtom = 0x1015;

// External objects.
inline constexpr std::uint16_t ExternalOleObjectAtom = 0x0FC3;
inline constexpr std::uint16_t ExternalOleEmbed = 0x0FCC;
inline constexpr std::uint16_t ExternalOleLink = 0x0FCE;
inline constexpr std::uint16_t ExternalHyperlinkAtom = 0x0FD3;
inline constexpr std::uint16_t ExternalHyperlink = 0x0FD7;
inline constexpr std::uint16_t ExternalOleControl = 0x0FEE;
inline constexpr std::uint16_t ExternalAviMovie = 0x1006;
inline constexpr std::uint16_t ExternalMciMovie = 0x1007;
inline constexpr std::uint16_t ExternalMidiAudio = 0x100D;
inline constexpr std::uint16_t ExternalCdAudio = 0x100E;
inline constexpr std::uint16_t ExternalWavAudioEmbedded = 0x100F;
inline constexpr std::uint16_t ExternalWavAudioLink = 0x1010;
inline constexpr std::uint16_t ExternalOleObjectStg = 0x1011;

// Tags of later versions.
inline constexpr std::uint16_t ProgTags = 0x1388;
inline constexpr std::uint16_t ProgBinaryTag = 0x138A;
inline constexpr std::uint16_t BinaryTagData = 0x138B;
inline constexpr std::uint16_t VisualShapeAtom = 0x2AFB;

// The ends of saves.
inline constexpr std::uint16_t UserEditAtom = 0x0FF5;
inline constexpr std::uint16_t CurrentUserAtom = 0x0FF6;
inline constexpr std::uint16_t PersistDirectoryAtom = 0x1772;
inline constexpr std::uint16_t OldPersistDirectoryAtom = 0x1771;  ///< Of the first versions; the same content.
inline constexpr std::uint16_t CryptSession10Container = 0x2F14;

// Drawings.
inline constexpr std::uint16_t OfficeArtDg = 0xF002;
inline constexpr std::uint16_t OfficeArtSpgr = 0xF003;  ///< A group: its own shape first.
inline constexpr std::uint16_t OfficeArtSp = 0xF004;
inline constexpr std::uint16_t OfficeArtFSP = 0xF00A;
inline constexpr std::uint16_t OfficeArtFOPT = 0xF00B;
inline constexpr std::uint16_t OfficeArtClientTextbox = 0xF00D;
inline constexpr std::uint16_t OfficeArtClientData = 0xF011;
inline constexpr std::uint16_t OfficeArtSecondaryFOPT = 0xF121;
inline constexpr std::uint16_t OfficeArtTertiaryFOPT = 0xF122;

}  // namespace tessarine::builtin::record
