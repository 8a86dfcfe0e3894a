#include "presetfile/TavloReferences.h"

#include <string>
#include <vector>

#include "base/MSBModule.h"
#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "presetfile/TavloFormat.h"
#include "presetfile/TavloFormatParser.h"
#include "ui/Prompter.h"

namespace tavlo {
namespace {

using MSBModule::SafeDBString;
using MSBModule::Trim;

// The owner of scene `scene` of preset `name`, or 0.
std::int64_t sceneOwner(Database& db, const std::string& name, const std::string& scene) {
    Statement find = db.prepare(
        "SELECT PresetRec.ID FROM PresetRec, SceneRec WHERE PresetRec.ID = SceneRec.PresetREF AND "
        "PresetRec.Name = :Name AND SceneRec.Name = :Scene");
    find.bind(":Name", SafeDBString(name)).bind(":Scene", SafeDBString(scene));
    return find.step() ? find.getInt(0) : 0;
}

bool startsWith(const std::string& line, std::string_view prefix) { return line.compare(0, prefix.size(), prefix) == 0; }

std::string from(const std::string& line, std::size_t position) {
    return line.size() > position ? line.substr(position) : std::string();
}

// The scene name on the line before a reference: the value of "[SCENE] " or
// of "[SETUPSCENE] ".
std::string sceneOfLine(const std::string& line) {
    const std::size_t close = line.find(']');
    return close == std::string::npos ? std::string() : Trim(from(line, close + 1));
}

std::vector<std::string> missingReferences(Database& db, std::string_view text) {
    std::vector<std::string> entries;
    std::string previous;
    std::string buttonNumber;
    std::size_t pos = 0;
    while (pos < text.size()) {
        std::size_t end = text.find_first_of("\r\n", pos);
        if (end == std::string_view::npos) end = text.size();
        const std::string line(text.substr(pos, end - pos));
        pos = end;
        if (pos < text.size() && text[pos] == '\r') ++pos;
        if (pos < text.size() && text[pos] == '\n') ++pos;

        if (startsWith(line, "[BUTTON")) {
            const std::string rest = Trim(from(line, 7));
            buttonNumber = rest.substr(0, rest.find(' '));
        }
        const bool button = startsWith(line, "[SCENEPRESETNAME]");
        const bool setup = startsWith(line, "[SETUPSCENEPRESET]");
        if (button || setup) {
            const std::string name = Trim(from(line, button ? 17 : 18));
            if (name != TavloText::kSelf && name != kNoScene && !sceneOwner(db, name, sceneOfLine(previous))) {
                const std::string where = button ? " on Button #" + buttonNumber : " on SetupString";
                entries.push_back("Preset: " + name + ",   Scene: " + Trim(from(previous, 7)) + where);
            }
        }
        previous = line;
    }
    return entries;
}

}  // namespace

bool AcceptMissingReferences(const PoolContext& session, std::string_view text) {
    const std::vector<std::string> entries = missingReferences(session.pool.db(), text);
    if (entries.empty()) return true;
    std::string message =
        "The Preset being Imported contains references to Scenes on Other Presets not in your Pool, including";
    for (const std::string& entry : entries) message += "\n\t" + entry;
    message +=
        "\nDo you want to import it anyway?  Answering YES will unmap these references (Buttons that send Scenes "
        "from other presets will be turned OFF and the Setup Scene will be removed).  Answering NO will halt the "
        "import (it is recommended you first import the Presets containing the referenced Scenes and then try this "
        "Preset again).";
    return session.prompter.message("Resolve Scene Maps to Nonexistent Presets", message, MessageButtons::YesNo) ==
           MessageAnswer::Yes;
}

void ResolveReferences(Database& db, ParsedTavloPreset& parsed, bool bulkImportActive) {
    WorkingPreset& p = parsed.preset;
    for (int i = 0; i < kButtonCount; ++i) {
        ButtonDef& b = p.Buttons[i];
        const std::string& name = parsed.buttonRefs[i];
        if (name == kNoScene) {
            b.ScenePreset = 0;
        } else if (name == TavloText::kSelf) {
            b.ScenePreset = kSelfReference;
        } else if (const std::int64_t owner = sceneOwner(db, name, b.Scene)) {
            b.ScenePreset = static_cast<std::int32_t>(owner);
        } else if (bulkImportActive) {
            b.Scene += ":::" + name;
            b.ScenePreset = kUnresolvedReference;
        } else {
            b.Scene = kNoScene;
            b.ScenePreset = 0;
            b.Function = 0;
        }
    }
    const std::string& setup = parsed.setupSceneRef;
    if (setup == TavloText::kSelf) {
        p.SetupScenePreset = kSelfReference;
    } else if (const std::int64_t owner = setup == kNoScene ? 0 : sceneOwner(db, setup, p.SetupScene)) {
        p.SetupScenePreset = static_cast<std::int32_t>(owner);
    } else if (bulkImportActive && setup != kNoScene) {
        p.SetupScene += ":::" + setup;
        p.SetupScenePreset = kUnresolvedReference;
    } else {
        p.SetupScene = kNoScene;
        p.SetupScenePreset = 0;
    }
}

void AssociateDevices(const PoolContext& session, const ParsedTavloPreset& parsed) {
    Database& db = session.pool.db();
    for (const auto& [make, model] : parsed.devices) {
        Statement find = db.prepare("SELECT * FROM ModelTable WHERE Make = :Make AND Model = :Model");
        find.bind(":Make", SafeDBString(make)).bind(":Model", SafeDBString(model));
        if (find.step()) {
            session.editor.AssociatedList.addItem(make + ": " + model);
            continue;
        }
        session.prompter.message("Make/Model Does Not Exist",
                                 "The Preset you're importing is mapped to a Device '" + make + " " + model +
                                     "' which doesn't exist in your database.  Tavlo will create a blank one which can "
                                     "be overwritten later with a complete Device Import.");
        db.prepare("INSERT OR IGNORE INTO MakeTable (Make) VALUES (:Make)").bind(":Make", SafeDBString(make)).run();
        db.prepare("INSERT INTO ModelTable (Make, Model, SysexPrefix, Description) VALUES (:Make, :Model, '', "
                   ":Description)")
            .bind(":Make", SafeDBString(make))
            .bind(":Model", SafeDBString(model))
            .bind(":Description", "Created for Import of " + SafeDBString(parsed.preset.Name))
            .run();
    }
}

}  // namespace tavlo
