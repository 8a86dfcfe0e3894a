#pragma once
#include <string>
#include <string_view>

// The small text helpers that every subsystem uses. Texts are Windows-1252
// strings; a byte string holds one char per byte.
namespace tavlo::MSBModule {

// Name encoding of everything that is stored as a name: control characters
// and characters above "~" become blanks, then the double quote, apostrophe
// and bar become characters 151, 152 and 150. Same length in and out.
std::string SafeDBString(std::string_view text);
// The reverse for display: 151, 152 and 150 back to quote, apostrophe, bar.
std::string DisplayDBString(std::string_view text);

std::string DoubleAmpersands(std::string_view text);

// Value of one hexadecimal digit in either case, -1 for any other character.
int HexDigit(char c);

// "0"/"1" text, padded left to whole bytes, to upper-case hexadecimal.
std::string BinaryToHex(std::string_view bits);
// Hexadecimal text to "0"/"1" text; empty if any character isn't hexadecimal.
std::string HexToBinary(std::string_view hex);

// Each character becomes two characters: its high nibble and its low nibble.
std::string TextToNibbles(std::string_view text);
// "F0 00 1B " : two upper-case digits and a blank for every byte.
std::string BytesToHexText(std::string_view bytes);

std::string GreaterToTilde(std::string_view text);
std::string TildeToGreater(std::string_view text);

// 60 gives "C4", 0 gives "C-1".
std::string NoteName(int note);
// The reverse; -1 when the text is no note name.
int NoteNumber(std::string_view text);

std::string SafeFileName(std::string_view text);

// The characters a name sent to the device may hold, blank first.
inline constexpr std::string_view kNameCharacters =
    " ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+-=()*&^%$#@!>`{}[]|':;?/,._";
std::string FilterNameCharacters(std::string_view text);

// Sum of the byte values modulo 128, subtracted from 128; 128 becomes 0.
int RolandChecksum(std::string_view bytes);
// The Roland-style checksum a received sysex message should carry, or -1.
int SysexChecksum(std::string_view message);
bool HasGoodChecksum(std::string_view message);

// Trims blanks, and only blanks (not tabs or line ends), at both ends: names
// and fields keep any other white space the device or a file put there.
std::string Trim(std::string_view text);
std::string TrimRight(std::string_view text);
std::string ToUpper(std::string_view text);
std::string ToLower(std::string_view text);

}  // namespace tavlo::MSBModule

namespace tavlo {

// "07" : a slot number in two digits.
std::string TwoDigits(int value);

}  // namespace tavlo
