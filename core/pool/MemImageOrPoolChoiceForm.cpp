#include "pool/MemImageOrPoolChoiceForm.h"

#include "base/MSBModule.h"
#include "pool/PoolContext.h"
#include "pool/PresetNameRule.h"
#include "editor/EditorState.h"
#include "pool/PoolFlags.h"
#include "pool/PoolFormState.h"
#include "editor/ImageSlots.h"
#include "db/PoolDatabase.h"
#include "ui/Prompter.h"

namespace tavlo {

ChoiceRequest MemImageOrPoolChoiceRequest(const std::string& prompt, const std::string& newName) {
    ChoiceRequest request;
    request.dialogName = "MemImageOrPoolChoiceForm";
    request.title = "Duplicate Preset Name";
    request.text = prompt;
    request.buttons = {
        {"KeepPoolButton", "Keep the Preset in the Pool", true},
        {"UseDownloadedButton", "Use the Downloaded Preset", true},
        {"RenamePoolButton", "Rename the Preset in the Pool", true},
        {"RenameSysexButton", "Rename the Downloaded Preset", true},
        {"KeepALLPoolButton", "Keep ALL Presets in the Pool", true},
        {"KeepALLSysexButton", "Use ALL Downloaded Presets", true},
        {"CompareButton", "Compare", false},
    };
    request.fields = {{"NewNameText", "New Name:", newName}};
    request.closable = false;
    return request;
}

namespace {

bool presetNameTaken(const PoolContext& session, const std::string& name) {
    Statement find = session.pool.db().prepare("SELECT ID FROM PresetRec WHERE Name = :Name");
    find.bind(":Name", MSBModule::SafeDBString(name));
    return find.step();
}

// The rename buttons need a new name that the pool doesn't hold yet.
bool renameAccepted(const PoolContext& session, const std::string& newName) {
    if (newName.empty()) {
        session.prompter.message("Please Enter New Name", "You must enter a new Name in the Textbox to the right first.");
        return false;
    }
    const PresetNameCheck check = CheckPresetName(newName);
    if (!check.ok()) {
        session.prompter.message("Cannot Continue Store", check.problem);
        return false;
    }
    if (presetNameTaken(session, check.name)) {
        session.prompter.message("Cannot Continue Store",
                                 "That Preset Name already exists in the database.  Please choose another.");
        return false;
    }
    return true;
}

}  // namespace

ClashChoice ShowMemImageOrPoolChoiceForm(const PoolContext& session, std::int64_t, const std::string&,
                                         const std::string& prompt, const std::string& overwriteQuestion) {
    (void)overwriteQuestion;  // asked by the Compare path, which waits for the comparator
    ClashChoice result;
    PoolFlags& flags = session.flags;
    for (;;) {
        const ChoiceRequest request = MemImageOrPoolChoiceRequest(prompt, result.newName);
        const ChoiceAnswer answer = session.prompter.choose(request);
        if (!answer.fields.empty()) result.newName = answer.fields[0];
        const std::string newName = MSBModule::Trim(result.newName);
        switch (answer.button) {
            case static_cast<int>(ClashButton::KeepPool):
                flags.ChoiceResult = 0;
                flags.ChoiceForAll = false;
                return result;
            case static_cast<int>(ClashButton::UseDownloaded):
                flags.ChoiceResult = 1;
                flags.ChoiceForAll = false;
                return result;
            case static_cast<int>(ClashButton::RenamePool):
            case static_cast<int>(ClashButton::RenameSysex):
                if (!renameAccepted(session, newName)) continue;
                result.newName = CheckPresetName(newName).name;
                flags.ChoiceResult = answer.button == static_cast<int>(ClashButton::RenamePool) ? 2 : 3;
                flags.ChoiceForAll = false;
                return result;
            case static_cast<int>(ClashButton::KeepALLPool):
                if (session.prompter.message("Are You Sure?",
                                             "Are you sure you want to keep the Presets in the Pool (all new Presets "
                                             "downloaded from your PC1600(x) with the same Name will be ignored)?",
                                             MessageButtons::YesNo) != MessageAnswer::Yes)
                    continue;
                flags.ChoiceResult = 0;
                flags.ChoiceForAll = true;
                return result;
            case static_cast<int>(ClashButton::KeepALLSysex):
                if (session.prompter.message("Are You Sure?",
                                             "Are you sure you want to keep the Presets from this PC1600(x) Download "
                                             "and overwrite any same-named Presets in the Pool?",
                                             MessageButtons::YesNo) != MessageAnswer::Yes)
                    continue;
                if (session.prompter.message(
                        "About to Overwrite Preset in Pool",
                        "NOTE that if the Preset in the Pool that you're overwriting contains Scenes which are "
                        "referenced by other Preset Send Scene Buttons or other Presets SetupScene, then those Preset "
                        "functions will be removed.  Do you want to continue?",
                        MessageButtons::YesNo) != MessageAnswer::Yes)
                    continue;
                flags.ChoiceResult = 1;
                flags.ChoiceForAll = true;
                return result;
            default:
                // The window refuses Esc and its close box; a prompter that
                // still comes back without a button gets the choice that
                // changes nothing, never the answer given to an earlier preset.
                flags.ChoiceResult = 0;
                flags.ChoiceForAll = false;
                return result;
        }
    }
}

}  // namespace tavlo
