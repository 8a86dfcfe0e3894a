#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "globals/GlobalsContext.h"
#include "ui/ListState.h"
#include "ui/Prompter.h"

namespace tavlo {

class PoolDatabase;

// The pool of settings (GlobalRec). Every flow refuses and asks as the
// windows do, through the prompter; a write that fails tells the database
// error and changes nothing. Names compare without regard to case.

// The lines of GlobalPoolList, or of MemImageForm's GlobalSettingsCombo when
// `combo`: "Name  (IN=01, OUT=02)", the default's ending ") [DEFAULT]" in the
// pool list and ")  [DEFAULT]" in the combo; line data the ID. Returns the
// default's ID, -1 when none is marked.
std::int64_t FillGlobalsList(PoolDatabase& pool, ListState& list, bool combo);
// LoadGlobalPoolList: refills GlobalPoolList and DefaultGlobalsID, and
// selects the line that was selected before, else the first.
void LoadGlobalPoolList(const GlobalsContext& session);
// The name a list line stands for: the text before "(IN=", trimmed.
std::string GlobalsNameOfLine(const std::string& line);

// Selects the line of the set `id`, if listed, and shows its details.
void SelectGlobalsLine(const GlobalsContext& session, std::int64_t id);

// GlobalPoolList click: CreatedDateText ("mm/dd/yyyy"), ChInText, ChOutText
// of the selected line.
void ShowGlobalDetails(const GlobalsContext& session);

// DatabaseButton: stores GlobalForm's settings under their trimmed name.
// An existing name asks "About to Overwrite" unless the store comes from
// GotGlobalsForm. The default check moves the pool's default here. The ID
// stored, nothing when refused, declined or failed.
std::optional<std::int64_t> StoreGlobals(const GlobalsContext& session, bool fromGotGlobals = false);

// EditButton: the selected line's settings into GlobalForm, after offering
// to store the window's unsaved changes. False when nothing was loaded.
bool EditGlobals(const GlobalsContext& session);
// Loads the row `id` into GlobalForm as EditButton does, without questions.
bool LoadGlobalsRow(const GlobalsContext& session, std::int64_t id);
// The same for the set of that name (the window's row of the last run);
// false when the pool no longer has it.
bool LoadGlobalsNamed(const GlobalsContext& session, const std::string& name);

// DuplicateButton, RenameButton, MakeDefaultButton, DeleteButton on the
// selected line of GlobalPoolList. True when the pool changed.
bool DuplicateGlobals(const GlobalsContext& session);
bool RenameGlobals(const GlobalsContext& session);
bool MakeDefaultGlobals(const GlobalsContext& session);
bool DeleteGlobals(const GlobalsContext& session);

// GotGlobalsForm: what to do with settings that came from the device.
enum class GotGlobalsOption { DontStore = 0, StoreNew = 1, Overwrite = 2 };
ChoiceRequest GotGlobalsRequest(const ListState& globalsList);
// StoreOption is the request's group of options; NewNameText (field 0)
// follows option 1 and GlobalsList (list 0, lines as GlobalPoolList's)
// option 2; OkButton is the one button. Shows the dialogue until its checks
// pass and gives the result word: "__DONTSTORE__", the new name, or "__ID="
// and the ID to overwrite. An answer without OK counts as "__DONTSTORE__".
std::string ShowGotGlobalsForm(const GlobalsContext& session);
inline constexpr const char* kDontStore = "__DONTSTORE__";
// Carries out the result word for GlobalForm's settings: stores them under
// the new name or over the row of the ID (its name kept). The row's ID, or
// nothing for "__DONTSTORE__" or a failure.
std::optional<std::int64_t> StoreGotGlobals(const GlobalsContext& session, const std::string& resultWord);

}  // namespace tavlo
