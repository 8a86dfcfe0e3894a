#pragma once
#include <memory>

#include "FakeTime.h"
#include "RecordingStatusView.h"
#include "ScriptedPrompter.h"
#include "TempDir.h"
#include "shell/Program.h"

namespace tavlo::testing {

// The program on a fresh pool in a temporary folder, with every boundary
// replaced by its test double.
struct TestProgram {
    TestProgram();
    TempDir dir;
    ScriptedPrompter prompter;
    RecordingStatusView status;
    FakeClock clock;
    FakePump pump{clock};
    std::unique_ptr<Program> program;

    Program& operator*() { return *program; }
    Program* operator->() { return program.get(); }
};

}  // namespace tavlo::testing
