#include "shell/Program.h"

#include "db/PoolDatabase.h"
#include "editor/EditorContext.h"
#include "editor/EditorState.h"
#include "globals/GlobalsState.h"
#include "memimage/MemImageModel.h"
#include "memimage/MemImageState.h"
#include "midilink/LinkContext.h"
#include "midilink/MidiConfig.h"
#include "midilink/MidiLink.h"
#include "midistrings/StringEditState.h"
#include "midistrings/StringsContext.h"
#include "pool/PoolContext.h"
#include "pool/PoolFlags.h"
#include "pool/PoolFormState.h"
#include "sysex/StringWorkArea.h"
#include "ui/Prompter.h"

namespace tavlo {

struct Program::Parts {
    explicit Parts(const Clock& clock) : midiLink(clock) {}
    PoolDatabase pool;
    MidiConfig midi;
    MidiLink midiLink;
    EditorState editor;
    MemImageState memImage;
    StringWorkArea stringWork;
    StringEditState stringEdit;
    PoolFormState poolForm;
    PoolFlags poolFlags;
    GlobalsState globals;
};

Program::Program(Prompter& prompter, StatusView& status, Pump& pump, Clock& clock)
    : prompter(prompter),
      status(status),
      pump(pump),
      clock(clock),
      parts_(std::make_unique<Parts>(clock)),
      pool(parts_->pool),
      midi(parts_->midi),
      midiLink(parts_->midiLink),
      editor(parts_->editor),
      memImage(parts_->memImage),
      stringWork(parts_->stringWork),
      stringEdit(parts_->stringEdit),
      poolForm(parts_->poolForm),
      poolFlags(parts_->poolFlags),
      globals(parts_->globals) {
    ConnectStoreFollowUps(*this);
}

Program::~Program() = default;

Program::operator LinkContext() const { return {midiLink, midi, pool, prompter, status, pump, clock}; }

Program::operator EditorContext() const { return {pool, prompter, editor, midi, memImage}; }

Program::operator StringsContext() const {
    return {pool, prompter, editor, midi, memImage, stringWork, pump, clock};
}

Program::operator PoolContext() const { return {pool, prompter, editor, midi, memImage, poolForm, poolFlags}; }

Program::operator GlobalsContext() const { return {midiLink, midi, pool, prompter, status, pump, clock, globals}; }

Program::operator MemImageContext() const { return {pool, prompter, midi, memImage, pump}; }

}  // namespace tavlo
