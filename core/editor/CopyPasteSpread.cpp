#include "editor/CopyPasteSpread.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "editor/EditorSelection.h"
#include "editor/Scenes.h"
#include "base/MSBModule.h"
#include "sysex/PresetCodes.h"
#include "editor/EditorContext.h"
#include "editor/EditorState.h"
#include "editor/ImageSlots.h"
#include "db/PoolDatabase.h"
#include "ui/Prompter.h"

namespace tavlo {

namespace {

std::string faderNumber(int index) {
    return index < 16 ? "Fader #" + std::to_string(index + 1) : "CV #" + std::to_string(index - 15);
}

void showSelected(EditorState& editor) {
    if (editor.ShownFrame == EditorFrame::Button) ShowButtonParams(editor, editor.CurrentButton);
    else ShowFaderParams(editor, editor.CurrentFader);
}

}  // namespace

void CopyControl(EditorState& editor) {
    EditorClipboard& clip = editor.Clipboard;
    clip.HoldsScene = false;
    if (editor.ShownFrame == EditorFrame::Button) {
        const int i = editor.CurrentButton;
        clip.Button = editor.preset.Buttons[i];
        clip.ButtonStrings1 = editor.preset.ButtonStrings1[i];
        clip.ButtonStrings2 = editor.preset.ButtonStrings2[i];
        clip.ButtonFunction = clip.Button.Function;
        clip.FaderFunction = kClipboardEmptyFunction;
        clip.SourceIndex = i;
        editor.PasteButtonCaption = "Paste Button " + std::to_string(i + 1);
    } else {
        const int i = editor.CurrentFader;
        clip.Fader = editor.preset.Faders[i];
        clip.FaderStrings = editor.preset.FaderStrings[i];
        clip.FaderFunction = clip.Fader.Function;
        clip.ButtonFunction = kClipboardEmptyFunction;
        clip.SourceIndex = i;
        editor.PasteButtonCaption = "Paste Fader " + std::to_string(i + 1);
    }
    editor.PasteButtonVisible = true;
    editor.notifyChanged();
}

namespace {

// The shown name of a pool preset; empty when the pool can't tell.
std::string presetNameOf(const EditorContext& session, std::int64_t id) {
    try {
        Statement query = session.pool.db().prepare("SELECT Name FROM PresetRec WHERE ID = :ID");
        query.bind(":ID", id);
        if (query.step()) return MSBModule::DisplayDBString(query.getText("Name"));
    } catch (const DatabaseError&) {
    }
    return {};
}

bool overwriteConfirmed(const EditorContext& session, const std::string& kind, int target, const std::string& name,
                        const std::string& source) {
    const std::string question = "About to overwrite the configuration of " + kind + " #" + std::to_string(target + 1) +
                                 " (" + name + ") with the copied information (from " + kind + " " + source +
                                 ").  Are you sure?";
    return session.prompter.message("About to Paste", question, MessageButtons::YesNo) == MessageAnswer::Yes;
}

void pasteScene(EditorState& editor) {
    for (int i = 0; i < 17; ++i) {
        FaderDef& fader = editor.preset.Faders[i];
        const ValueRange range = PCSliderRange(fader);
        const int position = std::clamp(editor.Clipboard.SceneValues[i] / 2, range.low, range.high);
        fader.Value = static_cast<std::int16_t>(FaderValueAt(fader, position));
    }
    editor.notifyChanged();
}

bool pasteButton(const EditorContext& session, bool fromDrag) {
    EditorState& editor = session.editor;
    const EditorClipboard& clip = editor.Clipboard;
    WorkingPreset& preset = editor.preset;
    const int target = editor.CurrentButton;
    ButtonDef& button = preset.Buttons[target];
    if (clip.Button.Function == PresetCodes::kButtonSendScene && MemoryImageOpen(session) &&
        session.memImage.PresetList.findItemData(clip.Button.ScenePreset) < 0) {
        // A Send Scene button only works with its scene's preset in the image.
        session.prompter.message(
            "Cannot Paste SENDSCENE Button",
            "The Button you're pasting is defined as a SEND SCENE Button, sending the Scene '" + clip.Button.Scene +
                "' on the Preset named '" + presetNameOf(session, clip.Button.ScenePreset) +
                "', which isn't in the current Memory Image.  Please add that Preset to the current MI before "
                "pasting this Button function.");
        return false;
    }
    if (button.Function > 0 && !fromDrag &&
        !overwriteConfirmed(session, "Button", target, button.Name, std::to_string(clip.SourceIndex + 1)))
        return false;
    button = clip.Button;
    preset.ButtonStrings1[target] = clip.ButtonStrings1;
    preset.ButtonStrings2[target] = clip.ButtonStrings2;
    if (button.Function == PresetCodes::kButtonSendScene && button.ScenePreset != preset.ID && button.ScenePreset > 0) {
        // A scene of another preset: its line joins the list.
        const std::string line = button.Scene + "  - from " + MSBModule::Trim(presetNameOf(session, button.ScenePreset));
        if (editor.BSceneCombo.findText(line) < 0) editor.BSceneCombo.addItem(line, button.ScenePreset);
    }
    editor.PCButton[target] = ButtonCaption(button);
    ShowButtonParams(editor, target);
    editor.notifyChanged();
    return true;
}

bool pasteFader(const EditorContext& session, bool fromDrag) {
    EditorState& editor = session.editor;
    const EditorClipboard& clip = editor.Clipboard;
    const int target = editor.CurrentFader;
    FaderDef& fader = editor.preset.Faders[target];
    if (fader.Function > 0 && !fromDrag &&
        !overwriteConfirmed(session, "Fader", target, fader.Name, "'" + std::to_string(clip.SourceIndex + 1) + "'"))
        return false;
    fader = clip.Fader;
    editor.preset.FaderStrings[target] = clip.FaderStrings;
    editor.FaderLabel[target] = FaderCaption(fader);
    ShowFaderParams(editor, target);
    editor.notifyChanged();
    return true;
}

}  // namespace

bool PasteControl(const EditorContext& session, bool fromDrag) {
    const EditorClipboard& clip = session.editor.Clipboard;
    if (clip.HoldsScene) {
        pasteScene(session.editor);
        return true;
    }
    // The paste lands on the kind the clipboard holds.
    if (clip.ButtonFunction != kClipboardEmptyFunction) return pasteButton(session, fromDrag);
    if (clip.FaderFunction != kClipboardEmptyFunction) return pasteFader(session, fromDrag);
    return false;
}

void MoveControlDown(EditorState& editor) {
    WorkingPreset& p = editor.preset;
    if (editor.ShownFrame == EditorFrame::Button) {
        const int i = editor.CurrentButton;
        if (i <= 0) return;
        std::swap(p.Buttons[i], p.Buttons[i - 1]);
        std::swap(p.ButtonStrings1[i], p.ButtonStrings1[i - 1]);
        std::swap(p.ButtonStrings2[i], p.ButtonStrings2[i - 1]);
        editor.CurrentButton = static_cast<std::int16_t>(i - 1);
        editor.HighlightedButton = i - 1;
    } else if (editor.ShownFrame == EditorFrame::Fader) {
        const int i = editor.CurrentFader;
        if (i <= 0) return;
        std::swap(p.Faders[i], p.Faders[i - 1]);
        std::swap(p.FaderStrings[i], p.FaderStrings[i - 1]);
        SelectFader(editor, i - 1);
    } else {
        return;
    }
    RedrawCaptions(editor);
    showSelected(editor);
}

void MoveControlUp(EditorState& editor) {
    WorkingPreset& p = editor.preset;
    if (editor.ShownFrame == EditorFrame::Button) {
        const int i = editor.CurrentButton;
        if (i >= kButtonCount - 1) return;
        std::swap(p.Buttons[i], p.Buttons[i + 1]);
        std::swap(p.ButtonStrings1[i], p.ButtonStrings1[i + 1]);
        std::swap(p.ButtonStrings2[i], p.ButtonStrings2[i + 1]);
        editor.CurrentButton = static_cast<std::int16_t>(i + 1);
        editor.HighlightedButton = i + 1;
    } else if (editor.ShownFrame == EditorFrame::Fader) {
        const int i = editor.CurrentFader;
        if (i >= kFaderCount - 1) return;
        std::swap(p.Faders[i], p.Faders[i + 1]);
        std::swap(p.FaderStrings[i], p.FaderStrings[i + 1]);
        SelectFader(editor, i + 1);
    } else {
        return;
    }
    RedrawCaptions(editor);
    showSelected(editor);
}

void DropOnButton(const EditorContext& session, int target) {
    const std::string& kind = session.editor.DragType;
    if (kind == "BUTTON") {
        ClickButton(session.editor, target);
        PasteControl(session, true);
    } else if (kind == "DEVBUTTON") {
        // Device functions are set by the device library's own drop.
    } else {
        session.prompter.message("Cannot Drop", "Cannot Drop a " + kind + " onto a BUTTON");
    }
    session.editor.DragType.clear();
}

void DropOnFader(const EditorContext& session, int target) {
    const std::string& kind = session.editor.DragType;
    if (kind == "FADER") {
        ClickFader(session.editor, target);
        PasteControl(session, true);
    } else if (kind == "DEVFADER") {
    } else {
        session.prompter.message("Cannot Drop", "Cannot Drop a " + kind + " onto a FADER");
    }
    session.editor.DragType.clear();
}

std::optional<SpreadOptions> SpreadOptionsFor(bool button, int function) {
    if (!button) {
        switch (function) {
            case 0: return SpreadOptions{"Make all the Same (OFF)", std::nullopt};
            case 1: return SpreadOptions{"Spread across Channels", "Spread across CCs"};
            case 3:
                return SpreadOptions{"Make all the Same (MIDI String)", "Spread across Channels within MIDI Strings"};
            default: return std::nullopt;
        }
    }
    switch (function) {
        case 0: return SpreadOptions{"Make all the Same (OFF)", std::nullopt};
        case 1: return SpreadOptions{"Make all the Same (MUTE)", std::nullopt};
        case 2: return SpreadOptions{"Make all the Same (SOLO)", std::nullopt};
        case 3: return SpreadOptions{"Spread across Channels", "Spread across Program Change"};
        case 4: return SpreadOptions{"Spread across Channels", "Spread across Note Number"};
        case 5: return SpreadOptions{"Make all the Same (MIDI String)", "Spread across Channels within MIDI Strings"};
        case 6:
            return SpreadOptions{"Make all the Same (Press/Release String)",
                                 "Spread across Channels within MIDI Strings"};
        case 7:
            return SpreadOptions{"Make all the Same (Toggle String)", "Spread across Channels within MIDI Strings"};
        case 8: return SpreadOptions{"Make all the Same (SF)", std::nullopt};
        case 9: return SpreadOptions{"Make all the Same (SS)", std::nullopt};
        default: return std::nullopt;
    }
}

std::string SpreadLine(const EditorState& editor, bool button, int index) {
    const std::string& name = button ? editor.preset.Buttons.at(index).Name : editor.preset.Faders.at(index).Name;
    const std::string shown = name.empty() ? "<no name>" : name;
    if (button) return "Button #" + std::to_string(index + 1) + " (" + shown + ")";
    return faderNumber(index) + " (" + shown + ")";
}

namespace {

char hexDigit(int value) { return "0123456789ABCDEF"[value & 15]; }

// Spreads the channels of a string's substrings by `step`, and rebuilds the
// control's text from them.
std::string spreadString(const MessageStringSet& source, MessageStringSet& target, int step) {
    target = source;
    std::string text;
    for (int slot = 0; slot < kStringSlots; ++slot) {
        const MessageSubstring& from = source.Slots[slot];
        MessageSubstring& to = target.Slots[slot];
        if (from.CommandType >= 0 && from.CommandType < 7) {
            const std::string marker = from.EnteredString.size() >= 5 ? MSBModule::ToUpper(from.EnteredString.substr(2, 3)) : std::string();
            if (marker == "-GC") {
                to.CommandChannel = 16;
            } else {
                const int channel = std::clamp(from.CommandChannel + step, 0, 15);
                to.CommandChannel = static_cast<std::int16_t>(channel);
                auto rewrite = [&](const std::string& s) {
                    if (s.size() < 2) return s;
                    return std::string(1, s[0]) + hexDigit(channel) + s.substr(2);
                };
                to.EnteredString = rewrite(from.EnteredString);
                to.ListItem = rewrite(from.ListItem);
            }
        }
        if (slot < source.Count) {
            std::string item = to.ListItem;
            const auto bracket = item.find('(');
            if (bracket != std::string::npos) item = item.substr(0, bracket);
            text += MSBModule::Trim(item) + " ";
        }
    }
    return MSBModule::Trim(text);
}

}  // namespace

namespace {

void spreadFaders(WorkingPreset& p, int source, int from, int to, int option) {
    const FaderDef s = p.Faders.at(source);
    const MessageStringSet sStrings = p.FaderStrings.at(source);
    for (int i = from; i <= to && i < kFaderCount; ++i) {
        if (i == source || i < 0) continue;
        FaderDef& t = p.Faders[i];
        if (s.Function == 0) {
            t.Function = 0;
            p.FaderStrings[i].Count = 0;
            continue;
        }
        t.Function = s.Function;
        t.DeviceMapString = s.DeviceMapString;
        t.MasterOf = s.MasterOf;
        t.Min = s.Min;
        t.Max = s.Max;
        t.MIDIString = s.MIDIString;
        t.Name = s.Name;
        t.ParamFormat = s.ParamFormat;
        t.Polarity = s.Polarity;
        t.ReplaceMode = s.ReplaceMode;
        t.Value = s.Value;
        const int step = i - source;
        if (s.Function == 1) {
            if (option == 0) {
                t.Channel = static_cast<std::int16_t>(std::clamp(s.Channel + step, 1, 16));
                t.CCNum = s.CCNum;
            } else {
                t.CCNum = static_cast<std::int16_t>(std::clamp(s.CCNum + step, 0, 120));
                t.Channel = s.Channel;
            }
        } else if (s.Function == 3) {
            if (option == 0) p.FaderStrings[i] = sStrings;
            else t.MIDIString = spreadString(sStrings, p.FaderStrings[i], step);
        }
    }
}

void spreadButtons(WorkingPreset& p, int source, int from, int to, int option) {
    const ButtonDef s = p.Buttons.at(source);
    const MessageStringSet s1 = p.ButtonStrings1.at(source);
    const MessageStringSet s2 = p.ButtonStrings2.at(source);
    for (int i = from; i <= to && i < kButtonCount; ++i) {
        if (i == source || i < 0) continue;
        ButtonDef& t = p.Buttons[i];
        if (s.Function == 0) {
            t.Function = 0;
            p.ButtonStrings1[i].Count = 0;
            p.ButtonStrings2[i].Count = 0;
            continue;
        }
        const ButtonDef keep = t;
        t = s;
        t.DeviceMapString = keep.DeviceMapString;
        const int step = i - source;
        if (s.Function == 3 || s.Function == 4) {
            if (option == 0) {
                t.Channel = static_cast<std::int16_t>(std::clamp(s.Channel + step, 0, 16));
            } else if (s.Function == 3) {
                t.ProgChange = static_cast<std::int16_t>(std::clamp(s.ProgChange + step, 0, 127));
            } else {
                t.Note = static_cast<std::int16_t>(std::clamp(s.Note + step, 0, 127));
            }
        } else if (s.Function >= 5 && s.Function <= 7) {
            if (option == 0) {
                p.ButtonStrings1[i] = s1;
                p.ButtonStrings2[i] = s2;
            } else {
                t.String1 = spreadString(s1, p.ButtonStrings1[i], step);
                t.String2 = spreadString(s2, p.ButtonStrings2[i], step);
            }
        }
    }
}

}  // namespace

void ApplySpread(EditorState& editor, bool button, int source, int from, int to, int option) {
    if (from > to) return;
    if (button) spreadButtons(editor.preset, source, from, to, option);
    else spreadFaders(editor.preset, source, from, to, option);
    RedrawCaptions(editor);
    editor.notifyChanged();
}

}  // namespace tavlo

