#pragma once
#include <cstdint>
#include <string>

#include "ui/Prompter.h"
#include "pool/PoolContext.h"

namespace tavlo {

// The modal dialogue that resolves a name clash between a downloaded preset
// and one of the pool. Its buttons, in the order of the request:
enum class ClashButton {
    KeepPool,        // KeepPoolButton
    UseDownloaded,   // UseDownloadedButton
    RenamePool,      // RenamePoolButton
    RenameSysex,     // RenameSysexButton
    KeepALLPool,     // KeepALLPoolButton
    KeepALLSysex,    // KeepALLSysexButton
    Compare,         // CompareButton: stays disabled until presets can be compared
};

struct ClashChoice {
    std::string newName;  // NewNameText as the user left it
};

// The request the dialogue is shown with; PromptLabel's text is `prompt`.
ChoiceRequest MemImageOrPoolChoiceRequest(const std::string& prompt, const std::string& newName);

// Shows the dialogue for the pool row `id` named `name` until one of its
// buttons closes it, and sets ChoiceResult and ChoiceForAll of the session.
// The dialogue can't be closed by Esc or its frame; a prompter that answers
// without a button counts as "Keep the Preset in the Pool".
// `overwriteQuestion` is the question behind the Overwrite action.
ClashChoice ShowMemImageOrPoolChoiceForm(const PoolContext& session, std::int64_t id, const std::string& name,
                                         const std::string& prompt, const std::string& overwriteQuestion);

}  // namespace tavlo
