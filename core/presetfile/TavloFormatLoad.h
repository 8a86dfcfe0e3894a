#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "pool/PoolContext.h"

namespace tavlo {

class Prompter;
struct ParsedTavloPreset;

// LoadTavloFormat: a preset text into the pool, through the editor and the
// store, with its scenes, references and device pairs. `fileName` names the
// file in the messages. `bulkImportActive`: a memory image load runs many of
// these; the loader then asks nothing about missing references, keeps them
// unresolved (-111), leaves the editor hidden and takes a name already in the
// pool as success. Returns the preset's ID, or -1 on failure or refusal. A
// text that fails to read stores nothing.
std::int32_t LoadTavloFormat(const PoolContext& session, std::string_view text, const std::string& fileName,
                             bool bulkImportActive);

// The same from a file; -1 when it can't be read.
std::int32_t LoadTavloFormatFile(const PoolContext& session, const std::string& path, bool bulkImportActive);

// What a PC1600 can't do is turned off, with a notice: Send Fader and Send
// Scene buttons, the setup scene (both told), Bank MSB (silently).
void RewriteForPC1600(Prompter& prompter, ParsedTavloPreset& parsed);

// A chosen file name ending in ".syx", in any case, names a sysex file; any
// other ending the preset text.
bool IsSysexFileName(std::string_view path);

// The editor's preset (stored row `preset.ID`) as preset text.
std::string EditorTavloText(const PoolContext& session);

}  // namespace tavlo
