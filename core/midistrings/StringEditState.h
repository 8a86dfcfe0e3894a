#pragma once
#include <string>

#include "ui/ListState.h"
#include "ui/Observable.h"

namespace tavlo {

// The four doors into the string editor: a fader's string, a button's first
// or second string, and the preset's setup string.
enum class StringDoor { Fader, Button1, Button2, Setup };

// The string editor window (StringEditForm) in core: its controls' state.
// The substrings themselves are in the session's StringWorkArea.
struct StringEditState : Observable {
    std::string Caption;
    StringDoor Door = StringDoor::Fader;
    int Index = 0;  // the fader or button

    int MessageCombo = -1;   // kind, -1 for none
    int ChannelCombo = 16;   // 0..15 channels 1..16, 16 "Global Ch"
    int Value1Slider = 0;    // 0..132
    int Value2Slider = 0;
    std::string Value1Text;
    std::string Value2Text;
    std::string StringText;
    std::string RenderLabel;
    ListState StringList;
    ListState MakeCombo;
    ListState ModelCombo;
    bool ShowOwnOnlyCheck = false;
    std::string SysexPrefixText;
    std::string SysexPrefixButton = "No Sysex Data";
    std::string PRNumberNotificationLabel;
    int PrBytes = 1;         // "pr" bytes of the fader's parameter format

    // Lives as long as the window: reopening on the same kind loads no defaults.
    int LastMessageIndex = -1;
    bool StringChanged = false;
    bool Learning = false;
    std::string DoneLearningButton = "C&LICK HERE WHEN FINISHED LEARNING";
    bool Visible = false;
};

}  // namespace tavlo
