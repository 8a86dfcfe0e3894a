#pragma once
#include <string>
#include <string_view>

#include "midistrings/StringEditState.h"
#include "midistrings/StringsContext.h"

namespace tavlo {

class Database;

// The rules of the string editor: it composes one string of a fader, a
// button or the setup from up to 50 substrings in the StringWorkArea, and
// hands it back only when the user leaves with Update.

// Which controls of the editor show for a kind.
struct StringEditControls {
    bool Value1 = false;
    bool Value1Text = false;
    bool Value2 = false;
    bool CCNameList = false;
    bool StringText = false;     // StringText, StringLabel
    bool DeviceGroup = false;    // make, model, own-only check, prefix button
    bool SpecialButtons = false;
};
StringEditControls StringEditControlsFor(int kind);
// Caption and tip of Value1Label / Value2Label for a kind; empty when the
// value isn't used.
struct ValueLabel {
    std::string caption;
    std::string tip;
    std::string defaultField;
};
ValueLabel Value1LabelFor(int kind);
ValueLabel Value2LabelFor(int kind);
// "StringLabel" caption for a kind.
std::string StringLabelFor(int kind);
// Which of the five special buttons (dv, rv, pr, cs, gc) a string may use.
bool SpecialButtonShown(StringDoor door, int button);
// Which of them the target model takes: the original PC1600 knows only the
// fader value, and the checksum of a button string, which is worked out
// before anything reaches the device.
bool SpecialButtonEnabled(StringDoor door, int button, bool pc1600Model);

// The text a value slider shows: "64 = 40h", for notes "C4  (60 = 3Ch)",
// and "pr", "cs", "dv", "gc", "rv" from 128 on.
std::string ValueText(int kind, int value, bool first);
// Value1Text / Value2Text lost focus: special names, "..H" hexadecimal, a
// number 0..132, anything else 0.
int ParseValueText(std::string_view text);

// Opening on a control: the set goes to the work area, caption and note.
void OpenStringEditor(StringEditState& state, const StringsContext& session, StringDoor door, int index);
// After Update: the work area goes back to the control and its text.
void ApplyStringEdit(const StringEditState& state, const StringsContext& session);

void MessageComboClick(StringEditState& state, const StringsContext& session, int kind);
void SetValue1(StringEditState& state, int value);
void SetValue2(StringEditState& state, int value);
void SetChannel(StringEditState& state, int channel);
void SetStringText(StringEditState& state, const std::string& text);
// A special token at the caret (a character position in StringText).
void InsertSpecial(StringEditState& state, const StringsContext& session, int button, int caret);
void ChooseMake(StringEditState& state, Database& db, int line);
void ChooseModel(StringEditState& state, Database& db, int line);
void SetShowOwnOnly(StringEditState& state, Database& db, bool on);
void PasteSysexPrefix(StringEditState& state);

bool AppendString(StringEditState& state, const StringsContext& session);
bool UpdateString(StringEditState& state, const StringsContext& session);
bool DeleteString(StringEditState& state, const StringsContext& session);
bool DuplicateString(StringEditState& state, const StringsContext& session);
void MoveStringUp(StringEditState& state, const StringsContext& session);
void MoveStringDown(StringEditState& state, const StringsContext& session);
// Loads the substring of a list line into the controls.
void StringListClick(StringEditState& state, const StringsContext& session, int line);

// UpdateStringButton: true when the window may close and the string go back.
bool UpdateStringButton(StringEditState& state, const StringsContext& session);
// CancelButton: the string stays as it was.
void CancelStringEdit(StringEditState& state);
bool StringEditCancelled(const StringEditState& state);

// A "pr" run in typed text that the parameter format can't fill: a run of
// "pr" tokens followed by another token whose length isn't a whole multiple
// of the format's "pr" bytes. A run at the very end isn't tested.
bool PrRunMismatch(std::string_view text, int prBytes);

}  // namespace tavlo
