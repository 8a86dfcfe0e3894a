#pragma once
#include <string>

#include <nlohmann/json.hpp>

#include "preset/WorkingPreset.h"

// The WorkingPreset as JSON, under the model's own names: Name, Faders (18),
// Buttons (16), DataWheelLink, SetupChannels (16), SetupString, SetupStrings,
// SetupScene, SetupScenePreset. A control's substrings (Strings, Strings1,
// Strings2, SetupStrings) list as many substrings as the string's count, each
// with its nine fields. Texts are UTF-8 in JSON and Windows-1252 inside.
namespace tavlo::cli {

// Objects keep the model's field order.
using Json = nlohmann::ordered_json;

Json SubstringToJson(const MessageSubstring& substring);
Json StringSetToJson(const MessageStringSet& strings);
Json FaderToJson(const FaderDef& fader, const MessageStringSet& strings);
Json ButtonToJson(const ButtonDef& button, const MessageStringSet& strings1,
                            const MessageStringSet& strings2);
Json SetupChannelToJson(const SetupChannelDef& channel);
Json PresetToJson(const WorkingPreset& preset);

// Reads what the JSON gives over `preset`: a key that is missing leaves the
// field as it is, so a new preset takes its defaults. A key of the wrong type,
// a number out of its field's range, or a list longer than the panel is an
// error; `error` then names the key ("Faders[3].Min: ...") and the preset may
// be partly written.
bool PresetFromJson(const Json& json, WorkingPreset& preset, std::string& error);

}  // namespace tavlo::cli
