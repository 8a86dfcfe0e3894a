#include "TestSession.h"

#include <stdexcept>

namespace tavlo::testing {

TestSession::TestSession() {
    const PoolOpenResult result = pool.open(dir.file("Tavlo.mdb"));
    if (!result.ok()) throw std::runtime_error("test pool could not be made: " + result.detail);
    session = std::make_unique<Session>(pool, prompter, status, pump, clock);
}

}  // namespace tavlo::testing
