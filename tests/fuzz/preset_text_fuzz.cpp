// The .tpr loader on anything, against a pool of its own: it never crashes,
// what it stores goes back with the input's transaction, and a preset the
// reader accepts writes back as a text that reads as the same preset.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include <unistd.h>

#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "editor/InitPreset.h"
#include "presetfile/TavloFormat.h"
#include "presetfile/TavloFormatLoad.h"
#include "presetfile/TavloFormatParser.h"
#include "shell/Program.h"
#include "ui/SteadyClock.h"
#include "ui/StreamPrompter.h"

namespace {

using namespace tavlo;

// The pool lives in memory where the system offers a memory folder.
std::filesystem::path poolFolder() {
    const std::filesystem::path shm = "/dev/shm";
    const auto dir = (std::filesystem::exists(shm) ? shm : std::filesystem::temp_directory_path()) /
                     ("tavlo-tpr-fuzz-" + std::to_string(::getpid()));
    std::filesystem::create_directories(dir);
    return dir;
}

struct FuzzSession {
    FuzzSession() : program(std::make_unique<Program>(prompter, status, pump, clock)) {
        if (!program->pool.open((folder / "Tavlo.mdb").string()).ok()) __builtin_trap();
        program->editor.ProgramInit = false;
    }
    ~FuzzSession() {
        program.reset();
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
    std::filesystem::path folder = poolFolder();
    StreamPrompter prompter{nullptr, MessageAnswer::Yes};
    SilentStatusView status;
    SleepingPump pump;
    SteadyClock clock;
    std::unique_ptr<Program> program;
};

void checkRoundTrip(const std::string& text) {
    const ParsedTavloPreset read = ParseTavloText(text);
    // Notes that read as the end of the notes can't be told apart on the way back.
    if (!read.ok || read.initialized || read.preset.Notes == "[NOTES END]") return;
    const ParsedTavloPreset again = ParseTavloText(SaveTavloFormat(nullptr, read.preset, {}));
    if (!again.ok || again.preset != read.preset) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static FuzzSession fuzz;
    const std::string text(reinterpret_cast<const char*>(data), size);
    checkRoundTrip(text);
    Program& s = *fuzz.program;
    Transaction undo(s.pool.db());
    InitializePreset(s);
    UpdateINITData(s.editor);
    LoadTavloFormat(s, text, "fuzz.tpr", size % 2 == 1);
    return 0;
}
