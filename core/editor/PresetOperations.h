#pragma once
#include <string>

#include "editor/EditorState.h"

namespace tavlo {

class Prompter;

// Operations that set whole controls of the preset being edited in one go.
// The decoder, the device library and the learn functions call them, and so
// does the editor window. An index outside the panel is a programming error
// (std::out_of_range), except for the two getters, which answer -1.

int PC1600xFormFaderFunction(const EditorState& editor, int index);
int PC1600xFormButtonFunction(const EditorState& editor, int index);

void PC1600xInitSetupParams(EditorState& editor);
// A negative argument is one not given. `channel` is 0 to 15.
void PC1600xSetSetupParams(EditorState& editor, bool pc1600Model, Prompter& prompter, int channel, int bankMSB,
                           int bankLSB, int program, int volume);

// `channel` counts from 1 here (17 is the global channel); `formatName` and
// `byteCount` are the device library's description of the value's format.
void PC1600xSetFaderFunction(EditorState& editor, int index, const std::string& name, int function, int min, int max,
                             int channel, int ccNum, const std::string& midiString, const std::string& formatName,
                             const std::string& masterOf, int byteCount);
void PC1600xSetButtonFunction(EditorState& editor, int index, const std::string& name, int function, int channel,
                              int progChange, int velocity, int note, const std::string& string1,
                              const std::string& string2);

// Writes one substring; callers write slots 0, 1, 2... in order.
void PC1600xSetFaderString(EditorState& editor, int index, int slot, int commandType, int commandChannel, int value1,
                           int value2, const std::string& enteredString, const std::string& listItem);
void PC1600xSetButtonString(EditorState& editor, int index, int slot, int whichString, int commandType,
                            int commandChannel, int value1, int value2, const std::string& enteredString,
                            const std::string& listItem);

// Makes a fader the selected one: border, current fader, fader frame.
void SelectFader(EditorState& editor, int index);
// The range a fader's Min and Max may take under its function.
struct ValueRange {
    int low;
    int high;
};
ValueRange FaderRangeLimits(int function);
// Brings Min and Max into the function's range, keeps them apart, derives
// Polarity and keeps Value between them: what committing the range does.
void ClampFaderRange(FaderDef& fader);

}  // namespace tavlo
