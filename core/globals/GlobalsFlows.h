#pragma once
#include <string>

#include "globals/GlobalsContext.h"

namespace tavlo {

struct GlobalSettings;

// GlobalForm's own operations on GlobalsState, and its exchanges with the
// device and with files.

// Shows a set in the form: the edit map follows its current map (map 1 when
// none) and the map frame is reloaded; the set becomes the pristine one.
void ShowGlobalSettings(GlobalsState& state, const GlobalSettings& settings);
// LoadMapFrame: ProgChangeList for the map of EditMapCombo, and MapList.
void LoadMapFrame(GlobalsState& state);
// MapList double click: the selected program of ProgChangeList takes the
// selected target of MapList, and its line is rewritten.
void MapListDoubleClick(GlobalsState& state);
// MapInitButton and InitThisMapButton.
void InitAllMaps(GlobalsState& state);
void InitThisMap(GlobalsState& state);

// Fills the form from a dump: the notice of an original PC1600's dump on
// the PC1600X model is shown here. False, with nothing changed, when the
// dump is refused (`problem` says why).
bool ShowGlobalsDump(const GlobalsContext& session, const std::string& dump, const std::string& name,
                     std::string* problem = nullptr);

// GetButton: asks first, then gets ALL GLOBALS (manual mode waits for the
// user) and names the set "Received from PC1600(x)". False when declined,
// timed out, cancelled or refused.
bool GetGlobalsButton(const GlobalsContext& session);
// SendButton: the form's dump to the device. False when it can't be made
// or sent (the user has been told).
bool SendGlobalsButton(const GlobalsContext& session);

// Files: a name ending ".tgl" is the text form, anything else a dump.
// SaveSysexButon and LoadSysexButton ask for the file; the others take it.
bool SaveGlobalsButton(const GlobalsContext& session);
bool LoadGlobalsButton(const GlobalsContext& session);
bool WriteGlobalsFile(const GlobalsContext& session, const std::string& path);
bool ReadGlobalsFile(const GlobalsContext& session, const std::string& path);

// The first run: with an empty GlobalRec, gets the device's settings and
// stores them as the default "Initial Default Globals"; when the device
// doesn't answer, says so and stores new settings as "No Connection to
// PC1600(x)". Returns "" when GlobalRec had rows or the get worked, else
// the result word "__ERRORFIRSTGET__" (a default row is stored either way,
// unless the pool failed).
inline constexpr const char* kErrorFirstGet = "__ERRORFIRSTGET__";
std::string FirstRunGlobals(const GlobalsContext& session);

// Closing GlobalForm or quitting with unsaved settings: asks whether to
// store them (Yes stores). False when the user cancelled.
bool AskStoreGlobalsOnClose(const GlobalsContext& session);

}  // namespace tavlo
