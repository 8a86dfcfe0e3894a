#pragma once
#include <memory>
#include "midilink/LinkContext.h"
#include "editor/EditorContext.h"
#include "midistrings/StringsContext.h"
#include "pool/PoolContext.h"
#include "globals/GlobalsContext.h"
#include "memimage/MemImageContext.h"

namespace tavlo {

class Clock;
class MidiLink;
class PoolDatabase;
class Prompter;
class Pump;
class StatusView;
struct EditorState;
struct GlobalsState;
struct MemImageState;
struct MidiConfig;
struct PoolFlags;
struct PoolFormState;
struct StringEditState;
struct StringWorkArea;

// Everything that lives as long as a run of Tavlo: the pool connection, the
// MIDI link and the state of every subsystem. The windows, tavlo-cli and the
// tests all build one. A flow is handed only the part it works with: the
// conversions below give each subsystem its own narrow set of references.
class Program {
public:
    Program(Prompter& prompter, StatusView& status, Pump& pump, Clock& clock);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    Prompter& prompter;
    StatusView& status;
    Pump& pump;
    Clock& clock;

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;

public:
    PoolDatabase& pool;
    MidiConfig& midi;
    MidiLink& midiLink;
    EditorState& editor;
    MemImageState& memImage;
    StringWorkArea& stringWork;
    StringEditState& stringEdit;
    PoolFormState& poolForm;
    PoolFlags& poolFlags;
    GlobalsState& globals;

    operator LinkContext() const;
    operator EditorContext() const;
    operator StringsContext() const;
    operator PoolContext() const;
    operator GlobalsContext() const;
    operator MemImageContext() const;
};

}  // namespace tavlo
