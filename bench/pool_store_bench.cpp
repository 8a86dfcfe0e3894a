// Store and load of a dense preset against a bare SQLite insert of the same
// rows, and the pool window on a pool of 10,000 presets.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <stdexcept>

#include "editor/InitPreset.h"
#include "db/PoolDatabase.h"
#include "pool/PoolList.h"
#include "pool/PresetLoad.h"
#include "pool/PresetStore.h"
#include "shell/Program.h"
#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "pool/PoolFormState.h"
#include "ui/SteadyClock.h"
#include "ui/StreamPrompter.h"
#include "BenchSupport.h"

namespace {

using namespace tavlo;

using bench::BenchSession;

MessageSubstring substring(int n) {
    MessageSubstring s;
    s.CommandType = static_cast<std::int16_t>(n % 9);
    s.CommandChannel = static_cast<std::int16_t>(n % 16);
    s.Value1 = static_cast<std::int16_t>(n);
    s.Value2 = 64;
    s.EnteredString = "F0 41 10 42 12 40 00 7F 00 41 F7";
    s.ListItem = "Sysex: Roland GS Reset";
    return s;
}

// 18 faders and 16 buttons with names and strings, a setup string, 100 scenes.
void fillDense(WorkingPreset& p) {
    for (int i = 0; i < kFaderCount; ++i) {
        FaderDef& f = p.Faders[i];
        f.Name = "Fader " + std::to_string(i);
        f.Function = 3;
        f.MIDIString = "F0 41 10 42 12 40 00 pr 00 41 F7";
        for (int k = 0; k < 3; ++k) p.FaderStrings[i].Slots[k] = substring(i + k);
        p.FaderStrings[i].Count = 3;
    }
    for (int i = 0; i < kButtonCount; ++i) {
        ButtonDef& b = p.Buttons[i];
        b.Name = "Button " + std::to_string(i);
        b.Function = 6;
        b.String1 = "90 3C 7F 90 40 7F";
        b.String2 = "80 3C 00 80 40 00";
        for (int k = 0; k < 2; ++k) {
            p.ButtonStrings1[i].Slots[k] = substring(i + k);
            p.ButtonStrings2[i].Slots[k] = substring(i + k + 1);
        }
        p.ButtonStrings1[i].Count = 2;
        p.ButtonStrings2[i].Count = 2;
    }
    p.SetupString = "C0 05 B0 07 64";
    for (int k = 0; k < 4; ++k) p.SetupStrings.Slots[k] = substring(k);
    p.SetupStrings.Count = 4;
    for (int s = 0; s < kSceneLimit; ++s) {
        p.Scenes[s].Name = "Scene " + std::to_string(s);
        for (int v = 0; v < kFaderCount; ++v) p.Scenes[s].Values[v] = static_cast<std::int16_t>((s + v) % 255);
    }
    p.SceneCount = kSceneLimit;
}

void BM_StoreDensePreset(benchmark::State& state) {
    BenchSession b("store.mdb");
    Program& s = *b.session;
    InitializePreset(s);
    fillDense(s.editor.preset);
    int n = 0;
    for (auto _ : state) {
        s.editor.preset.Name = "Dense " + std::to_string(n++);
        s.editor.preset.ID = 0;
        StoreInPoolButton(s);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_StoreDensePreset)->Unit(benchmark::kMillisecond)->Iterations(300);

// The same rows, inserted through the bare C API in one transaction.
void BM_BareSQLiteInsertOfTheSameRows(benchmark::State& state) {
    BenchSession b("bare.mdb");
    sqlite3* db = b.pool.db().handle();
    WorkingPreset p;
    fillDense(p);
    auto prepare = [db](const char* sql) {
        sqlite3_stmt* stmt = nullptr;
        if (sqlite3_prepare_v2(db, sql, -1, &stmt, nullptr) != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(db));
        return stmt;
    };
    auto text = [](sqlite3_stmt* st, int i, const std::string& v) {
        sqlite3_bind_text(st, i, v.data(), static_cast<int>(v.size()), SQLITE_TRANSIENT);
    };
    auto step = [](sqlite3_stmt* st) {
        sqlite3_step(st);
        sqlite3_reset(st);
    };
    auto strings = [&](sqlite3_stmt* st, const char* type, sqlite3_int64 ref, int which, const MessageStringSet& set) {
        for (int k = 0; k < set.Count; ++k) {
            const MessageSubstring& m = set.Slots[k];
            text(st, 1, type);
            sqlite3_bind_int64(st, 2, ref);
            sqlite3_bind_int(st, 3, k);
            sqlite3_bind_int(st, 4, which);
            sqlite3_bind_int(st, 5, m.CommandType);
            sqlite3_bind_int(st, 6, m.CommandChannel);
            text(st, 7, m.ListItem);
            text(st, 8, m.EnteredString);
            sqlite3_bind_int(st, 9, m.OwnCheck);
            text(st, 10, m.SysexMake);
            text(st, 11, m.SysexModel);
            sqlite3_bind_int(st, 12, m.Value1);
            sqlite3_bind_int(st, 13, m.Value2);
            step(st);
        }
    };
    const std::string map(64, '\0');
    int n = 0;
    for (auto _ : state) {
        sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
        sqlite3_stmt* preset = prepare(
            "INSERT INTO PresetRec (Name, Notes, CreatedDate, UpdatedDate, DataWheelLink, SetupScene, "
            "SetupScenePreset, SetupString, SetupChannelMap) VALUES (?1, '', ?2, ?2, 0, '<none>', -1, ?3, ?4)");
        sqlite3_stmt* fader = prepare(
            "INSERT INTO FaderRec (PresetREF, \"Index\", Name, Value, Function, Min, Max, Channel, CCNum, Polarity, "
            "ReplaceMode, MIDIString, ParamFormat, MasterOf, DeviceMapString) VALUES "
            "(?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13, ?14, ?15)");
        sqlite3_stmt* button = prepare(
            "INSERT INTO ButtonRec (PresetREF, \"Index\", Name, Function, Channel, DeviceMapString, Note, ProgChange, "
            "Scene, ScenePreset, String1, String2, Velocity) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, "
            "?12, ?13)");
        sqlite3_stmt* scene = prepare(
            "INSERT INTO SceneRec (PresetREF, Name, Fader1, Fader2, Fader3, Fader4, Fader5, Fader6, Fader7, Fader8, "
            "Fader9, Fader10, Fader11, Fader12, Fader13, Fader14, Fader15, Fader16, CV1, CV2) VALUES (?1, ?2, ?3, "
            "?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13, ?14, ?15, ?16, ?17, ?18, ?19, ?20)");
        sqlite3_stmt* message = prepare(
            "INSERT INTO MessageStringRec (MapType, MapREF, \"Index\", WhichString, CommandType, CommandChannel, "
            "ListItem, EnteredString, OwnCheck, SysexMake, SysexModel, Value1, Value2) VALUES (?1, ?2, ?3, ?4, ?5, "
            "?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13)");
        text(preset, 1, "Bare " + std::to_string(n++));
        text(preset, 2, "2026-01-01 00:00:00");
        text(preset, 3, p.SetupString);
        sqlite3_bind_blob(preset, 4, map.data(), 64, SQLITE_TRANSIENT);
        step(preset);
        const sqlite3_int64 id = sqlite3_last_insert_rowid(db);
        strings(message, "P", id, 0, p.SetupStrings);
        for (int i = 0; i < kFaderCount; ++i) {
            const FaderDef& f = p.Faders[i];
            sqlite3_bind_int64(fader, 1, id);
            sqlite3_bind_int(fader, 2, i);
            text(fader, 3, f.Name);
            const int ints[] = {f.Value, f.Function, f.Min, f.Max, f.Channel, f.CCNum, f.Polarity, f.ReplaceMode};
            for (int k = 0; k < 8; ++k) sqlite3_bind_int(fader, 4 + k, ints[k]);
            text(fader, 12, f.MIDIString);
            sqlite3_bind_int(fader, 13, f.ParamFormat);
            text(fader, 14, f.MasterOf);
            text(fader, 15, f.DeviceMapString);
            step(fader);
            strings(message, "F", sqlite3_last_insert_rowid(db), 0, p.FaderStrings[i]);
        }
        for (int i = 0; i < kButtonCount; ++i) {
            const ButtonDef& bt = p.Buttons[i];
            sqlite3_bind_int64(button, 1, id);
            sqlite3_bind_int(button, 2, i);
            text(button, 3, bt.Name);
            sqlite3_bind_int(button, 4, bt.Function);
            sqlite3_bind_int(button, 5, bt.Channel);
            text(button, 6, bt.DeviceMapString);
            sqlite3_bind_int(button, 7, bt.Note);
            sqlite3_bind_int(button, 8, bt.ProgChange);
            text(button, 9, bt.Scene);
            sqlite3_bind_int(button, 10, bt.ScenePreset);
            text(button, 11, bt.String1);
            text(button, 12, bt.String2);
            sqlite3_bind_int(button, 13, bt.Velocity);
            step(button);
            const sqlite3_int64 buttonId = sqlite3_last_insert_rowid(db);
            strings(message, "B", buttonId, 1, p.ButtonStrings1[i]);
            strings(message, "B", buttonId, 2, p.ButtonStrings2[i]);
        }
        for (int s = 0; s < p.SceneCount; ++s) {
            sqlite3_bind_int64(scene, 1, id);
            text(scene, 2, p.Scenes[s].Name);
            for (int v = 0; v < kFaderCount; ++v) sqlite3_bind_int(scene, 3 + v, p.Scenes[s].Values[v]);
            step(scene);
        }
        for (sqlite3_stmt* st : {preset, fader, button, scene, message}) sqlite3_finalize(st);
        sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_BareSQLiteInsertOfTheSameRows)->Unit(benchmark::kMillisecond)->Iterations(300);

void BM_LoadDensePreset(benchmark::State& state) {
    BenchSession b("load.mdb");
    Program& s = *b.session;
    InitializePreset(s);
    fillDense(s.editor.preset);
    s.editor.preset.Name = "Dense";
    StoreInPoolButton(s);
    const std::int64_t id = s.editor.preset.ID;
    for (auto _ : state)
        if (!LoadPC1600xFormFromPool(s, id)) state.SkipWithError("load failed");
}
BENCHMARK(BM_LoadDensePreset)->Unit(benchmark::kMillisecond);

// A pool of 10,000 presets with their fader and button rows, a few scenes
// and a device for every tenth, written in bulk.
class LargePool {
public:
    LargePool() : b("large.mdb") {
        Database& db = b.pool.db();
        Transaction transaction(db);
        Statement preset = db.prepare(
            "INSERT INTO PresetRec (Name, CreatedDate, UpdatedDate, SetupChannelMap) VALUES (:Name, :Now, :Now, :Map)");
        Statement fader = db.prepare("INSERT INTO FaderRec (PresetREF, \"Index\", Name, Function) VALUES (:P, :I, 'Vol', 1)");
        Statement button = db.prepare("INSERT INTO ButtonRec (PresetREF, \"Index\", Name, Function) VALUES (:P, :I, 'B', 4)");
        Statement scene = db.prepare("INSERT INTO SceneRec (PresetREF, Name) VALUES (:P, :Name)");
        Statement device = db.prepare("INSERT INTO MakeModelAssocRec (PresetREF, Make, Model) VALUES (:P, :Make, 'X')");
        const std::string map(64, '\0');
        for (int n = 0; n < 10000; ++n) {
            preset.reset();
            preset.bind(":Name", "Preset " + std::to_string(n)).bind(":Now", "2026-01-01 00:00:00").bind(":Map", Blob{map});
            preset.run();
            const std::int64_t id = db.lastInsertId();
            for (int i = 0; i < kFaderCount; ++i) {
                fader.reset();
                fader.bind(":P", id).bind(":I", i).run();
            }
            for (int i = 0; i < kButtonCount; ++i) {
                button.reset();
                button.bind(":P", id).bind(":I", i).run();
            }
            for (int k = 0; k < 3; ++k) {
                scene.reset();
                scene.bind(":P", id).bind(":Name", "Scene " + std::to_string(k)).run();
            }
            if (n % 10 == 0) {
                device.reset();
                device.bind(":P", id).bind(":Make", "Make " + std::to_string(n % 70)).run();
            }
        }
        transaction.commit();
    }
    Program& session() { return *b.session; }

private:
    BenchSession b;
};

LargePool& largePool() {
    static LargePool pool;
    return pool;
}

void BM_ReloadPoolList10k(benchmark::State& state) {
    Program& s = largePool().session();
    s.poolForm.OrderOption = state.range(0) == 0 ? PoolOrder::ByName : PoolOrder::ByDevice;
    for (auto _ : state) ReloadPoolList(s);
    state.counters["lines"] = s.poolForm.PoolList.listCount();
}
BENCHMARK(BM_ReloadPoolList10k)->Arg(0)->Arg(1)->ArgName("byDevice")->Unit(benchmark::kMillisecond);

void BM_SelectPoolLine10k(benchmark::State& state) {
    Program& s = largePool().session();
    s.poolForm.OrderOption = PoolOrder::ByName;
    ReloadPoolList(s);
    const int line = s.poolForm.PoolList.listCount() / 2;
    for (auto _ : state) SelectPoolLine(s, line);
}
BENCHMARK(BM_SelectPoolLine10k)->Unit(benchmark::kMillisecond);

}  // namespace
