// The memory a dense image uses: 50 presets and 100 scenes whose sum fills
// the default free memory without passing it. Target: under 5 ms.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "BenchSupport.h"
#include "base/MSBModule.h"
#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "editor/InitPreset.h"
#include "memimage/MemImageModel.h"
#include "memimage/MemImageState.h"
#include "midilink/MidiConfig.h"
#include "pool/PresetStore.h"
#include "shell/Program.h"
#include "ui/SteadyClock.h"
#include "ui/StreamPrompter.h"

namespace {

using namespace tavlo;

// The window's repaint is not what is measured.
class IdlePump : public Pump {
public:
    void yield() override {}
};

// 418 bytes a preset: 18 faders of 5 + 8, 16 buttons of 3 + 8 and a
// five-byte setup string with its block; fifty leave 4 bytes free.
void fillDense(WorkingPreset& p, int n) {
    for (int i = 0; i < kFaderCount; ++i) {
        p.Faders[i].Name = "Fader " + TwoDigits(i);
        p.Faders[i].Function = 1;
    }
    for (int i = 0; i < kButtonCount; ++i) {
        p.Buttons[i].Name = "Button" + TwoDigits(i);
        p.Buttons[i].Function = 4;
    }
    p.SetupString = "C0 05 B0 07 64";
    for (int s = 0; s < 2; ++s) {
        p.Scenes[s].Name = "Scene " + std::to_string(2 * n + s);
        for (int v = 0; v < kFaderCount; ++v) p.Scenes[s].Values[v] = static_cast<std::int16_t>((s + v) % 128);
    }
    p.SceneCount = 2;
}

struct DenseImage {
    DenseImage() : session(std::make_unique<Program>(prompter, status, pump, clock)) {
        if (!session->pool.open(bench::FreshPoolPath("memimage.mdb")).ok()) throw std::runtime_error("pool");
        Program& s = *session;
        s.editor.ProgramInit = false;
        InitMemImage(s);
        for (int n = 0; n < 50; ++n) {
            InitializePreset(s);
            s.editor.preset.Name = "Dense " + TwoDigits(n);
            fillDense(s.editor.preset, n);
            StoreInPoolButton(s);
            s.memImage.PresetList.setLine(n, TwoDigits(n) + ":  " + s.editor.preset.Name, s.editor.preset.ID);
        }
        FillSceneList(s);
        const long free = CalculateMemoryImageSize(s);
        if (free < 0 || free > 20904 - 20800 || s.memImage.SceneList.itemData(99) < 0)
            throw std::runtime_error("the image is not dense: free memory " + std::to_string(free));
    }
    // The notice that a full hundred scenes always brings is expected.
    bench::NoQuestions prompter{"Not All Scenes Included"};
    SilentStatusView status;
    IdlePump pump;
    SteadyClock clock;
    std::unique_ptr<Program> session;
};

void BM_CalculateMemoryImageSize(benchmark::State& state) {
    DenseImage image;
    long free = 0;
    for (auto _ : state) benchmark::DoNotOptimize(free = CalculateMemoryImageSize(*image.session));
    state.counters["free"] = static_cast<double>(free);
}
BENCHMARK(BM_CalculateMemoryImageSize)->Unit(benchmark::kMillisecond);

// All that follows a change of a slot: dependencies, scene slots and size.
void BM_ImageSlotsChanged(benchmark::State& state) {
    DenseImage image;
    for (auto _ : state) benchmark::DoNotOptimize(ImageSlotsChanged(*image.session));
}
BENCHMARK(BM_ImageSlotsChanged)->Unit(benchmark::kMillisecond);

}  // namespace
