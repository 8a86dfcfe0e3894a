#pragma once
#include <string>

#include "editor/EditorState.h"
#include "editor/EditorContext.h"

namespace tavlo {

class Database;

// The setup block of the preset: what the device sends when the preset is
// called up. The setup frame shows one channel at a time (SChannelSlider).

enum class SetupField { Bank, ProgChange, Volume };

// SChannelSlider_Change.
void ShowSetupChannel(EditorState& editor, int channel);
// A setup slider's position: 0 off, else the value plus one.
void SetSetupField(EditorState& editor, SetupField field, int position);
int SetupFieldPosition(const EditorState& editor, SetupField field);
// MSBCheck_Click.
void SetBankIsMSB(EditorState& editor, bool msb);

// MakeSameButton: after a Yes, the shown channel's four fields go to the
// other fifteen.
bool MakeSetupChannelsSame(const EditorContext& session);
// SAllOffButton: unless the answer is No, every field of every channel off.
bool SetupChannelsAllOff(const EditorContext& session);

// SetupChannelMapLabel: the sixteen channels become the defaults of a new
// preset ("SetupChannel01" .. "SetupChannel16" = "bank:msb:prog:vol").
void WriteSetupChannelDefaults(Database& db, const WorkingPreset& preset);
// What a new preset takes from those rows; channels without a row stay.
void ApplySetupChannelDefaults(Database& db, WorkingPreset& preset);
// SStringLabel: the setup string becomes the default one ("SetupString" =
// "text: count", its substrings as MessageStringRec rows of MapType 'D').
// An empty string removes the default and leaves no row.
void WriteSetupStringDefault(Database& db, const WorkingPreset& preset);
// The default setup string back into a preset; false when there is none.
bool ApplySetupStringDefault(Database& db, WorkingPreset& preset);

}  // namespace tavlo
