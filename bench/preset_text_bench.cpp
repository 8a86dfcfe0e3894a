// Preset text: the write and the parse of one dense preset on their own, and
// the load into the pool and the export from it, per preset over 1000.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <stdexcept>

#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "editor/InitPreset.h"
#include "pool/PresetLoad.h"
#include "pool/PresetStore.h"
#include "presetfile/TavloFormat.h"
#include "presetfile/TavloFormatLoad.h"
#include "presetfile/TavloFormatParser.h"
#include "shell/Program.h"
#include "ui/SteadyClock.h"
#include "ui/StreamPrompter.h"
#include "BenchSupport.h"

namespace {

using namespace tavlo;

using bench::BenchSession;

void fillStrings(MessageStringSet& set, int n) {
    set.Count = 8;  // eight 11-byte messages: the 80 bytes a control can send
    for (int k = 0; k < set.Count; ++k) {
        MessageSubstring& s = set.Slots[k];
        s.CommandType = static_cast<std::int16_t>((n + k) % 9);
        s.CommandChannel = static_cast<std::int16_t>(k);
        s.Value1 = static_cast<std::int16_t>(n);
        s.EnteredString = "F0 41 10 42 12 40 00 7F 00 41 F7";
        s.ListItem = "Sysex: Roland GS Reset";
        s.SysexMake = "Roland";
        s.SysexModel = "Sound Canvas";
    }
}

// Every control on with full strings, a setup string, 100 scenes; stored.
std::int64_t storeDense(Program& s, const std::string& name) {
    InitializePreset(s);
    WorkingPreset& p = s.editor.preset;
    p.Name = name;
    p.Notes = "A preset with everything in it, for timing.";
    for (int i = 0; i < kFaderCount; ++i) {
        p.Faders[i].Name = "Fader " + std::to_string(i);
        p.Faders[i].Function = 3;
        p.Faders[i].MIDIString = "F0 41 10 42 12 40 00 pr 00 41 F7";
        fillStrings(p.FaderStrings[i], i);
    }
    for (int i = 0; i < kButtonCount; ++i) {
        p.Buttons[i].Name = "Button " + std::to_string(i);
        p.Buttons[i].Function = 6;
        fillStrings(p.ButtonStrings1[i], i);
        fillStrings(p.ButtonStrings2[i], i + 1);
    }
    p.SetupString = "C0 05 B0 07 64";
    fillStrings(p.SetupStrings, 0);
    for (int n = 0; n < kSceneLimit; ++n) {
        p.Scenes[n].Name = "Scene " + std::to_string(n);
        for (int v = 0; v < kFaderCount; ++v) p.Scenes[n].Values[v] = static_cast<std::int16_t>((n + v) % 255);
    }
    p.SceneCount = kSceneLimit;
    StoreInPoolButton(s);
    return p.ID;
}

void BM_WriteDensePresetText(benchmark::State& state) {
    BenchSession b("text-write.mdb");
    Program& s = *b.session;
    LoadPC1600xFormFromPool(s, storeDense(s, "Dense"));
    for (auto _ : state) benchmark::DoNotOptimize(EditorTavloText(s));
}
BENCHMARK(BM_WriteDensePresetText)->Unit(benchmark::kMicrosecond);

void BM_ParseDensePresetText(benchmark::State& state) {
    BenchSession b("text-parse.mdb");
    Program& s = *b.session;
    LoadPC1600xFormFromPool(s, storeDense(s, "Dense"));
    const std::string text = EditorTavloText(s);
    for (auto _ : state) {
        const ParsedTavloPreset parsed = ParseTavloText(text);
        if (!parsed.ok) throw std::runtime_error("parse");
        benchmark::DoNotOptimize(parsed);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_ParseDensePresetText)->Unit(benchmark::kMicrosecond);

// The whole interactive load, pool store and editor refill included, then
// the export of each stored preset: per preset, over 1000.
void BM_LoadDensePresetTextIntoPool(benchmark::State& state) {
    BenchSession source("text-source.mdb");
    LoadPC1600xFormFromPool(*source.session, storeDense(*source.session, "Dense"));
    const std::string text = EditorTavloText(*source.session);
    const std::string body = text.substr(text.find("\r\n"));
    BenchSession b("text-load.mdb");
    int n = 0;
    for (auto _ : state) {
        if (LoadTavloFormat(*b.session, "[PRESET] Dense " + std::to_string(n++) + body, "d.tpr", false) < 0)
            throw std::runtime_error("load");
    }
}
BENCHMARK(BM_LoadDensePresetTextIntoPool)->Unit(benchmark::kMillisecond)->Iterations(1000);

void BM_ExportDensePresetTextFromPool(benchmark::State& state) {
    BenchSession b("text-export.mdb");
    Program& s = *b.session;
    std::vector<std::int64_t> ids;
    for (int n = 0; n < 1000; ++n) ids.push_back(storeDense(s, "Dense " + std::to_string(n)));
    std::size_t next = 0;
    for (auto _ : state) {
        LoadPC1600xFormFromPool(s, ids[next++ % ids.size()]);
        benchmark::DoNotOptimize(EditorTavloText(s));
    }
}
BENCHMARK(BM_ExportDensePresetTextFromPool)->Unit(benchmark::kMillisecond)->Iterations(1000);

}  // namespace
