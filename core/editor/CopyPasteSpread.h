#pragma once
#include <optional>
#include <string>
#include <utility>

#include "editor/EditorState.h"
#include "editor/EditorContext.h"

namespace tavlo {

// CopyButton: the selected button (with the button frame showing) or the
// selected fader, with its strings, goes to the clipboard.
void CopyControl(EditorState& editor);
// PasteButton: the clipboard onto the selected control of the kind it
// holds, or a copied scene onto the sliders. A paste that is part of a drag
// asks nothing; otherwise overwriting a control with a function asks first.
bool PasteControl(const EditorContext& session, bool fromDrag);
// MoveDownButton swaps the selected control with the one of index one
// lower, MoveUpButton with the one higher; the selection follows.
void MoveControlDown(EditorState& editor);
void MoveControlUp(EditorState& editor);

// A drop of a dragged control (DragType, DragSource in the session flags) on
// a button or on a fader. Kinds that can't land there are refused with
// "Cannot Drop a <kind> onto a BUTTON" / "... onto a FADER".
void DropOnButton(const EditorContext& session, int target);
void DropOnFader(const EditorContext& session, int target);

// SpreadForm's option captions for a source control; an absent second
// option is hidden. Nothing at all for a Master Fader, which has no spread.
struct SpreadOptions {
    std::string option0;
    std::optional<std::string> option1;
};
std::optional<SpreadOptions> SpreadOptionsFor(bool button, int function);
// "Fader #3 (Volume)", "CV #1 (<no name>)", "Button #12 (Piano)".
std::string SpreadLine(const EditorState& editor, bool button, int index);
// Spreads control `source` over the indexes from..to (the source itself
// skipped); option 0 or 1 as the dialog's option buttons say. From above To
// does nothing.
void ApplySpread(EditorState& editor, bool button, int source, int from, int to, int option);
// SpreadFaderButton / SpreadButtonButton: asks over which controls, and
// how, the selected control is spread ("SpreadForm"), then spreads it. Only
// the Spread button spreads; Cancel, Esc and the close box change nothing.
void SpreadSelectedControl(const EditorContext& session, bool button);

}  // namespace tavlo
