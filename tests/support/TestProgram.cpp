#include "TestProgram.h"

#include <stdexcept>

#include "db/PoolDatabase.h"

namespace tavlo::testing {

TestProgram::TestProgram() : program(std::make_unique<Program>(prompter, status, pump, clock)) {
    const PoolOpenResult result = program->pool.open(dir.file("Tavlo.mdb"));
    if (!result.ok()) throw std::runtime_error("test pool could not be made: " + result.detail);
}

}  // namespace tavlo::testing
