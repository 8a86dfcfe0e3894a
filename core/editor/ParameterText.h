#pragma once
#include <string>
#include <string_view>

// The text and parse rules of the editor's slider and text pairs. A slider
// shows its value in its text box by the text rule; a text the user typed is
// read back by the parse rule when the box loses the focus.
namespace tavlo::ParameterText {

// The number at the start of a text, as a numeric-prefix reader gives it:
// an optional sign and digits; 0 when there are none.
long LeadingNumber(std::string_view text);
// A text ending in "H" (either case) with only hexadecimal digits before it,
// read as hexadecimal. False when the text is not of that form.
bool ReadHex(std::string_view text, long& value);
// Hexadecimal when the text ends in "H", else the leading number.
long HexOrNumber(std::string_view text);

// Channel: 16 is "ChOut" on a button and "ChO" on a fader, else "01".."16".
// The typed text: "C..." or "G..." is the global channel 16, else a number
// 1 to 16 (anything lower reads 1, higher 16), less one.
int ParseChannelText(std::string_view text);

// Note: 128 and 129 are the device's fader and remote values ("Fdr",
// "Rem"); below, the note name and the number: "C4 060".
std::string NoteText(int value);
// "rv" gives the remote value, "fd" and "fad" the fader value, an ending
// "h" hexadecimal, a number itself, else a note name. Clamped to 0..127.
int ParseNoteText(std::string_view text);

// Velocity: "000".."127", 128 "Fdr", 129 "Rem".
std::string VelocityText(int value);
// First letter "F" gives 128, "R" 129, an ending "H" hexadecimal, else a
// number; clamped to 0..127.
int ParseVelocityText(std::string_view text);

// Program change: "000" format; an ending "H" hexadecimal; a result outside
// 0..127 gives 0.
std::string ThreeDigits(int value);
int ParseProgChangeText(std::string_view text);

// A number within [low, high].
int ParseRangeText(std::string_view text, int low, int high);

// Setup sliders store value + 1, 0 being off: "Off" at 0, else "000".
std::string SetupValueText(int position);
// "O..." is off (0); empty is "000"; an ending "H" hexadecimal; the value
// is cut to 0..127 and the slider takes it plus one.
int ParseSetupValueText(std::string_view text);
// SChannelText: a number from 1 to 16, as slider position 0 to 15.
int ParseSetupChannelText(std::string_view text);

// Keys of every slider of a pair.
enum class SliderKey { Home, End, Left, Right, Up, Down, PageUp, PageDown, Plus, Minus };
// The slider's new value: End the maximum, Home the minimum, arrows one
// step, Page keys a tenth of the range, "+" and "-" one step; always within
// the range. Up and Page Up move the handle up on the screen: on a slider
// drawn with its minimum at the top (`minimumOnTop`) that is a lower value.
int StepSlider(int value, SliderKey key, int minimum, int maximum, bool minimumOnTop = false);

}  // namespace tavlo::ParameterText
