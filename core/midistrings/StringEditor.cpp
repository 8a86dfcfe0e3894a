#include "midistrings/StringEditor.h"

#include <algorithm>
#include <cstdio>

#include "editor/EditorDefaults.h"
#include "editor/EditorSelection.h"
#include "editor/ParameterText.h"
#include "base/MSBModule.h"
#include "sysex/StringNotation.h"
#include "db/Database.h"
#include "sysex/PresetCodes.h"
#include "midistrings/StringsContext.h"
#include "editor/EditorState.h"
#include "sysex/StringWorkArea.h"
#include "db/PoolDatabase.h"
#include "midilink/MidiConfig.h"
#include "ui/Prompter.h"

namespace tavlo {

namespace {

constexpr const char* kCancelMark = "__CANCEL__";
constexpr const char* kAppendTitle = "Cannot Append This String";
constexpr const char* kDuplicateTitle = "Cannot Duplicate This String";
constexpr const char* kTooMany =
    "You can only have 50 different MIDI Message Strings per Control Function (Fader or Button).";
constexpr const char* kTooLong =
    "You can only have 80 total bytes in all MIDI Messages per Control Function (Fader or Button).";

MessageStringSet& work(const StringsContext& session) { return session.stringWork.Strings; }

StringContext contextOf(StringDoor door) {
    switch (door) {
        case StringDoor::Fader: return StringContext::Fader;
        case StringDoor::Setup: return StringContext::Setup;
        default: return StringContext::Button;
    }
}

bool typedKind(int kind) { return kind == kSysexKind || kind == kFreeByteKind; }

std::string hexByte(int value) {
    char buffer[8];
    std::snprintf(buffer, sizeof buffer, "%X", value & 0xFF);
    return buffer;
}

void generate(StringEditState& state) {
    if (state.MessageCombo < 0 || typedKind(state.MessageCombo)) return;
    const auto text = GenerateMessageBytes(state.MessageCombo, state.ChannelCombo, state.Value1Slider,
                                           state.Value2Slider, state.Door == StringDoor::Fader);
    if (!text) return;
    // The text box changing is what marks the shown data as not in the list.
    if (state.StringText != *text) state.StringChanged = true;
    state.RenderLabel = *text;
    state.StringText = *text;
}

// The five special buttons' tokens, in their order.
constexpr const char* kSpecialTokens[5] = {"dv", "rv", "pr", "cs", "gc"};

bool checkLimits(const StringsContext& session, const char* title, bool countLines) {
    const MessageStringSet& set = work(session);
    if (countLines && set.Count >= kSubstringLimit) {
        session.prompter.message(title, kTooMany);
        return false;
    }
    if (NumberOfStringBytes(set, -1) >= 81) {
        session.prompter.message(title, kTooLong);
        return false;
    }
    return true;
}

// Reads the controls into a substring at `slot`; false when typed text is
// in error (the user has been told).
bool storeSubstring(StringEditState& state, const StringsContext& session, int slot) {
    const int kind = state.MessageCombo;
    if (kind < 0) return false;
    state.StringText = MSBModule::Trim(state.StringText);
    std::string rendered;
    if (typedKind(kind)) {
        std::string typed = state.StringText;
        state.StringText = ValidateEnteredString(typed, contextOf(state.Door), session.midi.PC1600Model,
                                                 session.stringWork, session.prompter);
        state.RenderLabel = session.stringWork.RenderedMessage;
        if (state.RenderLabel == kErrorRendering) return false;
        rendered = state.RenderLabel;
    } else {
        state.StringText = state.RenderLabel;
        rendered = state.RenderLabel;
    }
    MessageSubstring& s = work(session).Slots.at(slot);
    s.CommandChannel = static_cast<std::int16_t>(state.ChannelCombo);
    s.CommandType = static_cast<std::int16_t>(kind);
    s.EnteredString = MSBModule::Trim(state.StringText);
    s.SysexMake = kind == kSysexKind ? state.MakeCombo.text() : std::string();
    s.SysexModel = kind == kSysexKind ? state.ModelCombo.text() : std::string();
    s.Value1 = static_cast<std::int16_t>(state.Value1Slider);
    s.Value2 = static_cast<std::int16_t>(state.Value2Slider);
    s.OwnCheck = state.ShowOwnOnlyCheck ? 1 : 0;
    s.ListItem = MakeListItem(rendered, kind);
    return true;
}

void afterStore(StringEditState& state) {
    if (typedKind(state.MessageCombo)) {
        state.StringText.clear();
        state.RenderLabel.clear();
        state.MakeCombo.setListIndex(-1);
        state.ModelCombo.setListIndex(-1);
    }
    state.StringChanged = false;
}

void rebuildList(StringEditState& state, const StringsContext& session, int selected) {
    state.StringList.clear();
    const MessageStringSet& set = work(session);
    for (int i = 0; i < set.Count; ++i) state.StringList.addItem(set.Slots[i].ListItem, i);
    state.StringList.setListIndex(selected < state.StringList.listCount() ? selected : -1);
}

void fillMakes(StringEditState& state, Database& db) {
    state.MakeCombo.clear();
    try {
        Statement query = db.prepare(
            state.ShowOwnOnlyCheck
                ? "SELECT * FROM MakeTable WHERE Make IN (SELECT DISTINCT Make FROM ModelTable WHERE Own <> 0) "
                  "ORDER BY Make"
                : "SELECT * FROM MakeTable ORDER BY Make");
        while (query.step()) state.MakeCombo.addItem(query.getText("Make"));
    } catch (const DatabaseError&) {
    }
}

}  // namespace

StringEditControls StringEditControlsFor(int kind) {
    StringEditControls c;
    switch (kind) {
        case 0: case 1: case 2: case 3: case 6: case 8:
            c.Value1 = c.Value1Text = c.Value2 = true;
            if (kind == 3) {
                c.CCNameList = true;
                c.Value1Text = false;
            }
            break;
        case 4: case 5: case 9: c.Value1 = c.Value1Text = true; break;
        case kSysexKind: c.StringText = c.DeviceGroup = c.SpecialButtons = true; break;
        case kFreeByteKind: c.StringText = c.SpecialButtons = true; break;
        default: break;
    }
    return c;
}

ValueLabel Value1LabelFor(int kind) {
    switch (kind) {
        case 0: return {"Note", "Set NOTE ON Note Default Value", "NoteOnNote"};
        case 1: return {"Note", "Set NOTE OFF Note Default Value", "NoteOffNote"};
        case 2: return {"Note", "Set POLY AFTERTOUCH Note Default Value", "PolyATNote"};
        case 3: return {"CC#", "Set MIDI CC Default Value", "CCNum"};
        case 4: return {"Prog", "Set PROGCHANGE Program Number Default Value", "ProgramChange"};
        case 5: return {"Press", "Set CHAN AFTERTOUCH Amount Default Value", "ChannelATPressure"};
        case 6: return {"LSB", "Set PITCHBEND LSB Default Value", "PitchBendLSB"};
        case 8: return {"LSB", "Set SONG POSITION POINTER LSB Default Value", "SPPLSB"};
        case 9: return {"Song#", "Set SONG SELECT Default Value", "SongSelect"};
        default: return {};
    }
}

ValueLabel Value2LabelFor(int kind) {
    switch (kind) {
        case 0: return {"Vel", "Set NOTE ON Velocity Default Value", "NoteOnVelocity"};
        case 1: return {"Vel", "Set NOTE OFF Velocity Default Value", "NoteOffVelocity"};
        case 2: return {"Press", "Set POLY AFTERTOUCH Amount Default Value", "PolyATPressure"};
        case 3: return {"Val", "Set MIDI CC Amount Default Value", "CCValue"};
        case 6: return {"MSB", "Set PITCHBEND MSB Default Value", "PitchBendMSB"};
        case 8: return {"MSB", "Set SONG POSITION POINTER MSB Default Value", "SPPMSB"};
        default: return {};
    }
}

std::string StringLabelFor(int kind) {
    if (kind == kSysexKind) return "Complete Sysex String";
    if (kind == kFreeByteKind) return "Enter Bytes as Hex or Decimal numbers, separated by spaces";
    return {};
}

bool SpecialButtonShown(StringDoor door, int button) {
    if (button == 1) return door != StringDoor::Fader;
    if (button == 2) return door == StringDoor::Fader;
    return button >= 0 && button <= 4;
}

bool SpecialButtonEnabled(StringDoor door, int button, bool pc1600Model) {
    if (!pc1600Model) return true;
    const bool buttonString = door == StringDoor::Button1 || door == StringDoor::Button2;
    return button == 2 || (button == 3 && buttonString);
}

std::string ValueText(int kind, int value, bool first) {
    static const char* kSpecial[] = {"pr", "cs", "dv", "gc", "rv"};
    if (value >= 128 && value <= 132) return kSpecial[value - 128];
    if (value < 0 || value > 127) return {};
    const std::string plain = std::to_string(value) + " = " + hexByte(value) + "h";
    if (first && kind >= 0 && kind <= 2) return MSBModule::NoteName(value) + "  (" + plain + ")";
    return plain;
}

int ParseValueText(std::string_view text) {
    const std::string t = MSBModule::ToUpper(MSBModule::Trim(text));
    if (t == "P" || t == "PR") return kValuePr;
    if (t == "C" || t == "CS") return kValueCs;
    if (t == "D" || t == "DV") return kValueDv;
    if (t == "G" || t == "GC") return kValueGc;
    if (t == "R" || t == "RV") return kValueRv;
    long value = 0;
    if (ParameterText::ReadHex(t, value)) return value <= 132 ? static_cast<int>(value) : 0;
    if (t.empty()) return 0;
    for (char c : t)
        if (!(c >= '0' && c <= '9')) return 0;
    value = ParameterText::LeadingNumber(t);
    return value >= 0 && value <= 132 ? static_cast<int>(value) : 0;
}

void OpenStringEditor(StringEditState& state, const StringsContext& session, StringDoor door, int index) {
    EditorState& editor = session.editor;
    WorkingPreset& p = editor.preset;
    state.Door = door;
    state.Index = index;
    std::string name;
    switch (door) {
        case StringDoor::Fader:
            work(session) = p.FaderStrings.at(index);
            name = p.Faders[index].Name;
            state.Caption = (index < 16 ? "Editing MIDI String for Fader #" + std::to_string(index + 1)
                                        : "Editing MIDI String for CV #" + std::to_string(index - 15)) +
                            "  (" + name + ")";
            break;
        case StringDoor::Button1:
        case StringDoor::Button2:
            work(session) = door == StringDoor::Button1 ? p.ButtonStrings1.at(index) : p.ButtonStrings2.at(index);
            name = p.Buttons[index].Name;
            state.Caption = std::string(door == StringDoor::Button1 ? "Editing String1" : "Editing String2") +
                            " for Button #" + std::to_string(index + 1) + "  (" + name + ")";
            break;
        case StringDoor::Setup:
            work(session) = p.SetupStrings;
            state.Caption = "Editing Preset Setup String";
            break;
    }
    const int format = p.Faders.at(editor.CurrentFader).ParamFormat;
    state.PrBytes = PrByteCount(format);
    if (door == StringDoor::Fader)
        state.PRNumberNotificationLabel =
            "NOTE: the Param Format '" + MSBModule::Trim(PresetCodes::kParamFormats.at(std::clamp(format, 0, 12)).text) +
            "' requires " + std::to_string(state.PrBytes) +
            " pr bytes in a row to properly represent the data!";
    else
        state.PRNumberNotificationLabel =
            "If you insert a 'cs' into a Button string, the Checksum will be calculated for you when you Append the "
            "String to the list.";
    fillMakes(state, session.pool.db());
    state.ModelCombo.clear();
    rebuildList(state, session, -1);
    if (work(session).Count == 0) {
        state.ChannelCombo = 16;
        MessageComboClick(state, session, 0);
        SetValue1(state, 0);
        SetValue2(state, 0);
        state.StringText.clear();
    } else {
        StringListClick(state, session, 0);
    }
    state.StringChanged = false;
    state.Visible = true;
    state.notifyChanged();
}

void ApplyStringEdit(const StringEditState& state, const StringsContext& session) {
    if (StringEditCancelled(state)) return;
    WorkingPreset& p = session.editor.preset;
    MessageStringSet* target = nullptr;
    std::string* text = nullptr;
    switch (state.Door) {
        case StringDoor::Fader:
            target = &p.FaderStrings.at(state.Index);
            text = &p.Faders.at(state.Index).MIDIString;
            break;
        case StringDoor::Button1:
            target = &p.ButtonStrings1.at(state.Index);
            text = &p.Buttons.at(state.Index).String1;
            break;
        case StringDoor::Button2:
            target = &p.ButtonStrings2.at(state.Index);
            text = &p.Buttons.at(state.Index).String2;
            break;
        case StringDoor::Setup:
            target = &p.SetupStrings;
            text = &p.SetupString;
            break;
    }
    const MessageStringSet& set = work(session);
    for (int i = 0; i < kSubstringLimit; ++i) target->Slots[i] = set.Slots[i];
    target->Count = set.Count;
    *text = JoinedStringText(*target);
    session.editor.notifyChanged();
}

void MessageComboClick(StringEditState& state, const StringsContext& session, int kind) {
    state.MessageCombo = kind;
    if (kind < 0) {
        state.notifyChanged();
        return;
    }
    const StringEditControls show = StringEditControlsFor(kind);
    if (show.Value1) {
        state.Value1Slider = 0;
        state.Value2Slider = 0;
    }
    if (kind != state.LastMessageIndex) {
        Database& db = session.pool.db();
        try {
            const ValueLabel one = Value1LabelFor(kind);
            const ValueLabel two = Value2LabelFor(kind);
            if (!one.defaultField.empty())
                if (auto v = ReadDefaultNumber(db, one.defaultField)) state.Value1Slider = std::clamp(*v, 0, 132);
            if (!two.defaultField.empty())
                if (auto v = ReadDefaultNumber(db, two.defaultField)) state.Value2Slider = std::clamp(*v, 0, 132);
            if (auto channel = ReadDefaultNumber(db, "StringChannel")) state.ChannelCombo = std::clamp(*channel, 0, 16);
        } catch (const DatabaseError&) {
        }
    }
    if (kind == 3) state.Value1Slider = std::min(state.Value1Slider, 124);
    state.Value1Text = ValueText(kind, state.Value1Slider, true);
    state.Value2Text = ValueText(kind, state.Value2Slider, false);
    if (kind == kSysexKind) {
        state.SysexPrefixText.clear();
        state.SysexPrefixButton = "No Sysex Data";
    }
    generate(state);
    state.LastMessageIndex = kind;
    state.notifyChanged();
}

void SetValue1(StringEditState& state, int value) {
    value = std::clamp(value, 0, 132);
    if (state.MessageCombo == 3 && value > 124) value = 124;
    state.Value1Slider = value;
    state.Value1Text = ValueText(state.MessageCombo, value, true);
    state.StringChanged = true;
    generate(state);
    state.notifyChanged();
}

void SetValue2(StringEditState& state, int value) {
    state.Value2Slider = std::clamp(value, 0, 132);
    state.Value2Text = ValueText(state.MessageCombo, state.Value2Slider, false);
    state.StringChanged = true;
    generate(state);
    state.notifyChanged();
}

void SetChannel(StringEditState& state, int channel) {
    state.ChannelCombo = std::clamp(channel, 0, 16);
    state.StringChanged = true;
    generate(state);
    state.notifyChanged();
}

void SetStringText(StringEditState& state, const std::string& text) {
    if (text == state.StringText) return;
    state.StringText = text;
    state.StringChanged = true;
    state.notifyChanged();
}

void InsertSpecial(StringEditState& state, const StringsContext& session, int button, int caret) {
    if (button < 0 || button > 4) return;
    std::string token = kSpecialTokens[button];
    if (button == 2) {
        token.clear();
        for (int i = 0; i < state.PrBytes; ++i) token += i ? " pr" : "pr";
    }
    const std::string& text = state.StringText;
    caret = std::clamp(caret, 0, static_cast<int>(text.size()));
    std::string head = text.substr(0, caret);
    if (!head.empty() && head.back() != ' ') head += ' ';
    std::string combined = MSBModule::Trim(head + token + " " + text.substr(caret));
    state.StringText = ValidateEnteredString(combined, contextOf(state.Door), session.midi.PC1600Model,
                                             session.stringWork, session.prompter);
    state.RenderLabel = session.stringWork.RenderedMessage;
    state.StringChanged = true;
    state.notifyChanged();
}

void ChooseMake(StringEditState& state, Database& db, int line) {
    if (line < 0 || line >= state.MakeCombo.listCount()) return;
    state.MakeCombo.setListIndex(line);
    state.ModelCombo.clear();
    try {
        Statement query = db.prepare(state.ShowOwnOnlyCheck
                                         ? "SELECT * FROM ModelTable WHERE Make = :Make AND Own <> 0 ORDER BY Model"
                                         : "SELECT * FROM ModelTable WHERE Make = :Make ORDER BY Model");
        query.bind(":Make", state.MakeCombo.text());
        while (query.step()) state.ModelCombo.addItem(query.getText("Model"));
    } catch (const DatabaseError&) {
    }
    if (state.ModelCombo.listCount() == 0) state.ModelCombo.addItem("(no models in database)");
    state.SysexPrefixText.clear();
    state.SysexPrefixButton = "No Sysex Data";
    state.notifyChanged();
}

void ChooseModel(StringEditState& state, Database& db, int line) {
    if (line < 0 || line >= state.ModelCombo.listCount()) return;
    state.ModelCombo.setListIndex(line);
    state.SysexPrefixText.clear();
    try {
        Statement query = db.prepare("SELECT * FROM ModelTable WHERE Make = :Make AND Model = :Model");
        query.bind(":Make", state.MakeCombo.text()).bind(":Model", state.ModelCombo.text());
        if (query.step()) state.SysexPrefixText = MSBModule::Trim(query.getText("SysexPrefix"));
    } catch (const DatabaseError&) {
    }
    state.SysexPrefixButton = state.SysexPrefixText.empty() ? "No Sysex data" : "&Paste Sysex Prefix Into String";
    state.notifyChanged();
}

void SetShowOwnOnly(StringEditState& state, Database& db, bool on) {
    state.ShowOwnOnlyCheck = on;
    fillMakes(state, db);
    state.ModelCombo.clear();
    state.notifyChanged();
}

void PasteSysexPrefix(StringEditState& state) {
    if (state.SysexPrefixText.empty()) return;
    state.StringText = state.SysexPrefixText + " " + MSBModule::Trim(state.StringText) + " F7";
    state.StringChanged = true;
    state.notifyChanged();
}

bool PrRunMismatch(std::string_view text, int prBytes) {
    const std::string trimmed = MSBModule::Trim(text);
    int run = 0;
    for (size_t pos = 0; pos < trimmed.size(); pos += 3) {
        const std::string token = MSBModule::ToLower(trimmed.substr(pos, 2));
        if (token == "pr") {
            ++run;
        } else if (run > 0) {
            if (prBytes > 0 && run % prBytes != 0) return true;
            run = 0;
        }
    }
    return false;
}

bool AppendString(StringEditState& state, const StringsContext& session) {
    if (state.MessageCombo < 0) return false;
    state.StringText = MSBModule::Trim(state.StringText);
    if (PrRunMismatch(state.StringText, state.PrBytes)) {
        const auto answer = session.prompter.message(
            "PR Byte Count Doesn't Match Encoding Scheme",
            "There appears to be either too few or too many PR bytes in your MIDI message to match the number of "
            "bytes as specified by the Parameter Encoding scheme you chose for this string.  Accept this string "
            "as-is? (Too few PR bytes will result in truncated, erroneous data, while too many will result in "
            "repeated portions of data)",
            MessageButtons::YesNo);
        if (answer == MessageAnswer::No) return false;
    }
    if (!checkLimits(session, kAppendTitle, true)) return false;
    MessageStringSet& set = work(session);
    const int slot = set.Count;
    if (!storeSubstring(state, session, slot)) return false;
    ++set.Count;
    rebuildList(state, session, slot);
    afterStore(state);
    state.notifyChanged();
    return true;
}

bool UpdateString(StringEditState& state, const StringsContext& session) {
    const int selected = state.StringList.listIndex();
    if (selected < 0) return AppendString(state, session);
    if (!checkLimits(session, kAppendTitle, false)) return false;
    if (!storeSubstring(state, session, selected)) return false;
    rebuildList(state, session, selected);
    afterStore(state);
    state.notifyChanged();
    return true;
}

bool DeleteString(StringEditState& state, const StringsContext& session) {
    const int selected = state.StringList.listIndex();
    if (selected < 0) return false;
    if (session.prompter.message("About to Remove", "About to remove the current MIDI Message.  Are you sure?",
                                 MessageButtons::YesNo) != MessageAnswer::Yes)
        return false;
    MessageStringSet& set = work(session);
    for (int i = selected; i + 1 < set.Count; ++i) set.Slots[i] = set.Slots[i + 1];
    if (set.Count > 0) set.Slots[set.Count - 1] = MessageSubstring{};
    --set.Count;
    rebuildList(state, session, std::min(selected, set.Count - 1));
    state.notifyChanged();
    return true;
}

bool DuplicateString(StringEditState& state, const StringsContext& session) {
    const int selected = state.StringList.listIndex();
    if (selected < 0) return false;
    if (!checkLimits(session, kDuplicateTitle, true)) return false;
    MessageStringSet& set = work(session);
    for (int i = set.Count; i > selected + 1; --i) set.Slots[i] = set.Slots[i - 1];
    set.Slots[selected + 1] = set.Slots[selected];
    ++set.Count;
    rebuildList(state, session, selected + 1);
    state.notifyChanged();
    return true;
}

void MoveStringUp(StringEditState& state, const StringsContext& session) {
    const int selected = state.StringList.listIndex();
    if (selected <= 0) return;
    std::swap(work(session).Slots[selected], work(session).Slots[selected - 1]);
    rebuildList(state, session, selected - 1);
    state.notifyChanged();
}

void MoveStringDown(StringEditState& state, const StringsContext& session) {
    const int selected = state.StringList.listIndex();
    if (selected < 0 || selected + 1 >= work(session).Count) return;
    std::swap(work(session).Slots[selected], work(session).Slots[selected + 1]);
    rebuildList(state, session, selected + 1);
    state.notifyChanged();
}

void StringListClick(StringEditState& state, const StringsContext& session, int line) {
    if (line < 0 || line >= state.StringList.listCount()) return;
    state.StringList.setListIndex(line);
    const MessageSubstring s = work(session).Slots.at(line);
    MessageComboClick(state, session, s.CommandType);
    state.Value1Slider = s.Value1;
    state.Value2Slider = s.Value2;
    state.Value1Text = ValueText(s.CommandType, s.Value1, true);
    state.Value2Text = ValueText(s.CommandType, s.Value2, false);
    state.ChannelCombo = std::clamp<int>(s.CommandChannel, 0, 16);
    state.ShowOwnOnlyCheck = s.OwnCheck != 0;
    fillMakes(state, session.pool.db());
    state.MakeCombo.setListIndex(state.MakeCombo.findText(s.SysexMake));
    if (state.MakeCombo.listIndex() >= 0) {
        ChooseMake(state, session.pool.db(), state.MakeCombo.listIndex());
        const int model = state.ModelCombo.findText(s.SysexModel);
        if (model >= 0) ChooseModel(state, session.pool.db(), model);
    } else {
        state.ModelCombo.clear();
    }
    if (typedKind(s.CommandType)) {
        std::string entered = s.EnteredString;
        if (const auto bracket = entered.find('('); bracket != std::string::npos) entered = entered.substr(0, bracket);
        state.StringText = ValidateEnteredString(entered, contextOf(state.Door), session.midi.PC1600Model,
                                                 session.stringWork, session.prompter);
        state.RenderLabel = session.stringWork.RenderedMessage;
    } else {
        generate(state);
    }
    state.StringChanged = false;
    state.notifyChanged();
}

bool UpdateStringButton(StringEditState& state, const StringsContext& session) {
    if (state.StringChanged) {
        const auto answer = session.prompter.message(
            "Close String Editor Window",
            "The currently selected String data has changed and not been Appended (The + button) or Updated (the "
            "up-arrow button).  Do you want to close the String Editor Window?  Any changes not Appended or Updated "
            "will be lost (only what's in the list will be passed on to the Fader, Button, or Setup String).",
            MessageButtons::YesNo);
        if (answer == MessageAnswer::No) return false;
    }
    const MessageStringSet& set = work(session);
    for (int i = 0; i < set.Count; ++i) {
        const int type = set.Slots[i].CommandType;
        if ((type == 8 && state.Door == StringDoor::Fader) || type == 6) {
            session.prompter.message("Check Fader Encoding Type",
                                     "NOTE that you've included a PITCH BEND or a SONG POSITION POINTER string in "
                                     "your set.  These will only work properly on a Fader if the Encoding Type is set "
                                     "to '2 Bytes, 7 bits L-H'.");
            break;
        }
    }
    if (set.Count == 0) {
        const auto answer = session.prompter.message(
            "Empty String Update",
            "Your String List is empty.  Make sure and click the 'Append to Messages' button after setting up a "
            "String.  Are you sure you want to remove all Strings from this set?",
            MessageButtons::YesNo);
        if (answer == MessageAnswer::No) return false;
    }
    if (state.StringText == kCancelMark) state.StringText.clear();
    state.Visible = false;
    state.notifyChanged();
    return true;
}

void CancelStringEdit(StringEditState& state) {
    state.StringText = kCancelMark;
    state.Learning = false;  // a learn pass ends with the window
    state.Visible = false;
    state.notifyChanged();
}

bool StringEditCancelled(const StringEditState& state) { return state.StringText == kCancelMark; }

}  // namespace tavlo
