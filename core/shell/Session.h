#pragma once
#include "editor/EditorState.h"
#include "memimage/MemImageState.h"
#include "midilink/MidiConfig.h"
#include "midilink/MidiLink.h"
#include "midistrings/StringWorkArea.h"
#include "pool/PoolDatabase.h"
#include "pool/PoolFormState.h"
#include "shell/SessionFlags.h"
#include "ui/Prompter.h"
#include "ui/Pump.h"
#include "ui/StatusView.h"

namespace tavlo {

// What a classic desktop program would keep in its windows and module flags:
// one object, owned by the program (or a test), handed to every flow.
class Session {
public:
    Session(PoolDatabase& pool, Prompter& prompter, StatusView& status, Pump& pump, Clock& clock)
        : pool(pool), prompter(prompter), status(status), pump(pump), clock(clock) {}

    PoolDatabase& pool;
    Prompter& prompter;
    StatusView& status;
    Pump& pump;
    Clock& clock;

    MidiConfig midi;
    EditorState editor;
    MemImageState memImage;
    StringWorkArea stringWork;
    SessionFlags flags;
    // The four MIDI ports, WaitTimer and the configuration window's lists.
    MidiLink midiLink{clock};

    // ---- Pool store and load ----
    PoolFormState poolForm;
    StoreFollowUps storeFollowUps;
    // The last "Free Memory: " n a store computed, for FreeMemLabel.
    std::string FreeMemLabel;
    // ---- end of pool store and load ----
};

}  // namespace tavlo
