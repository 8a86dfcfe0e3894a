#pragma once
#include <cstdint>
#include <string_view>

#include "pool/PoolContext.h"

namespace tavlo {

class Database;
struct ParsedTavloPreset;

// A scene reference to the preset being loaded, whose row doesn't exist yet.
inline constexpr std::int32_t kSelfReference = -1000;
// A reference a memory image load settles once all its presets are in.
inline constexpr std::int32_t kUnresolvedReference = -111;

// Looks ahead through the text for scene references to presets or scenes
// the pool lacks and asks whether to load anyway (they are then unmapped).
// False when the user said No.
bool AcceptMissingReferences(const PoolContext& session, std::string_view text);

// Turns the references' names into pool IDs: "<none>" 0, "<self>" -1000, a
// scene found in the pool its owner's ID. A missing one is kept for later
// under a bulk import, otherwise unmapped (a button is turned off).
void ResolveReferences(Database& db, ParsedTavloPreset& parsed, bool bulkImportActive);

// The preset's device pairs: each one the library holds joins the editor's
// AssociatedList; a missing one is created blank (and not associated).
void AssociateDevices(const PoolContext& session, const ParsedTavloPreset& parsed);

}  // namespace tavlo