namespace tavlo {

void SpreadSelectedControl(const EditorContext& session, bool button) {
    EditorState& editor = session.editor;
    const int source = button ? editor.CurrentButton : editor.CurrentFader;
    const int function = button ? editor.preset.Buttons.at(source).Function : editor.preset.Faders.at(source).Function;
    const std::optional<SpreadOptions> options = SpreadOptionsFor(button, function);
    if (!options) return;
    ChoiceRequest request;
    request.dialogName = "SpreadForm";
    request.title = button ? "Spread Button Functions" : "Spread Fader Functions";
    request.options = {options->option0};
    if (options->option1) request.options.push_back(*options->option1);
    std::vector<std::string> lines;
    for (int i = 0; i < (button ? kButtonCount : kFaderCount); ++i) lines.push_back(SpreadLine(editor, button, i));
    request.lists = {{"FromList", "From:", lines, source}, {"ToList", "To:", lines, static_cast<int>(lines.size()) - 1}};
    request.buttons = {{"SpreadButton", "&Spread"}, {"CancelButton", "C&ancel"}};
    const ChoiceAnswer answer = session.prompter.choose(request);
    if (answer.button != 0 || answer.lists.size() != 2 || answer.lists[0] < 0 || answer.lists[1] < 0) return;
    ApplySpread(editor, button, source, answer.lists[0], answer.lists[1], answer.option == 1 ? 1 : 0);
}

}  // namespace tavlo
