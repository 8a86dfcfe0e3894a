#pragma once
#include <memory>

#include "FakeTime.h"
#include "RecordingStatusView.h"
#include "ScriptedPrompter.h"
#include "TempDir.h"
#include "pool/PoolDatabase.h"
#include "shell/Session.h"

namespace tavlo::testing {

// A session on a fresh pool in a temporary folder, with every boundary
// replaced by its test double.
struct TestSession {
    TestSession();
    TempDir dir;
    PoolDatabase pool;
    ScriptedPrompter prompter;
    RecordingStatusView status;
    FakeClock clock;
    FakePump pump{clock};
    std::unique_ptr<Session> session;

    Session& operator*() { return *session; }
    Session* operator->() { return session.get(); }
};

}  // namespace tavlo::testing
