// The single preset dump codec on a dense preset: every fader a MIDI string,
// every button two, all setup channels, strings near 80 bytes. Target: a full
// memory's worth, 50 such presets encoded and decoded, in under 1 % of the
// time the same bytes take on the MIDI wire (3125 bytes/s). Each benchmark
// reports that share as "wire_percent".
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <string>

#include "sysex/DeviceMessages.h"
#include "sysex/ParseSysexString.h"
#include "sysex/StringNotation.h"
#include "preset/PresetDecoder.h"
#include "preset/PresetEncoder.h"
#include "ui/StreamPrompter.h"
#include "editor/ImageSlots.h"
#include "globals/GlobalSettings.h"

namespace {

using namespace tavlo;

constexpr int kMemoryPresets = 50;

// A string of about 78 bytes as the string editor holds it: a sysex with a
// value or velocity byte, notes and controllers behind it.
void denseString(const char* special, MessageStringSet& set, std::string& text) {
    std::string notation = "F0 41 10 42 12 40 00 7F";
    for (int i = 0; i < 40; ++i) notation += " " + std::string(i % 10 == 0 ? special : "0A");
    notation += " F7";
    for (int i = 0; i < 8; ++i) notation += " 90 3C 7F B1 07 64";
    notation = notation.substr(0, 3 * 78 - 1);
    StringWorkArea work;
    std::string copy = notation;
    ParseSysexString(copy, work);
    set = work.Strings;
    text = notation;
}

struct DensePreset {
    WorkingPreset preset;
    ImageSlots image;
    std::string setupSceneLine;

    std::string dump() const { return Form2PresetSysex(preset, {image.SceneList, setupSceneLine}, false, 0); }

    DensePreset() {
        WorkingPreset& p = preset;
        p.Name = "Dense Preset 01";
        for (std::size_t i = 0; i < kFaderCount; ++i) {
            FaderDef& f = p.Faders[i];
            f.Name = "Fader Name " + std::to_string(i % 10);
            f.Function = 3;
            f.ParamFormat = 1;
            f.Min = -8000;
            f.Max = 8000;
            denseString("pr", p.FaderStrings[i], f.MIDIString);
        }
        for (std::size_t i = 0; i < kButtonCount; ++i) {
            ButtonDef& b = p.Buttons[i];
            b.Name = "Button Nam " + std::to_string(i % 10);
            b.Function = 6;
            denseString("rv", p.ButtonStrings1[i], b.String1);
            denseString("dv", p.ButtonStrings2[i], b.String2);
        }
        p.DataWheelLink = 19;
        for (SetupChannelDef& c : p.SetupChannels) c = SetupChannelDef{5, 0, 10, 100};
        denseString("rv", p.SetupStrings, p.SetupString);
        image.SceneList.setLine(7, "07:  Chorus  [p:00]", 12);
        setupSceneLine = image.SceneList.list(7);
        p.SetupScene = "Chorus";
        p.SetupScenePreset = 12;
    }
};

// Share of the wire time of `bytes`, in percent, of the time one iteration
// took: measured over the benchmark's own loop.
class WireShare {
public:
    WireShare() : start_(std::chrono::steady_clock::now()) {}
    void report(benchmark::State& state, std::size_t bytesPerIteration) const {
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start_;
        const double perIteration = elapsed.count() / static_cast<double>(std::max<benchmark::IterationCount>(state.iterations(), 1));
        const double wireSeconds = static_cast<double>(bytesPerIteration) / tavlo::kWireBytesPerSecond;
        state.counters["wire_percent"] = 100.0 * perIteration / wireSeconds;
        state.counters["dump_bytes"] = static_cast<double>(bytesPerIteration);
    }

private:
    std::chrono::steady_clock::time_point start_;
};

void BM_EncodeDensePreset(benchmark::State& state) {
    const DensePreset dense;
    std::size_t size = 0;
    const WireShare share;
    for (auto _ : state) {
        const std::string dump = dense.dump();
        size = dump.size();
        benchmark::DoNotOptimize(dump.data());
    }
    share.report(state, size);
}
BENCHMARK(BM_EncodeDensePreset)->Unit(benchmark::kMicrosecond);

void BM_DecodeDensePreset(benchmark::State& state) {
    const DensePreset dense;
    const std::string dump = dense.dump();
    const WireShare share;
    for (auto _ : state) {
        DecodedPreset decoded;  // a decode starts from an initialised preset
        const DecodeResult result = DecodePresetDump(dump, dense.image.SceneList, false, decoded);
        if (!result.ok) state.SkipWithError(result.reason.c_str());
        benchmark::DoNotOptimize(decoded.preset.Name.data());
    }
    share.report(state, dump.size());
}
BENCHMARK(BM_DecodeDensePreset)->Unit(benchmark::kMicrosecond);

// A full memory: 50 dense presets decoded and encoded again.
void BM_FullMemoryOfDensePresets(benchmark::State& state) {
    const DensePreset dense;
    const std::string dump = dense.dump();
    const WireShare share;
    for (auto _ : state) {
        for (int k = 0; k < kMemoryPresets; ++k) {
            DecodedPreset decoded;
            DecodePresetDump(dump, dense.image.SceneList, false, decoded);
            const std::string again = Form2PresetSysex(
                decoded.preset, {dense.image.SceneList, decoded.SelectPresetSceneCombo.text()}, false, 0);
            benchmark::DoNotOptimize(again.data());
        }
    }
    share.report(state, dump.size() * kMemoryPresets);
}
BENCHMARK(BM_FullMemoryOfDensePresets)->Unit(benchmark::kMillisecond);

// One ALL GLOBALS encoded and decoded: well under 1 % of its 420 wire bytes.
void BM_AllGlobalsRoundTrip(benchmark::State& state) {
    const GlobalSettings settings = NewGlobalSettings();
    const WireShare share;
    for (auto _ : state) {
        const auto dump = GlobalForm2Sysex(settings, false, 0);
        const DecodedGlobals decoded = Sysex2GlobalForm(*dump, false);
        benchmark::DoNotOptimize(decoded.settings->MidiMaps.data());
    }
    share.report(state, 420);
}
BENCHMARK(BM_AllGlobalsRoundTrip)->Unit(benchmark::kMicrosecond);

}  // namespace
